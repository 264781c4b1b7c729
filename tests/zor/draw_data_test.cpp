// The root chunk of draw data: three sets, each in its own slot.

#include "qenzor/zor/draw_data.h"

#include <gtest/gtest.h>

#include "qenzor/zor/line_draw_info.h"
#include "tests/support/chunk_io.h"
#include "tests/support/counted.h"
#include "tests/support/faulty_file.h"
#include "tests/support/zor_bytes.h"
#include "tests/support/zor_xml.h"

namespace qenzor::testing {
namespace {

using CountedAtterSet = Counted<CDrawAtterSet>;
using CountedInfoSet = Counted<CDrawInfoSet>;
using CountedMarkSet = Counted<CMarkDataSet>;
using CountedAtterSetEdit = Counted<CDrawAtterSetEdit>;
using CountedInfoSetEdit = Counted<CDrawInfoSetEdit>;
using CountedMarkSetEdit = Counted<CMarkDataSetEdit>;

/// The sets whose bits are set, in the order in which they are written.
std::vector<Bytes> SomeSets(unsigned bits) {
  std::vector<Bytes> sets;
  for (unsigned i = 0; i < 3; ++i)
    if ((bits >> i & 1U) != 0) sets.push_back(ThreeSets()[i]);
  return sets;
}

TEST(ZorDrawData, WithoutSetsIsABareHeader) {
  CZorDrawData draw_data;
  EXPECT_EQ(draw_data.GetHeader().ChunkId, 26U);
  EXPECT_EQ(draw_data.GetHeader().DataSize, 0U);
  EXPECT_EQ(draw_data.DrawAtterSet, nullptr);
  EXPECT_EQ(draw_data.DrawInfoSet, nullptr);
  EXPECT_EQ(draw_data.MarkDataSet, nullptr);
  EXPECT_EQ(Written(draw_data), (Bytes{26, 0, 0, 0, 0, 0, 0, 0}));
}

TEST(ZorDrawData, ReadsAndWritesWhateverSetsThereAre) {
  for (unsigned bits = 0; bits < 8; ++bits) {
    const Bytes bytes = DrawDataBytes(SomeSets(bits));
    for (const auto& read : {FromMemory<CZorDrawData>(bytes), FromFile<CZorDrawData>(bytes)}) {
      ASSERT_NE(read, nullptr);
      EXPECT_EQ(read->DrawAtterSet != nullptr, (bits & 1U) != 0);
      EXPECT_EQ(read->DrawInfoSet != nullptr, (bits & 2U) != 0);
      EXPECT_EQ(read->MarkDataSet != nullptr, (bits & 4U) != 0);
      EXPECT_EQ(Written(*read, false), bytes);
      EXPECT_EQ(Written(*read), bytes);
    }
  }
}

TEST(ZorDrawData, ItsDataSizeIsThatOfTheWholeSets) {
  const auto read = FromMemory<CZorDrawData>(DrawDataBytes(ThreeSets()));
  ASSERT_NE(read, nullptr);
  read->SetHeader({26, 0});
  read->RecursiveReCalcDataSize();
  std::uint32_t size = 0;
  for (const Bytes& set : ThreeSets()) size += set.size();
  EXPECT_EQ(read->GetHeader().DataSize, size);
}

TEST(ZorDrawData, SetsAreWrittenInTheirOrderWhateverTheOrderRead) {
  const std::vector<Bytes> sets = ThreeSets();
  const Bytes bytes = DrawDataBytes({sets[2], sets[1], sets[0]});
  for (const auto& read : {FromMemory<CZorDrawData>(bytes), FromFile<CZorDrawData>(bytes)}) {
    ASSERT_NE(read, nullptr);
    EXPECT_EQ(Written(*read), DrawDataBytes(sets));
  }
}

TEST(ZorDrawData, DropsChunksOfOtherKinds) {
  const std::vector<Bytes> sets = ThreeSets();
  const Bytes bytes = DrawDataBytes({LineInfoBytes(1), sets[0], Chunk(99, {}), sets[1], sets[2],
                                     MarkBytes({}, {}), Chunk(id::kZorDrawData, {})});
  for (const auto& read : {FromMemory<CZorDrawData>(bytes), FromFile<CZorDrawData>(bytes)}) {
    ASSERT_NE(read, nullptr);
    EXPECT_EQ(Written(*read), DrawDataBytes(sets));
  }
}

TEST(ZorDrawData, TheLaterOfTwoSetsOfAKindStays) {
  const std::vector<Bytes> sets = ThreeSets();
  const Bytes empty = SetChunk(id::kDrawInfoSet, {});
  const Bytes bytes = DrawDataBytes({sets[1], sets[0], empty});
  for (const auto& read : {FromMemory<CZorDrawData>(bytes), FromFile<CZorDrawData>(bytes)}) {
    ASSERT_NE(read, nullptr);
    EXPECT_EQ(Written(*read), DrawDataBytes({sets[0], empty}));
  }
}

TEST(ZorDrawData, EveryMissingByteFails) {
  const Bytes whole = DrawDataBytes(ThreeSets());
  for (std::size_t size = 0; size < whole.size(); ++size) {
    EXPECT_EQ(FromMemory<CZorDrawData>(whole.Front(size)), nullptr) << size;
    EXPECT_EQ(FromFile<CZorDrawData>(whole.Front(size)), nullptr) << size;
  }
}

TEST(ZorDrawData, TheSlotIsChosenByTheClassNotByTheIndex) {
  CZorDrawData draw_data;
  auto* marks = new CountedMarkSet;
  auto* atters = new CountedAtterSet;
  auto* infos = new CountedInfoSet;
  for (CAbstractChunk* set :
       {static_cast<CAbstractChunk*>(marks), static_cast<CAbstractChunk*>(atters),
        static_cast<CAbstractChunk*>(infos)})
    draw_data.SubChunkSet(7, set);
  EXPECT_EQ(draw_data.DrawAtterSet.get(), atters);
  EXPECT_EQ(draw_data.DrawInfoSet.get(), infos);
  EXPECT_EQ(draw_data.MarkDataSet.get(), marks);
  draw_data.SubChunkSet(0, new Counted<CLineDrawInfo>);
  EXPECT_EQ(Counted<CLineDrawInfo>::Alive(), 0);
}

TEST(ZorDrawData, CloneCopiesHeaderAndSets) {
  const auto read = FromMemory<CZorDrawData>(DrawDataBytes(ThreeSets()));
  const auto clone = ClonedFrom(*read);
  ASSERT_NE(clone, nullptr);
  EXPECT_NE(clone->DrawInfoSet, read->DrawInfoSet);
  EXPECT_EQ(Written(*clone, false), DrawDataBytes(ThreeSets()));
}

TEST(ZorDrawData, DeepCopyReplacesAndOfAnotherClassOnlyReleases) {
  CZorDrawData target;
  target.SubChunkSet(0, new CountedAtterSet);
  target.SubChunkSet(0, new CountedMarkSet);
  const auto source = FromMemory<CZorDrawData>(DrawDataBytes(SomeSets(2)));
  target.DeepCopy(source.get());
  EXPECT_EQ(CountedAtterSet::Alive(), 0);
  EXPECT_EQ(CountedMarkSet::Alive(), 0);
  EXPECT_EQ(Written(target, false), DrawDataBytes(SomeSets(2)));
  CMarkData other;
  target.DeepCopy(&other);
  EXPECT_EQ(target.DrawInfoSet, nullptr);
  EXPECT_EQ(target.GetHeader().ChunkId, 26U);
}

TEST(ZorDrawData, ARefusedHeaderOrCountOfAnySetGivesFalse) {
  const auto read = FromMemory<CZorDrawData>(
      DrawDataBytes({SetChunk(id::kDrawAtterSet, {}), SetChunk(id::kDrawInfoSet, {}),
                     SetChunk(id::kMarkDataSet, {})}));
  FaultyFile sound(FaultyFile::kNever);
  ASSERT_TRUE(read->Write(&sound, true));
  for (std::uint32_t call = 0; call < sound.GetCalls(); ++call) {
    FaultyFile file(call);
    EXPECT_FALSE(read->Write(&file, true)) << call;
  }
}

TEST(ZorDrawDataEdit, RoundTripKeepsEveryByteAndComputesNoSize) {
  for (unsigned bits = 0; bits < 8; ++bits) {
    const Bytes bytes = DrawDataBytes(SomeSets(bits));
    CZorDrawDataEdit edit;
    edit.ChunkDataToEditData(FromMemory<CZorDrawData>(bytes).get());
    EXPECT_EQ(edit.DrawAtterSet != nullptr, (bits & 1U) != 0);
    EXPECT_EQ(edit.DrawInfoSet != nullptr, (bits & 2U) != 0);
    EXPECT_EQ(edit.MarkDataSet != nullptr, (bits & 4U) != 0);
    const std::unique_ptr<CAbstractChunkEdit> copy(edit.Clone());
    edit.Release();
    const auto back = ToChunk<CZorDrawData>(*copy);
    EXPECT_EQ(back->GetHeader().ChunkId, 26U);
    EXPECT_EQ(back->GetHeader().DataSize, 0U);
    EXPECT_EQ(Written(*back), bytes);
  }
}

TEST(ZorDrawDataEdit, TakesASetInPlaceOfTheOneHeld) {
  CZorDrawDataEdit edit;
  EXPECT_TRUE(edit.SetSubChunkEdit(new CountedMarkSetEdit));
  EXPECT_TRUE(edit.SetSubChunkEdit(new CountedAtterSetEdit));
  EXPECT_TRUE(edit.SetSubChunkEdit(new CountedInfoSetEdit));
  auto* later = new CountedInfoSetEdit;
  EXPECT_TRUE(edit.SetSubChunkEdit(later));
  EXPECT_EQ(CountedInfoSetEdit::Alive(), 1);
  EXPECT_EQ(edit.DrawInfoSet.get(), later);
  EXPECT_FALSE(edit.SetSubChunkEdit(new Counted<CMarkDataEdit>));
  EXPECT_EQ(Counted<CMarkDataEdit>::Alive(), 0);
  EXPECT_FALSE(edit.SetSubChunkEdit(nullptr));
  edit.Release();
  EXPECT_EQ(CountedAtterSetEdit::Alive(), 0);
  EXPECT_EQ(CountedInfoSetEdit::Alive(), 0);
  EXPECT_EQ(CountedMarkSetEdit::Alive(), 0);
}

TEST(ZorDrawDataEdit, DestructionDestroysTheSets) {
  { CZorDrawDataEdit().SetSubChunkEdit(new CountedMarkSetEdit); }
  EXPECT_EQ(CountedMarkSetEdit::Alive(), 0);
}

TEST(ZorDrawDataEdit, ConversionAndDeepCopyReplaceAndOfAnotherClassRelease) {
  CZorDrawDataEdit edit;
  edit.SetSubChunkEdit(new CountedMarkSetEdit);
  edit.ChunkDataToEditData(FromMemory<CZorDrawData>(DrawDataBytes(SomeSets(1))).get());
  EXPECT_EQ(CountedMarkSetEdit::Alive(), 0);
  EXPECT_EQ(edit.MarkDataSet, nullptr);
  CMarkData other_chunk;
  edit.ChunkDataToEditData(&other_chunk);
  EXPECT_EQ(edit.DrawAtterSet, nullptr);
  edit.SetSubChunkEdit(new CountedMarkSetEdit);
  CMarkDataEdit other_edit;
  edit.DeepCopy(&other_edit);
  EXPECT_EQ(CountedMarkSetEdit::Alive(), 0);
}

TEST(ZorDrawDataEdit, ACopySharesNothing) {
  CZorDrawDataEdit edit;
  edit.SetSubChunkEdit(new CMarkDataSetEdit);
  CZorDrawDataEdit copy;
  copy.DeepCopy(&edit);
  EXPECT_NE(copy.MarkDataSet, edit.MarkDataSet);
  edit.MarkDataSet->AddElem(0, new CMarkDataEdit);
  EXPECT_EQ(copy.MarkDataSet->GetElemCount(), 0U);
}

TEST(ZorDrawDataText, WritesItsSetsAtItsOwnLevelInOrder) {
  const std::vector<Bytes> sets = {SetChunk(id::kDrawAtterSet, {}), SetChunk(id::kDrawInfoSet, {}),
                                   SetChunk(id::kMarkDataSet, {})};
  const auto all = FromMemory<CZorDrawData>(DrawDataBytes(sets));
  CZorDrawDataTextConverter converter;
  EXPECT_EQ(XmlOf(converter, all.get(), 1),
            "\t<DrawAtterSet>\r\n\t</DrawAtterSet>\r\n"
            "\t<DrawInfoSet>\r\n\t</DrawInfoSet>\r\n"
            "\t<MarkDataSet>\r\n\t</MarkDataSet>\r\n");
  const auto one = FromMemory<CZorDrawData>(DrawDataBytes({sets[1]}));
  EXPECT_EQ(XmlOf(converter, one.get()), "<DrawInfoSet>\r\n</DrawInfoSet>\r\n");
  CZorDrawData none;
  EXPECT_EQ(XmlOf(converter, &none), "");
  CMarkData other;
  EXPECT_EQ(XmlOf(converter, &other), "");
}

TEST(ZorDrawDataText, ReadsTheSetsThatItKnowsInAnyOrder) {
  const auto edit = ZorEditFromDrawDataXml(
      "<MarkDataSet/><Unknown><DrawInfoSet/></Unknown><drawinfoset/><DrawAtterSet/>");
  EXPECT_NE(edit->DrawData.DrawAtterSet, nullptr);
  EXPECT_EQ(edit->DrawData.DrawInfoSet, nullptr);
  EXPECT_NE(edit->DrawData.MarkDataSet, nullptr);
}

TEST(ZorDrawDataText, ALaterSetElementReplacesTheEarlier) {
  const auto edit = ZorEditFromDrawDataXml(
      "<MarkDataSet><MarkData/><MarkData/></MarkDataSet><MarkDataSet><MarkData/></MarkDataSet>");
  EXPECT_EQ(edit->DrawData.MarkDataSet->GetElemCount(), 1U);
}

}  // namespace
}  // namespace qenzor::testing
