#include "qenzor/qen/map_data.h"

#include <gtest/gtest.h>

#include "tests/support/chunk_io.h"
#include "tests/support/counted.h"
#include "tests/support/qen_bytes.h"
#include "tests/support/qen_xml.h"

namespace qenzor::testing {
namespace {

using CountedSet = Counted<CMeshSegmentSet>;
using CountedSetEdit = Counted<CMeshSegmentSetEdit>;

TEST(QenMapData, WithoutASetIsABareHeader) {
  CQenMapData map_data;
  EXPECT_EQ(Written(map_data), Bytes().U32(25).U32(0));
  const auto read = FromMemory<CQenMapData>(Bytes().U32(25).U32(0));
  ASSERT_NE(read, nullptr);
  EXPECT_EQ(read->MeshSegmentSet, nullptr);
}

TEST(QenMapData, ItsDataSizeIsTheSetsWholeSize) {
  const Bytes bytes = Chunk(25, SetChunk(29, {SegmentBytes(1), SegmentBytes(2)}));
  for (const auto& map_data : {FromMemory<CQenMapData>(bytes), FromFile<CQenMapData>(bytes)}) {
    ASSERT_NE(map_data, nullptr);
    EXPECT_EQ(map_data->MeshSegmentSet->GetElemCount(), 2U);
    EXPECT_EQ(Written(*map_data), bytes);
    EXPECT_EQ(map_data->GetHeader().DataSize, map_data->MeshSegmentSet->GetHeader().DataSize + 8);
  }
}

TEST(QenMapData, DropsOtherSubChunks) {
  const Bytes set = SetChunk(29, {SegmentBytes(1)});
  const Bytes mixed = Chunk(25, SetChunk(8, {LayerBytes(1)}).Add(set).Add(Chunk(99, {})));
  for (const auto& map_data : {FromMemory<CQenMapData>(mixed), FromFile<CQenMapData>(mixed)}) {
    ASSERT_NE(map_data, nullptr);
    EXPECT_EQ(Written(*map_data), Chunk(25, set));
  }
}

TEST(QenMapData, TheLaterOfTwoSetsStays) {
  const Bytes later = SetChunk(29, {SegmentBytes(2)});
  const auto map_data =
      FromMemory<CQenMapData>(Chunk(25, SetChunk(29, {SegmentBytes(1)}).Add(later)));
  ASSERT_NE(map_data, nullptr);
  EXPECT_EQ(Written(*map_data), Chunk(25, later));
}

TEST(QenMapData, AReplacedOrRefusedSubChunkIsDestroyed) {
  CQenMapData map_data;
  map_data.SubChunkSet(0, new CountedSet);
  map_data.SubChunkSet(1, new CMeshSegmentSet);
  EXPECT_EQ(CountedSet::Alive(), 0);
  map_data.SubChunkSet(2, new Counted<CLayerSet>);
  EXPECT_EQ(Counted<CLayerSet>::Alive(), 0);
}

TEST(QenMapData, CloneAndDeepCopyCopyHeaderAndSet) {
  const Bytes bytes = Chunk(25, SetChunk(29, {SegmentBytes(1)}));
  const auto map_data = FromMemory<CQenMapData>(bytes);
  ASSERT_NE(map_data, nullptr);
  const auto clone = ClonedFrom(*map_data);
  ASSERT_NE(clone, nullptr);
  EXPECT_EQ(Written(*clone, false), bytes);
  CQenMapData empty;
  clone->DeepCopy(&empty);
  EXPECT_EQ(Written(*clone, false), Bytes().U32(25).U32(0));
}

TEST(QenMapDataEdit, RoundTripKeepsEveryByteAndHasDataSizeZero) {
  const Bytes bytes = MapDataBytes({LineBytes({{1, 2}})});
  const auto map_data = FromMemory<CQenMapData>(bytes);
  ASSERT_NE(map_data, nullptr);
  CQenMapDataEdit edit;
  edit.ChunkDataToEditData(map_data.get());
  const auto back = ToChunk<CQenMapData>(edit);
  EXPECT_EQ(back->GetHeader().DataSize, 0U);
  EXPECT_EQ(back->MeshSegmentSet->GetHeader().DataSize, 0U);
  EXPECT_EQ(Written(*back), bytes);
}

TEST(QenMapDataEdit, AnotherChunkClassLeavesItReleased) {
  CQenMapDataEdit edit;
  edit.SetSubChunkEdit(new CountedSetEdit);
  CLayerSet other;
  edit.ChunkDataToEditData(&other);
  EXPECT_EQ(CountedSetEdit::Alive(), 0);
  EXPECT_EQ(edit.MeshSegmentSet, nullptr);
}

TEST(QenMapDataEdit, TakesOnlyAMeshSegmentSetAndDestroysTheEarlier) {
  CQenMapDataEdit edit;
  EXPECT_TRUE(edit.SetSubChunkEdit(new CountedSetEdit));
  auto* later = new CMeshSegmentSetEdit;
  EXPECT_TRUE(edit.SetSubChunkEdit(later));
  EXPECT_EQ(CountedSetEdit::Alive(), 0);
  EXPECT_FALSE(edit.SetSubChunkEdit(new Counted<CLayerSetEdit>));
  EXPECT_EQ(Counted<CLayerSetEdit>::Alive(), 0);
  EXPECT_EQ(edit.MeshSegmentSet.get(), later);
}

TEST(QenMapDataEdit, CloneAndDeepCopyCloneTheSet) {
  CQenMapDataEdit edit;
  edit.SetSubChunkEdit(new CMeshSegmentSetEdit);
  const std::unique_ptr<CAbstractChunkEdit> clone(edit.Clone());
  auto* copy = dynamic_cast<CQenMapDataEdit*>(clone.get());
  ASSERT_NE(copy, nullptr);
  EXPECT_NE(copy->MeshSegmentSet, nullptr);
  EXPECT_NE(copy->MeshSegmentSet, edit.MeshSegmentSet);
  CQenMapDataEdit empty;
  copy->DeepCopy(&empty);
  EXPECT_EQ(copy->MeshSegmentSet, nullptr);
}

TEST(QenMapDataText, TheSetStandsAtTheLevelGiven) {
  CQenMapData map_data;
  CQenMapDataTextConverter converter;
  EXPECT_EQ(XmlOf(converter, &map_data, 2), "");
  map_data.SubChunkSet(0, new CMeshSegmentSet);
  EXPECT_EQ(XmlOf(converter, &map_data, 2), "\t\t<MeshSegmentSet>\r\n\t\t</MeshSegmentSet>\r\n");
}

TEST(QenMapDataText, ReadsItsSetAndIgnoresOtherElements) {
  const auto edit = EditFromXml(
      "<Qen><QenMapData><LayerSet/><meshSegmentSet/><MeshSegmentSet><MeshSegment/></MeshSegmentSet>"
      "<Other/></QenMapData></Qen>");
  ASSERT_NE(edit, nullptr);
  EXPECT_EQ(edit->MapData->MeshSegmentSet->GetElemCount(), 1U);
  const auto without = EditFromXml("<Qen><QenMapData><LayerSet/></QenMapData></Qen>");
  EXPECT_EQ(without->MapData->MeshSegmentSet, nullptr);
}

}  // namespace
}  // namespace qenzor::testing
