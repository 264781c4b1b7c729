#include "qenzor/zor/draw_info_idx_set.h"

#include <gtest/gtest.h>

#include "tests/support/chunk_io.h"
#include "tests/support/counted.h"
#include "tests/support/faulty_file.h"
#include "tests/support/zor_bytes.h"
#include "tests/support/zor_xml.h"

namespace qenzor::testing {
namespace {

TEST(DrawInfoIdxSet, WithoutIndicesHasFourBytes) {
  CDrawInfoIdxSet set;
  EXPECT_EQ(Written(set), (Bytes{23, 0, 0, 0, 4, 0, 0, 0, 0, 0, 0, 0}));
  EXPECT_EQ(set.GetHeader().DataSize, 4U);
}

TEST(DrawInfoIdxSet, ReadsAndWritesEveryIndexInOrder) {
  const Bytes bytes = {23, 0, 0, 0, 16,   0,    0,    0,    3, 0, 0, 0,
                       4,  0, 0, 0, 0xFF, 0xFF, 0xFF, 0xFF, 0, 1, 0, 0};
  for (const auto& set : {FromMemory<CDrawInfoIdxSet>(bytes), FromFile<CDrawInfoIdxSet>(bytes)}) {
    ASSERT_NE(set, nullptr);
    ASSERT_EQ(set->DrawInfoIdx.size(), 3U);
    EXPECT_EQ(set->DrawInfoIdx[0], 4U);
    EXPECT_EQ(set->DrawInfoIdx[1], 0xFFFFFFFFU);
    EXPECT_EQ(set->DrawInfoIdx[2], 256U);
    EXPECT_EQ(Written(*set, false), bytes);
    EXPECT_EQ(Written(*set), bytes);
  }
}

TEST(DrawInfoIdxSet, ACountBeyondItsBytesFails) {
  const Bytes bytes = Chunk(23, Bytes().U32(3).U32(1).U32(2));
  EXPECT_EQ(FromMemory<CDrawInfoIdxSet>(bytes), nullptr);
  EXPECT_EQ(FromFile<CDrawInfoIdxSet>(bytes), nullptr);
  const Bytes shorter = Chunk(23, Bytes().U32(3).U32(1));
  EXPECT_EQ(FromMemory<CDrawInfoIdxSet>(shorter), nullptr);
}

TEST(DrawInfoIdxSet, EveryMissingByteFails) {
  const Bytes whole = IdxSetBytes({1, 2});
  for (std::size_t size = 0; size < whole.size(); ++size) {
    EXPECT_EQ(FromMemory<CDrawInfoIdxSet>(whole.Front(size)), nullptr) << size;
    EXPECT_EQ(FromFile<CDrawInfoIdxSet>(whole.Front(size)), nullptr) << size;
  }
}

TEST(DrawInfoIdxSet, AnEnormousCountFailsWithoutItsBytes) {
  for (const std::uint32_t count : {0x3FFFFFFFU, 0x40000000U, 0x40000001U, 0xFFFFFFFFU}) {
    const Bytes bytes = Chunk(23, Bytes().U32(count).U32(1));
    EXPECT_EQ(FromMemory<CDrawInfoIdxSet>(bytes), nullptr) << count;
    EXPECT_EQ(FromFile<CDrawInfoIdxSet>(bytes), nullptr) << count;
  }
}

TEST(DrawInfoIdxSet, ReadsMoreIndicesThanSixteenBitsCount) {
  const Bytes bytes = IdxSetBytes(std::vector<std::uint32_t>(70000, 0x01020304));
  for (const auto& set : {FromMemory<CDrawInfoIdxSet>(bytes), FromFile<CDrawInfoIdxSet>(bytes)}) {
    ASSERT_NE(set, nullptr);
    EXPECT_EQ(set->DrawInfoIdx.size(), 70000U);
    EXPECT_TRUE(Written(*set) == bytes);
  }
}

TEST(DrawInfoIdxSet, OnlyRecalculationBringsTheDataSizeUpToDate) {
  const auto set = FromMemory<CDrawInfoIdxSet>(IdxSetBytes({1, 2}));
  set->DrawInfoIdx.clear();
  EXPECT_EQ(Written(*set, false), Bytes().U32(23).U32(12).U32(0));
  EXPECT_EQ(Written(*set, true), IdxSetBytes({}));
}

TEST(DrawInfoIdxSet, EveryFailingWriteGivesFalse) {
  const auto set = FromMemory<CDrawInfoIdxSet>(IdxSetBytes({1, 2}));
  FaultyFile sound(FaultyFile::kNever);
  ASSERT_TRUE(set->Write(&sound, true));
  for (std::uint32_t call = 0; call < sound.GetCalls(); ++call) {
    FaultyFile file(call);
    EXPECT_FALSE(set->Write(&file, true)) << call;
  }
}

TEST(DrawInfoIdxSet, CopiesAreTheirOwnAndOfAnotherClassEmpty) {
  const auto set = FromMemory<CDrawInfoIdxSet>(IdxSetBytes({1, 2}));
  const auto clone = ClonedFrom(*set);
  ASSERT_NE(clone, nullptr);
  set->DrawInfoIdx[0] = 9;
  EXPECT_EQ(Written(*clone, false), IdxSetBytes({1, 2}));
  CMarkData other;
  clone->DeepCopy(&other);
  EXPECT_EQ(Written(*clone), IdxSetBytes({}));
}

TEST(DrawInfoIdxSetEdit, RoundTripKeepsEveryByteAndComputesNoSize) {
  CDrawInfoIdxSetEdit edit;
  edit.ChunkDataToEditData(FromMemory<CDrawInfoIdxSet>(IdxSetBytes({5, 4, 4, 4294967295})).get());
  EXPECT_EQ(edit.DrawInfoIdx, (CList<std::uint32_t>{5, 4, 4, 4294967295}));
  const auto back = ToChunk<CDrawInfoIdxSet>(edit);
  EXPECT_EQ(back->GetHeader().DataSize, 0U);
  EXPECT_EQ(Written(*back), IdxSetBytes({5, 4, 4, 4294967295}));
}

TEST(DrawInfoIdxSetEdit, ConversionReplacesAndOfAnotherClassEmpties) {
  CDrawInfoIdxSetEdit edit;
  edit.DrawInfoIdx = {7, 8};
  edit.ChunkDataToEditData(FromMemory<CDrawInfoIdxSet>(IdxSetBytes({5})).get());
  EXPECT_EQ(edit.DrawInfoIdx, (CList<std::uint32_t>{5}));
  CMarkData other;
  edit.ChunkDataToEditData(&other);
  EXPECT_TRUE(edit.DrawInfoIdx.empty());
}

TEST(DrawInfoIdxSetEdit, CopiesReplaceAndOfAnotherClassEmpty) {
  CDrawInfoIdxSetEdit edit;
  edit.DrawInfoIdx = {7, 8};
  const std::unique_ptr<CAbstractChunkEdit> clone(edit.Clone());
  edit.DrawInfoIdx = {1};
  edit.DeepCopy(clone.get());
  EXPECT_EQ(edit.DrawInfoIdx, (CList<std::uint32_t>{7, 8}));
  CMarkDataEdit other;
  edit.DeepCopy(&other);
  EXPECT_TRUE(edit.DrawInfoIdx.empty());
}

TEST(DrawInfoIdxSetEdit, RefusesAndDestroysEverySubChunk) {
  CDrawInfoIdxSetEdit edit;
  EXPECT_FALSE(edit.SetSubChunkEdit(new Counted<CDrawInfoIdxSetEdit>));
  EXPECT_EQ(Counted<CDrawInfoIdxSetEdit>::Alive(), 0);
  EXPECT_FALSE(edit.SetSubChunkEdit(nullptr));
}

/// The chunk of a list 0, 1, 2 and so on.
std::unique_ptr<CDrawInfoIdxSet> ChunkOfCount(std::uint32_t count) {
  CDrawInfoIdxSetEdit edit;
  for (std::uint32_t i = 0; i < count; ++i) edit.DrawInfoIdx.push_back(i + 1000);
  return ToChunk<CDrawInfoIdxSet>(edit);
}

TEST(DrawInfoIdxSetEdit, UpTo65536IndicesKeepTheirPlaces) {
  for (const std::uint32_t count : {65535U, 65536U}) {
    const auto chunk = ChunkOfCount(count);
    ASSERT_EQ(chunk->DrawInfoIdx.size(), count);
    EXPECT_EQ(chunk->DrawInfoIdx[0], 1000U);
    EXPECT_EQ(chunk->DrawInfoIdx[count - 1], 1000 + count - 1);
  }
}

TEST(DrawInfoIdxSetEdit, MoreIndicesComeRoundToTheFront) {
  const auto chunk = ChunkOfCount(65537);
  ASSERT_EQ(chunk->DrawInfoIdx.size(), 65537U);
  EXPECT_EQ(chunk->DrawInfoIdx[0], 1000U + 65536);
  EXPECT_EQ(chunk->DrawInfoIdx[1], 1001U);
  EXPECT_EQ(chunk->DrawInfoIdx[65535], 1000U + 65535);
  EXPECT_EQ(chunk->DrawInfoIdx[65536], 0U);
}

TEST(DrawInfoIdxSetEdit, IndicesMayComeRoundMoreThanOnce) {
  const auto chunk = ChunkOfCount(3 * 65536 + 2);
  ASSERT_EQ(chunk->DrawInfoIdx.size(), 3U * 65536 + 2);
  EXPECT_EQ(chunk->DrawInfoIdx[0], 1000U + 3 * 65536);
  EXPECT_EQ(chunk->DrawInfoIdx[1], 1001U + 3 * 65536);
  EXPECT_EQ(chunk->DrawInfoIdx[2], 1002U + 2 * 65536);
  for (const std::size_t place : {65536U, 2U * 65536, 3U * 65536 + 1})
    EXPECT_EQ(chunk->DrawInfoIdx[place], 0U) << place;
}

TEST(DrawInfoIdxSetText, WritesOneElementForEachIndex) {
  const auto set = FromMemory<CDrawInfoIdxSet>(IdxSetBytes({4, 0, 4294967295}));
  EXPECT_EQ(XmlElement("DrawInfoIdxSet", set.get(), 1),
            "\t<DrawInfoIdxSet>\r\n"
            "\t\t<DrawInfoIdx>4</DrawInfoIdx>\r\n"
            "\t\t<DrawInfoIdx>0</DrawInfoIdx>\r\n"
            "\t\t<DrawInfoIdx>4294967295</DrawInfoIdx>\r\n"
            "\t</DrawInfoIdxSet>\r\n");
}

TEST(DrawInfoIdxSetText, WithoutIndicesNothingStandsInside) {
  CDrawInfoIdxSet set;
  EXPECT_EQ(XmlElement("DrawInfoIdxSet", &set), "<DrawInfoIdxSet>\r\n</DrawInfoIdxSet>\r\n");
}

TEST(DrawInfoIdxSetText, WritesNothingOfAnotherClass) {
  CMarkData other;
  CDrawInfoIdxSetTextConverter converter;
  EXPECT_EQ(XmlOf(converter, &other), "");
}

/// The indices that an element with this content gives.
CList<std::uint32_t> IndicesFrom(const std::string& content) {
  const auto edit = ZorEditFromDrawDataXml("<DrawAtterSet><DrawAtter><DrawInfoIdxSet>" + content +
                                           "</DrawInfoIdxSet></DrawAtter></DrawAtterSet>");
  return edit->DrawData.DrawAtterSet->GetElem(0)->DrawInfoIdxSet->DrawInfoIdx;
}

TEST(DrawInfoIdxSetText, ReadsIndicesInTheOrderOfTheElements) {
  EXPECT_EQ(IndicesFrom("<DrawInfoIdx>4</DrawInfoIdx><DrawInfoIdx>0</DrawInfoIdx>"
                        "<DrawInfoIdx>4</DrawInfoIdx>"),
            (CList<std::uint32_t>{4, 0, 4}));
  EXPECT_EQ(IndicesFrom(""), CList<std::uint32_t>{});
}

TEST(DrawInfoIdxSetText, IndicesAreReadAsUnsignedDecimals) {
  EXPECT_EQ(IndicesFrom("<DrawInfoIdx>4294967295</DrawInfoIdx><DrawInfoIdx>4294967296"
                        "</DrawInfoIdx><DrawInfoIdx>-1</DrawInfoIdx><DrawInfoIdx> 7x</DrawInfoIdx>"
                        "<DrawInfoIdx>words</DrawInfoIdx><DrawInfoIdx/>"),
            (CList<std::uint32_t>{4294967295, 4294967295, 4294967295, 7, 0, 0}));
}

TEST(DrawInfoIdxSetText, OtherTagsAreIgnored) {
  EXPECT_EQ(IndicesFrom("<drawinfoidx>1</drawinfoidx><DrawInfo>2</DrawInfo>3"
                        "<DrawInfoIdx>4</DrawInfoIdx>"),
            (CList<std::uint32_t>{4}));
}

}  // namespace
}  // namespace qenzor::testing
