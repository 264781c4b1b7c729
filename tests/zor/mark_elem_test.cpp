// The elements of a mark: records of its own bytes.

#include "qenzor/zor/mark_elem.h"

#include <gtest/gtest.h>

#include "tests/support/counted.h"
#include "tests/support/faulty_file.h"
#include "tests/support/zor_bytes.h"

namespace qenzor::testing {
namespace {

const std::vector<CPoint> kPoints = {{1, -1}, {-32768, 32767}};

/// A record read from these bytes in memory.
CMarkElem ElemOf(const Bytes& bytes) {
  CMarkElem elem;
  std::uint32_t consumed = 0;
  EXPECT_TRUE(elem.Read(bytes.data(), bytes.size(), consumed));
  return elem;
}

Bytes WrittenElem(const CMarkElem& elem) {
  CMemFile file;
  return elem.Write(&file) ? Bytes(file.GetBytes()) : Bytes("not written");
}

void ExpectFields(const CMarkElem& elem) {
  EXPECT_EQ(elem.ElemKind, -2);
  EXPECT_EQ(elem.LineWidth, 300);
  EXPECT_EQ(elem.Color, 0x80FF0001U);
  EXPECT_EQ(std::vector<CPoint>(elem.Pt.begin(), elem.Pt.end()), kPoints);
}

TEST(MarkElem, IsEmptyWhenConstructed) {
  CMarkElem elem;
  EXPECT_EQ(elem.GetWriteDataSize(), 10U);
  EXPECT_EQ(WrittenElem(elem), Bytes(std::vector<std::uint8_t>(10, 0x00)));
}

TEST(MarkElem, ReadsAndWritesEveryField) {
  const Bytes bytes = {0xFE, 0xFF, 0x2C, 0x01, 0x01, 0x00, 0xFF, 0x80, 2,
                       0,    1,    0,    0xFF, 0xFF, 0x00, 0x80, 0xFF, 0x7F};
  std::uint32_t consumed = 0;
  CMarkElem memory;
  ASSERT_TRUE(memory.Read(Bytes(bytes).Add("more").data(), bytes.size() + 4, consumed));
  EXPECT_EQ(consumed, 18U);
  ExpectFields(memory);
  CMemFile source(Bytes(bytes).Add("more").vector());
  CMarkElem file;
  ASSERT_TRUE(file.Read(&source));
  EXPECT_EQ(source.GetPosition(), 18U);
  ExpectFields(file);
  EXPECT_EQ(file.GetWriteDataSize(), 18U);
  EXPECT_EQ(WrittenElem(file), bytes);
}

TEST(MarkElem, TakesTenBytesAndFourForEachPoint) {
  for (const std::size_t count : {0U, 1U, 65535U}) {
    const Bytes bytes = MarkElemBytes(1, 2, 3, std::vector<CPoint>(count, CPoint{4, 5}));
    const CMarkElem elem = ElemOf(bytes);
    EXPECT_EQ(elem.GetWriteDataSize(), 10 + 4 * count);
    EXPECT_EQ(bytes.size(), 10 + 4 * count);
    EXPECT_TRUE(WrittenElem(elem) == bytes);
  }
}

TEST(MarkElem, EveryMissingByteFails) {
  const Bytes whole = MarkElemBytes(1, 2, 3, kPoints);
  for (std::size_t size = 0; size < whole.size(); ++size) {
    const Bytes cut = whole.Front(size);
    std::uint32_t consumed = 0;
    EXPECT_FALSE(CMarkElem().Read(cut.data(), cut.size(), consumed)) << size;
    CMemFile file(cut.vector());
    EXPECT_FALSE(CMarkElem().Read(&file)) << size;
  }
}

TEST(MarkElem, ReadingAgainReplacesThePoints) {
  CMarkElem elem = ElemOf(MarkElemBytes(1, 2, 3, kPoints));
  const Bytes later = MarkElemBytes(4, 5, 6, {{7, 8}});
  std::uint32_t consumed = 0;
  ASSERT_TRUE(elem.Read(later.data(), later.size(), consumed));
  EXPECT_EQ(WrittenElem(elem), later);
}

TEST(MarkElem, CoordinatesAreCutToSixteenBitsOnWriting) {
  CMarkElem elem;
  elem.Pt.Reset(1);
  elem.Pt[0] = {40000, -32769};
  EXPECT_EQ(ElemOf(WrittenElem(elem)).Pt[0], (CPoint{-25536, 32767}));
}

TEST(MarkElem, EveryFailingWriteGivesFalse) {
  const CMarkElem elem = ElemOf(MarkElemBytes(1, 2, 3, kPoints));
  FaultyFile sound(FaultyFile::kNever);
  ASSERT_TRUE(elem.Write(&sound));
  for (std::uint32_t call = 0; call < sound.GetCalls(); ++call) {
    FaultyFile file(call);
    EXPECT_FALSE(elem.Write(&file)) << call;
  }
}

TEST(MarkElem, DeepCopyReplacesEverything) {
  const CMarkElem source = ElemOf(MarkElemBytes(1, 2, 3, kPoints));
  CMarkElem copy = ElemOf(MarkElemBytes(4, 5, 6, {{7, 8}, {9, 10}, {11, 12}}));
  copy.DeepCopy(source);
  EXPECT_NE(copy.Pt.data(), source.Pt.data());
  copy.DeepCopy(copy);
  EXPECT_EQ(WrittenElem(copy), MarkElemBytes(1, 2, 3, kPoints));
}

TEST(MarkElemEdit, IsEmptyWhenConstructed) {
  CMarkElemEdit edit;
  EXPECT_EQ(edit.ElemKind, 0);
  EXPECT_EQ(edit.LineWidth, 0);
  EXPECT_EQ(edit.Color, 0U);
  EXPECT_TRUE(edit.Pt.empty());
}

TEST(MarkElemEdit, RoundTripKeepsEveryByte) {
  const Bytes bytes = MarkElemBytes(-2, 300, 0x80FF0001, kPoints);
  CMarkElemEdit edit;
  edit.MarkElemToEditData(ElemOf(bytes));
  EXPECT_EQ(edit.ElemKind, -2);
  EXPECT_EQ(edit.LineWidth, 300);
  EXPECT_EQ(edit.Color, 0x80FF0001U);
  EXPECT_EQ(edit.Pt, kPoints);
  CMarkElem back = ElemOf(MarkElemBytes(4, 5, 6, {{7, 8}, {9, 10}, {11, 12}}));
  edit.EditDataToMarkElem(back);
  EXPECT_EQ(WrittenElem(back), bytes);
}

TEST(MarkElemEdit, FillingItAgainReplacesThePoints) {
  CMarkElemEdit edit;
  edit.MarkElemToEditData(ElemOf(MarkElemBytes(1, 2, 3, kPoints)));
  edit.MarkElemToEditData(ElemOf(MarkElemBytes(4, 5, 6, {{7, 8}})));
  EXPECT_EQ(edit.Pt, (std::vector<CPoint>{{7, 8}}));
}

TEST(MarkElemEdit, CoordinatesHave32BitsAndReachTheRecordWhole) {
  CMarkElemEdit edit;
  edit.Pt = {{40000, -70000}};
  CMarkElem elem;
  edit.EditDataToMarkElem(elem);
  EXPECT_EQ(elem.Pt[0], (CPoint{40000, -70000}));
  EXPECT_EQ(WrittenElem(elem), MarkElemBytes(0, 0, 0, {{-25536, -70000}}));
}

TEST(MarkElemEdit, AListBeyondSixteenBitsIsCutWithItsCount) {
  CMarkElemEdit edit;
  CMarkElem elem;
  edit.Pt.resize(65535, CPoint{1, 2});
  edit.EditDataToMarkElem(elem);
  EXPECT_EQ(elem.Pt.size(), 65535);
  edit.Pt.resize(65536, CPoint{1, 2});
  edit.EditDataToMarkElem(elem);
  EXPECT_EQ(elem.Pt.size(), 0);
  edit.Pt.resize(65538, CPoint{1, 2});
  edit.EditDataToMarkElem(elem);
  EXPECT_EQ(WrittenElem(elem), MarkElemBytes(0, 0, 0, {{1, 2}, {1, 2}}));
}

TEST(MarkElemEdit, ReleaseEmptiesThePointsAndKeepsTheFields) {
  CMarkElemEdit edit;
  edit.MarkElemToEditData(ElemOf(MarkElemBytes(1, 2, 3, kPoints)));
  edit.Release();
  EXPECT_TRUE(edit.Pt.empty());
  EXPECT_EQ(edit.ElemKind, 1);
  EXPECT_EQ(edit.LineWidth, 2);
  EXPECT_EQ(edit.Color, 3U);
}

TEST(MarkElemEdit, CopiesAreTheirOwn) {
  CMarkElemEdit edit;
  edit.MarkElemToEditData(ElemOf(MarkElemBytes(1, 2, 3, kPoints)));
  const std::unique_ptr<CMarkElemEdit> clone(edit.Clone());
  edit.Pt = {{9, 9}, {8, 8}};
  edit.ElemKind = 7;
  CMarkElem elem;
  clone->EditDataToMarkElem(elem);
  EXPECT_EQ(WrittenElem(elem), MarkElemBytes(1, 2, 3, kPoints));
  edit.DeepCopy(clone.get());
  edit.DeepCopy(&edit);
  EXPECT_EQ(edit.Pt, kPoints);
  EXPECT_EQ(edit.ElemKind, 1);
}

}  // namespace
}  // namespace qenzor::testing
