#include "qenzor/zor/draw_atter.h"

#include <gtest/gtest.h>

#include "tests/support/chunk_io.h"
#include "tests/support/counted.h"
#include "tests/support/faulty_file.h"
#include "tests/support/zor_bytes.h"
#include "tests/support/zor_xml.h"

namespace qenzor::testing {
namespace {

using CountedIdxSet = Counted<CDrawInfoIdxSet>;
using CountedIdxSetEdit = Counted<CDrawInfoIdxSetEdit>;

/// A chunk of id 3 whose data is a z-id and these sub-chunks.
Bytes AtterWith(std::uint64_t zid, const std::vector<Bytes>& sub_chunks) {
  Bytes data = Bytes().U64(zid);
  for (const Bytes& sub_chunk : sub_chunks) data.Add(sub_chunk);
  return Chunk(id::kDrawAtter, data);
}

TEST(DrawAtter, WithoutAnIndexSetHasEightBytes) {
  const Bytes bytes = {3, 0, 0, 0, 8, 0, 0, 0, 0x88, 0x77, 0x66, 0x55, 0x44, 0x33, 0x22, 0x11};
  for (const auto& atter : {FromMemory<CDrawAtter>(bytes), FromFile<CDrawAtter>(bytes)}) {
    ASSERT_NE(atter, nullptr);
    EXPECT_EQ(atter->ZId, 0x1122334455667788U);
    EXPECT_EQ(atter->DrawInfoIdxSet, nullptr);
    EXPECT_EQ(Written(*atter), bytes);
    EXPECT_EQ(atter->GetHeader().DataSize, 8U);
  }
}

TEST(DrawAtter, WithAnIndexSetHasItsWholeChunkMore) {
  const Bytes bytes = AtterBytes(12, {0, 4});
  ASSERT_EQ(bytes.size(), 8U + 8 + 8 + 12);
  for (const auto& atter : {FromMemory<CDrawAtter>(bytes), FromFile<CDrawAtter>(bytes)}) {
    ASSERT_NE(atter, nullptr);
    EXPECT_EQ(atter->ZId, 12U);
    ASSERT_NE(atter->DrawInfoIdxSet, nullptr);
    EXPECT_EQ(atter->DrawInfoIdxSet->DrawInfoIdx[1], 4U);
    EXPECT_EQ(Written(*atter, false), bytes);
    EXPECT_EQ(Written(*atter), bytes);
    EXPECT_EQ(atter->GetHeader().DataSize, 28U);
  }
}

TEST(DrawAtter, AZIdOfAllOnesIsKept) {
  const Bytes bytes = BareAtterBytes(18446744073709551615U);
  const auto atter = FromMemory<CDrawAtter>(bytes);
  ASSERT_NE(atter, nullptr);
  EXPECT_EQ(atter->ZId, 18446744073709551615U);
  EXPECT_EQ(Written(*atter), bytes);
}

TEST(DrawAtter, EveryMissingByteFails) {
  const Bytes whole = AtterBytes(12, {0, 4});
  for (std::size_t size = 0; size < whole.size(); ++size) {
    EXPECT_EQ(FromMemory<CDrawAtter>(whole.Front(size)), nullptr) << size;
    EXPECT_EQ(FromFile<CDrawAtter>(whole.Front(size)), nullptr) << size;
  }
}

TEST(DrawAtter, OtherSubChunksAreDroppedWhereverTheyStand) {
  const Bytes bytes =
      AtterWith(5, {LineInfoBytes(1), IdxSetBytes({7}), BareAtterBytes(5), Chunk(99, {})});
  for (const auto& atter : {FromMemory<CDrawAtter>(bytes), FromFile<CDrawAtter>(bytes)}) {
    ASSERT_NE(atter, nullptr);
    EXPECT_EQ(Written(*atter), AtterBytes(5, {7}));
  }
}

TEST(DrawAtter, TheLaterOfTwoIndexSetsStays) {
  const Bytes bytes = AtterWith(5, {IdxSetBytes({7}), IdxSetBytes({8, 9})});
  for (const auto& atter : {FromMemory<CDrawAtter>(bytes), FromFile<CDrawAtter>(bytes)}) {
    ASSERT_NE(atter, nullptr);
    EXPECT_EQ(Written(*atter), AtterBytes(5, {8, 9}));
  }
}

TEST(DrawAtter, TakesSubChunksOfItsOwnKindAndDestroysOthers) {
  CDrawAtter atter;
  auto* indices = new CountedIdxSet;
  atter.SubChunkSet(3, indices);
  EXPECT_EQ(atter.DrawInfoIdxSet.get(), indices);
  atter.SubChunkSet(0, new Counted<CDrawAtter>);
  EXPECT_EQ(Counted<CDrawAtter>::Alive(), 0);
  EXPECT_EQ(atter.DrawInfoIdxSet.get(), indices);
  atter.SubChunkSet(0, nullptr);
  EXPECT_EQ(CountedIdxSet::Alive(), 1);
}

TEST(DrawAtter, DestructionDestroysTheIndexSet) {
  { CDrawAtter().SubChunkSet(0, new CountedIdxSet); }
  EXPECT_EQ(CountedIdxSet::Alive(), 0);
}

TEST(DrawAtter, EveryFailingWriteGivesFalse) {
  const auto atter = FromMemory<CDrawAtter>(AtterBytes(5, {1}));
  FaultyFile sound(FaultyFile::kNever);
  ASSERT_TRUE(atter->Write(&sound, true));
  for (std::uint32_t call = 0; call < sound.GetCalls(); ++call) {
    FaultyFile file(call);
    EXPECT_FALSE(atter->Write(&file, true)) << call;
  }
}

TEST(DrawAtter, OnlyRecalculationBringsTheDataSizeUpToDate) {
  const auto atter = FromMemory<CDrawAtter>(AtterBytes(5, {1}));
  atter->DrawInfoIdxSet.reset();
  EXPECT_EQ(Written(*atter, false), Bytes().U32(3).U32(24).U64(5));
  EXPECT_EQ(Written(*atter, true), BareAtterBytes(5));
}

TEST(DrawAtter, CopiesAreTheirOwnAndOfAnotherClassKeepTheZId) {
  const auto atter = FromMemory<CDrawAtter>(AtterBytes(5, {1, 2}));
  const auto clone = ClonedFrom(*atter);
  ASSERT_NE(clone, nullptr);
  EXPECT_NE(clone->DrawInfoIdxSet, atter->DrawInfoIdxSet);
  EXPECT_EQ(Written(*clone, false), AtterBytes(5, {1, 2}));
  clone->DeepCopy(FromMemory<CDrawAtter>(BareAtterBytes(6)).get());
  EXPECT_EQ(Written(*clone, false), BareAtterBytes(6));
  CDrawInfoIdxSet other;
  atter->DeepCopy(&other);
  EXPECT_EQ(Written(*atter), BareAtterBytes(5));
}

TEST(DrawAtterEdit, RoundTripKeepsEveryByteAndComputesNoSize) {
  CDrawAtterEdit edit;
  EXPECT_EQ(edit.ZId, 0U);
  EXPECT_EQ(edit.DrawInfoIdxSet, nullptr);
  edit.ChunkDataToEditData(FromMemory<CDrawAtter>(AtterBytes(5, {1, 2})).get());
  EXPECT_EQ(edit.ZId, 5U);
  ASSERT_NE(edit.DrawInfoIdxSet, nullptr);
  EXPECT_EQ(edit.DrawInfoIdxSet->DrawInfoIdx, (CList<std::uint32_t>{1, 2}));
  const auto back = ToChunk<CDrawAtter>(edit);
  EXPECT_EQ(back->GetHeader().ChunkId, 3U);
  EXPECT_EQ(back->GetHeader().DataSize, 0U);
  EXPECT_EQ(back->DrawInfoIdxSet->GetHeader().DataSize, 0U);
  EXPECT_EQ(Written(*back), AtterBytes(5, {1, 2}));
}

TEST(DrawAtterEdit, AChunkWithoutAnIndexSetGivesAnEmptyOne) {
  CDrawAtterEdit edit;
  edit.ChunkDataToEditData(FromMemory<CDrawAtter>(BareAtterBytes(5)).get());
  ASSERT_NE(edit.DrawInfoIdxSet, nullptr);
  EXPECT_TRUE(edit.DrawInfoIdxSet->DrawInfoIdx.empty());
  EXPECT_EQ(Written(*ToChunk<CDrawAtter>(edit)), AtterBytes(5));
}

TEST(DrawAtterEdit, AChunkOfAnotherClassDestroysTheIndexSet) {
  CDrawAtterEdit edit;
  edit.ZId = 5;
  edit.SetSubChunkEdit(new CountedIdxSetEdit);
  CMarkData other;
  edit.ChunkDataToEditData(&other);
  EXPECT_EQ(CountedIdxSetEdit::Alive(), 0);
  EXPECT_EQ(edit.DrawInfoIdxSet, nullptr);
  EXPECT_EQ(edit.ZId, 5U);
}

TEST(DrawAtterEdit, TakesAnIndexSetInPlaceOfTheOneHeld) {
  CDrawAtterEdit edit;
  EXPECT_TRUE(edit.SetSubChunkEdit(new CountedIdxSetEdit));
  auto* later = new CountedIdxSetEdit;
  EXPECT_TRUE(edit.SetSubChunkEdit(later));
  EXPECT_EQ(CountedIdxSetEdit::Alive(), 1);
  EXPECT_FALSE(edit.SetSubChunkEdit(new Counted<CDrawAtterEdit>));
  EXPECT_EQ(Counted<CDrawAtterEdit>::Alive(), 0);
  EXPECT_FALSE(edit.SetSubChunkEdit(nullptr));
  EXPECT_EQ(edit.DrawInfoIdxSet.get(), later);
  edit.Release();
  EXPECT_EQ(CountedIdxSetEdit::Alive(), 0);
  EXPECT_EQ(edit.DrawInfoIdxSet, nullptr);
}

TEST(DrawAtterEdit, CopiesCopyTheIndexSetToo) {
  CDrawAtterEdit edit;
  edit.ChunkDataToEditData(FromMemory<CDrawAtter>(AtterBytes(5, {1, 2})).get());
  const std::unique_ptr<CAbstractChunkEdit> clone(edit.Clone());
  edit.DrawInfoIdxSet->DrawInfoIdx.clear();
  EXPECT_EQ(Written(*ToChunk<CDrawAtter>(*clone)), AtterBytes(5, {1, 2}));
  edit.DeepCopy(clone.get());
  EXPECT_EQ(Written(*ToChunk<CDrawAtter>(edit)), AtterBytes(5, {1, 2}));
  CMarkDataEdit other;
  edit.DeepCopy(&other);
  EXPECT_EQ(edit.DrawInfoIdxSet, nullptr);
}

TEST(DrawAtterText, WritesTheZIdThenTheIndexSet) {
  const auto atter = FromMemory<CDrawAtter>(AtterBytes(12, {0, 4}));
  EXPECT_EQ(XmlElement("DrawAtter", atter.get(), 3),
            "\t\t\t<DrawAtter>\r\n"
            "\t\t\t\t<ZId>12</ZId>\r\n"
            "\t\t\t\t<DrawInfoIdxSet>\r\n"
            "\t\t\t\t\t<DrawInfoIdx>0</DrawInfoIdx>\r\n"
            "\t\t\t\t\t<DrawInfoIdx>4</DrawInfoIdx>\r\n"
            "\t\t\t\t</DrawInfoIdxSet>\r\n"
            "\t\t\t</DrawAtter>\r\n");
}

TEST(DrawAtterText, WithoutAnIndexSetWritesTheZIdOnly) {
  const auto atter = FromMemory<CDrawAtter>(BareAtterBytes(18446744073709551615U));
  EXPECT_EQ(XmlElement("DrawAtter", atter.get()),
            "<DrawAtter>\r\n\t<ZId>18446744073709551615</ZId>\r\n</DrawAtter>\r\n");
}

/// The one draw attribute of a set whose element has this content.
std::unique_ptr<CDrawAtterEdit> AtterFrom(const std::string& content) {
  const auto edit =
      ZorEditFromDrawDataXml("<DrawAtterSet><DrawAtter>" + content + "</DrawAtter></DrawAtterSet>");
  const auto elems = edit->DrawData.DrawAtterSet->GetElems();
  if (elems.size() != 1) return nullptr;
  return std::unique_ptr<CDrawAtterEdit>(static_cast<CDrawAtterEdit*>(elems[0]->Clone()));
}

TEST(DrawAtterText, ReadsTheZIdAsAnUnsignedDecimal) {
  const std::vector<std::pair<std::string, std::uint64_t>> cases = {
      {"12", 12},
      {"18446744073709551615", 18446744073709551615U},
      {"18446744073709551616", 18446744073709551615U},
      {"-1", 18446744073709551615U},
      {" \n+7x", 7},
      {"0x10", 0},
      {"words", 0},
      {"", 0}};
  for (const auto& [text, zid] : cases)
    EXPECT_EQ(AtterFrom("<ZId>" + text + "</ZId>")->ZId, zid) << text;
}

TEST(DrawAtterText, ReadsItsIndexSetAndTheLaterOfTwo) {
  const auto edit = AtterFrom(
      "<DrawInfoIdxSet><DrawInfoIdx>1</DrawInfoIdx></DrawInfoIdxSet><ZId>5</ZId>"
      "<DrawInfoIdxSet><DrawInfoIdx>2</DrawInfoIdx><DrawInfoIdx>3</DrawInfoIdx></DrawInfoIdxSet>");
  EXPECT_EQ(Written(*ToChunk<CDrawAtter>(*edit)), AtterBytes(5, {2, 3}));
}

TEST(DrawAtterText, WithoutAnIndexSetElementThereIsNoneAndTheChunkHasNone) {
  const auto edit = AtterFrom("<ZId>5</ZId>");
  EXPECT_EQ(edit->DrawInfoIdxSet, nullptr);
  EXPECT_EQ(Written(*ToChunk<CDrawAtter>(*edit)), BareAtterBytes(5));
}

TEST(DrawAtterText, OtherTagsAreIgnored) {
  const auto edit = AtterFrom("<zid>1</zid><DrawInfoIdx>2</DrawInfoIdx><drawinfoidxset/>");
  EXPECT_EQ(edit->ZId, 0U);
  EXPECT_EQ(edit->DrawInfoIdxSet, nullptr);
}

}  // namespace
}  // namespace qenzor::testing
