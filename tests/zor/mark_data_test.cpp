#include "qenzor/zor/mark_data.h"

#include <gtest/gtest.h>

#include "qenzor/zor/draw_info_idx_set.h"
#include "tests/support/chunk_io.h"
#include "tests/support/counted.h"
#include "tests/support/faulty_file.h"
#include "tests/support/zor_bytes.h"

namespace qenzor::testing {
namespace {

using CountedElemEdit = Counted<CMarkElemEdit>;

/// A mark with an element without points between two with some.
Bytes ThreeElements() {
  return MarkBytes({-5, -6, 7, 8}, {MarkElemBytes(1, 2, 0x80FF0001, {{1, 2}, {-3, 4}}),
                                    MarkElemBytes(-1, -32768, 0, {}),
                                    MarkElemBytes(32767, 0, 0xFFFFFFFF, {{5, 6}})});
}

TEST(MarkData, WithoutElementsHasTenBytes) {
  CMarkData mark;
  EXPECT_EQ(Written(mark), Chunk(11, Bytes(std::vector<std::uint8_t>(10, 0x00))));
  EXPECT_EQ(mark.GetHeader().DataSize, 10U);
}

TEST(MarkData, ReadsAndWritesEveryField) {
  const Bytes bytes = {11,   0,    0,    0,    24,   0,    0,    0,           // header
                       0xFB, 0xFF, 0x00, 0x80, 7,    0,    0xFF, 0x7F, 1, 0,  // edges, count
                       0xFE, 0xFF, 0x2C, 0x01, 0x01, 0x00, 0xFF, 0x80, 1, 0,  // element
                       0xFD, 0xFF, 4,    0};                                  // its point
  for (const auto& mark : {FromMemory<CMarkData>(bytes), FromFile<CMarkData>(bytes)}) {
    ASSERT_NE(mark, nullptr);
    EXPECT_EQ(mark->RectMin, (CPoint{-5, -32768}));
    EXPECT_EQ(mark->RectMax, (CPoint{7, 32767}));
    ASSERT_EQ(mark->MarkElem.size(), 1);
    EXPECT_EQ(mark->MarkElem[0].ElemKind, -2);
    EXPECT_EQ(mark->MarkElem[0].LineWidth, 300);
    EXPECT_EQ(mark->MarkElem[0].Color, 0x80FF0001U);
    ASSERT_EQ(mark->MarkElem[0].Pt.size(), 1);
    EXPECT_EQ(mark->MarkElem[0].Pt[0], (CPoint{-3, 4}));
    EXPECT_EQ(Written(*mark, false), bytes);
    EXPECT_EQ(Written(*mark), bytes);
  }
}

TEST(MarkData, ItsDataSizeIsTenBytesAndThoseOfItsElements) {
  const Bytes bytes = ThreeElements();
  const auto mark = FromFile<CMarkData>(bytes);
  ASSERT_NE(mark, nullptr);
  EXPECT_EQ(Written(*mark), bytes);
  EXPECT_EQ(mark->GetHeader().DataSize, 10U + 18 + 10 + 14);
  EXPECT_EQ(mark->MarkElem[0].GetWriteDataSize(), 18U);
  EXPECT_EQ(mark->MarkElem[1].GetWriteDataSize(), 10U);
}

TEST(MarkData, EdgesInTheWrongOrderAreKept) {
  const Bytes bytes = MarkBytes({10, 20, -10, -20}, {});
  const auto mark = FromMemory<CMarkData>(bytes);
  ASSERT_NE(mark, nullptr);
  EXPECT_EQ(mark->RectMin, (CPoint{10, 20}));
  EXPECT_EQ(mark->RectMax, (CPoint{-10, -20}));
  EXPECT_EQ(Written(*mark), bytes);
}

TEST(MarkData, EveryMissingByteFails) {
  const Bytes whole = ThreeElements();
  for (std::size_t size = 0; size < whole.size(); ++size) {
    EXPECT_EQ(FromMemory<CMarkData>(whole.Front(size)), nullptr) << size;
    EXPECT_EQ(FromFile<CMarkData>(whole.Front(size)), nullptr) << size;
  }
}

TEST(MarkData, ALastElementOfMorePointsThanRemainFails) {
  Bytes bytes = MarkBytes({}, {MarkElemBytes(1, 2, 3, {{1, 2}})});
  bytes[8 + 10 + 8] = 2;
  EXPECT_EQ(FromMemory<CMarkData>(bytes), nullptr);
  EXPECT_EQ(FromFile<CMarkData>(bytes), nullptr);
}

TEST(MarkData, MoreElementsThanRemainFail) {
  Bytes bytes = MarkBytes({}, {MarkElemBytes(1, 2, 3, {})});
  for (const int count : {2, 255}) {
    bytes[8 + 8] = static_cast<std::uint8_t>(count);
    EXPECT_EQ(FromMemory<CMarkData>(bytes), nullptr);
    EXPECT_EQ(FromFile<CMarkData>(bytes), nullptr);
  }
}

TEST(MarkData, ReadsTheGreatestNumbersOfElementsAndPoints) {
  const Bytes many(MarkBytes({}, std::vector<Bytes>(65535, MarkElemBytes(1, 2, 3, {}))));
  const Bytes long_one =
      MarkBytes({}, {MarkElemBytes(1, 2, 3, std::vector<CPoint>(65535, CPoint{4, 5}))});
  for (const Bytes& bytes : {many, long_one})
    for (const auto& mark : {FromMemory<CMarkData>(bytes), FromFile<CMarkData>(bytes)}) {
      ASSERT_NE(mark, nullptr);
      EXPECT_TRUE(Written(*mark) == bytes);
    }
}

TEST(MarkData, SubChunksAreDropped) {
  const Bytes mark_only = MarkBytes({1, 2, 3, 4}, {});
  Bytes bytes = Bytes(mark_only).Add(IdxSetBytes({}));
  bytes[4] = static_cast<std::uint8_t>(bytes[4] + IdxSetBytes({}).size());
  for (const auto& mark : {FromMemory<CMarkData>(bytes), FromFile<CMarkData>(bytes)}) {
    ASSERT_NE(mark, nullptr);
    EXPECT_EQ(Written(*mark), mark_only);
  }
}

TEST(MarkData, EdgesAreCutToSixteenBitsOnWriting) {
  CMarkData mark;
  mark.RectMin = {40000, -32769};
  mark.RectMax = {65536, 65535};
  const auto back = FromMemory<CMarkData>(Written(mark));
  EXPECT_EQ(back->RectMin, (CPoint{-25536, 32767}));
  EXPECT_EQ(back->RectMax, (CPoint{0, -1}));
}

TEST(MarkData, OnlyRecalculationBringsTheDataSizeUpToDate) {
  const auto mark = FromMemory<CMarkData>(MarkBytes({}, {MarkElemBytes(1, 2, 3, {{4, 5}})}));
  mark->MarkElem.clear();
  Bytes stale = MarkBytes({}, {});
  stale[4] = 24;
  EXPECT_EQ(Written(*mark, false), stale);
  EXPECT_EQ(Written(*mark, true), MarkBytes({}, {}));
}

TEST(MarkData, EveryFailingWriteGivesFalse) {
  const auto mark = FromMemory<CMarkData>(ThreeElements());
  FaultyFile sound(FaultyFile::kNever);
  ASSERT_TRUE(mark->Write(&sound, true));
  for (std::uint32_t call = 0; call < sound.GetCalls(); ++call) {
    FaultyFile file(call);
    EXPECT_FALSE(mark->Write(&file, true)) << call;
  }
}

TEST(MarkData, CopiesAreTheirOwnAndOfAnotherClassKeepTheEdges) {
  const auto mark = FromMemory<CMarkData>(ThreeElements());
  const auto clone = ClonedFrom(*mark);
  ASSERT_NE(clone, nullptr);
  mark->MarkElem[0].Pt[0] = {9, 9};
  EXPECT_EQ(Written(*clone, false), ThreeElements());
  mark->DeepCopy(clone.get());
  EXPECT_EQ(Written(*mark, false), ThreeElements());
  CDrawInfoIdxSet other;
  mark->DeepCopy(&other);
  EXPECT_EQ(Written(*mark), MarkBytes({-5, -6, 7, 8}, {}));
}

TEST(MarkDataEdit, RoundTripKeepsEveryByteAndComputesNoSize) {
  CMarkDataEdit edit;
  edit.ChunkDataToEditData(FromMemory<CMarkData>(ThreeElements()).get());
  EXPECT_EQ(edit.RectMin, (CPoint{-5, -6}));
  EXPECT_EQ(edit.RectMax, (CPoint{7, 8}));
  ASSERT_EQ(edit.MarkElem.size(), 3U);
  EXPECT_EQ(edit.MarkElem[0]->Pt, (std::vector<CPoint>{{1, 2}, {-3, 4}}));
  EXPECT_EQ(edit.MarkElem[1]->LineWidth, -32768);
  const auto back = ToChunk<CMarkData>(edit);
  EXPECT_EQ(back->GetHeader().ChunkId, 11U);
  EXPECT_EQ(back->GetHeader().DataSize, 0U);
  EXPECT_EQ(Written(*back), ThreeElements());
}

TEST(MarkDataEdit, ACoordinateOf40000ComesBackAsMinus25536) {
  CMarkDataEdit edit;
  edit.MarkElem.push_back(std::make_unique<CMarkElemEdit>());
  edit.MarkElem[0]->Pt = {{40000, 1}};
  const auto back = FromMemory<CMarkData>(Written(*ToChunk<CMarkData>(edit)));
  EXPECT_EQ(back->MarkElem[0].Pt[0], (CPoint{-25536, 1}));
}

TEST(MarkDataEdit, ConversionAndReleaseDestroyTheElements) {
  CMarkDataEdit edit;
  edit.MarkElem.push_back(std::make_unique<CountedElemEdit>());
  edit.ChunkDataToEditData(FromMemory<CMarkData>(MarkBytes({1, 2, 3, 4}, {})).get());
  EXPECT_EQ(CountedElemEdit::Alive(), 0);
  EXPECT_TRUE(edit.MarkElem.empty());
  edit.MarkElem.push_back(std::make_unique<CountedElemEdit>());
  edit.Release();
  EXPECT_EQ(CountedElemEdit::Alive(), 0);
  EXPECT_EQ(edit.RectMax, (CPoint{3, 4}));
}

TEST(MarkDataEdit, RefusesAndDestroysEverySubChunk) {
  CMarkDataEdit edit;
  EXPECT_FALSE(edit.SetSubChunkEdit(new Counted<CMarkDataEdit>));
  EXPECT_EQ(Counted<CMarkDataEdit>::Alive(), 0);
  EXPECT_FALSE(edit.SetSubChunkEdit(nullptr));
}

TEST(MarkDataEdit, CopiesCopyTheElementsToo) {
  CMarkDataEdit edit;
  edit.ChunkDataToEditData(FromMemory<CMarkData>(ThreeElements()).get());
  const std::unique_ptr<CAbstractChunkEdit> clone(edit.Clone());
  edit.MarkElem[0]->Pt.clear();
  EXPECT_EQ(Written(*ToChunk<CMarkData>(*clone)), ThreeElements());
  edit.DeepCopy(clone.get());
  EXPECT_EQ(Written(*ToChunk<CMarkData>(edit)), ThreeElements());
}

TEST(MarkDataEdit, AListBeyondSixteenBitsIsCutWithItsCount) {
  CMarkDataEdit edit;
  const auto resize = [&](std::size_t count) {
    while (edit.MarkElem.size() < count) {
      edit.MarkElem.push_back(std::make_unique<CMarkElemEdit>());
      edit.MarkElem.back()->Color = static_cast<std::uint32_t>(edit.MarkElem.size());
    }
  };
  resize(65535);
  EXPECT_EQ(ToChunk<CMarkData>(edit)->MarkElem.size(), 65535);
  resize(65536);
  EXPECT_EQ(Written(*ToChunk<CMarkData>(edit)), MarkBytes({}, {}));
  resize(65538);
  EXPECT_EQ(Written(*ToChunk<CMarkData>(edit)),
            MarkBytes({}, {MarkElemBytes(0, 0, 1, {}), MarkElemBytes(0, 0, 2, {})}));
}

}  // namespace
}  // namespace qenzor::testing
