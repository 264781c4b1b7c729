// Writing with and without recalculation, sizes and copies of chunks with single slots.

#include <gtest/gtest.h>

#include "qenzor/qen/layer_data.h"
#include "qenzor/qen/layer_set.h"
#include "qenzor/qen/mesh_segment.h"
#include "qenzor/qen/poly_obj.h"
#include "qenzor/qen/url_info.h"
#include "qenzor/qen/z_id_obj_set.h"
#include "tests/support/chunk_io.h"
#include "tests/support/counted.h"
#include "tests/support/faulty_file.h"
#include "tests/support/qen_bytes.h"
#include "tests/support/temp_file.h"

namespace qenzor::testing {
namespace {

/// What the chunk writes to a file on disk, which lends room for whole blocks.
Bytes WrittenToDisk(CAbstractChunk& chunk) {
  const TempFile file;
  CFile disk;
  if (!disk.Open(file.Path(), CFile::modeCreate | CFile::modeWrite) || !chunk.Write(&disk, true))
    return Bytes("not written");
  disk.Close();
  return file.Content();
}

TEST(ChunkWrite, BlocksOfAnySizeAreWrittenTheSameWhereRoomIsLent) {
  // 65,535 points take more room than any file lends, and 65,520 nearly all of it.
  for (const std::uint32_t count : {0U, 1U, 3U, 16000U, 65520U, 65529U, 65535U}) {
    CPolyObj polygon;
    polygon.Pt.Reset(static_cast<std::uint16_t>(count));
    for (std::uint32_t i = 0; i < count; ++i)
      polygon.Pt[i] = {static_cast<std::int32_t>(i % 30000), -static_cast<std::int32_t>(i % 7)};
    EXPECT_TRUE(WrittenToDisk(polygon) == Written(polygon)) << count;
  }
  for (const std::size_t length : {0U, 1U, 40000U, 131000U, 140000U}) {
    CUrlInfo url;
    url.Text.assign(length, u'x');
    EXPECT_TRUE(WrittenToDisk(url) == Written(url)) << length;
  }
}

TEST(ChunkWrite, AFreshChunkIsEightBytesLong) { EXPECT_EQ(CMeshSegment().GetChunkSize(), 8U); }

TEST(ChunkWrite, ChunkSizeIsDataSizeAndHeaderAndWraps) {
  CLayerData layer;
  layer.SetHeader({7, 100});
  EXPECT_EQ(layer.GetChunkSize(), 108U);
  layer.SetHeader({7, 0xFFFFFFFF});
  EXPECT_EQ(layer.GetChunkSize(), 7U);
}

TEST(ChunkWrite, RecalculationMakesEveryLevelRight) {
  auto segment =
      FromMemory<CMeshSegment>(SegmentBytes(1, SetChunk(id::kLayerSet, {LayerBytes(2)})));
  ASSERT_NE(segment, nullptr);
  // 2 + (8 + (4 + (8 + 2)))
  segment->RecursiveReCalcDataSize();
  EXPECT_EQ(segment->GetHeader().DataSize, 24U);
  EXPECT_EQ(segment->LayerSet->GetHeader().DataSize, 14U);
  EXPECT_EQ(segment->LayerSet->GetElem(0)->GetHeader().DataSize, 2U);
  segment->LayerSet->GetElem(0)->SubChunkSet(0, new CZIdObjSet);
  EXPECT_EQ(
      Written(*segment),
      SegmentBytes(1, SetChunk(id::kLayerSet, {LayerBytes(2, SetChunk(id::kZIdObjSet, {}))})));
  EXPECT_EQ(segment->GetHeader().DataSize, 24U + 12U);
}

TEST(ChunkWrite, WithoutRecalculationTheStaleSizesAreWritten) {
  auto segment = FromMemory<CMeshSegment>(SegmentBytes(1));
  ASSERT_NE(segment, nullptr);
  auto* layers = new CLayerSet;
  segment->SubChunkSet(0, layers);
  const Bytes stale = Bytes().U32(30).U32(2).U16(1).U32(8).U32(0).U32(0);
  EXPECT_EQ(Written(*segment, false), stale);
  // The header a chunk holds is written as it stands.
  segment->SetHeader({77, 12345});
  EXPECT_EQ(Written(*segment, false).Front(8), Bytes().U32(77).U32(12345));
}

TEST(ChunkWrite, NoSubChunkRecalculatesAgain) {
  class Recorder : public CLayerSet {
   public:
    bool Write(CFile* file, bool recalc) override {
      Recalc = recalc;
      return CLayerSet::Write(file, recalc);
    }
    bool Recalc = true;
  };
  CMeshSegment segment;
  auto* recorder = new Recorder;
  segment.SubChunkSet(0, recorder);
  Written(segment, true);
  EXPECT_FALSE(recorder->Recalc);
}

TEST(ChunkWrite, ASlotThatIsFilledAgainDestroysWhatItHeld) {
  CMeshSegment segment;
  segment.SubChunkSet(0, new Counted<CLayerSet>);
  EXPECT_EQ(Counted<CLayerSet>::Alive(), 1);
  segment.SubChunkSet(5, new CLayerSet);
  EXPECT_EQ(Counted<CLayerSet>::Alive(), 0);
  EXPECT_NE(segment.LayerSet, nullptr);
}

TEST(ChunkWrite, AChunkOfADerivedClassIsTakenWhereItsBaseIs) {
  CMeshSegment segment;
  auto* derived = new Counted<CLayerSet>;
  segment.SubChunkSet(0, derived);
  EXPECT_EQ(segment.LayerSet.get(), derived);
}

TEST(ChunkWrite, AChunkWithoutAPlaceIsDestroyed) {
  CMeshSegment segment;
  segment.SubChunkSet(0, new Counted<CLayerData>);
  EXPECT_EQ(Counted<CLayerData>::Alive(), 0);
  EXPECT_EQ(segment.LayerSet, nullptr);
}

TEST(ChunkWrite, DeletingAChunkDeletesWhatItOwns) {
  {
    CMeshSegment segment;
    segment.SubChunkSet(0, new Counted<CLayerSet>);
  }
  EXPECT_EQ(Counted<CLayerSet>::Alive(), 0);
}

TEST(ChunkWrite, CloneCopiesHeaderFieldsAndSubChunks) {
  auto segment =
      FromMemory<CMeshSegment>(SegmentBytes(9, SetChunk(id::kLayerSet, {LayerBytes(2)})));
  ASSERT_NE(segment, nullptr);
  segment->SetHeader({99, 1234});
  const auto clone = ClonedFrom(*segment);
  ASSERT_NE(clone, nullptr);
  EXPECT_EQ(clone->GetHeader().ChunkId, 99U);
  EXPECT_EQ(clone->GetHeader().DataSize, 1234U);
  EXPECT_NE(clone->LayerSet, segment->LayerSet);
  EXPECT_EQ(Written(*clone, false), Written(*segment, false));
}

TEST(ChunkWrite, DeepCopyOfTheSameClassReplaces) {
  auto source = FromMemory<CMeshSegment>(SegmentBytes(9));
  ASSERT_NE(source, nullptr);
  CMeshSegment target;
  target.SubChunkSet(0, new Counted<CLayerSet>);
  target.DeepCopy(source.get());
  EXPECT_EQ(Counted<CLayerSet>::Alive(), 0);
  EXPECT_EQ(Written(target), SegmentBytes(9));  // a slot empty in the source is empty in the copy
}

TEST(ChunkWrite, DeepCopyOfAnotherClassReleasesAndChangesNothingElse) {
  CMeshSegment target;
  target.MeshSegmentNo = 5;
  target.SetHeader({30, 77});
  target.SubChunkSet(0, new Counted<CLayerSet>);
  CLayerData source;
  source.LayerNo = 6;
  target.DeepCopy(&source);
  EXPECT_EQ(Counted<CLayerSet>::Alive(), 0);
  EXPECT_EQ(target.MeshSegmentNo, 5);
  EXPECT_EQ(target.GetHeader().DataSize, 77U);
}

TEST(ChunkWrite, ARefusingFileGivesFalseAtEveryCall) {
  auto segment = FromMemory<CMeshSegment>(SegmentBytes(1));
  ASSERT_NE(segment, nullptr);
  FaultyFile counter(FaultyFile::kNever);
  ASSERT_TRUE(segment->Write(&counter, true));
  ASSERT_GT(counter.GetCalls(), 1U);
  for (std::uint32_t call = 0; call < counter.GetCalls(); ++call) {
    FaultyFile file(call);
    EXPECT_FALSE(segment->Write(&file, true)) << call;
  }
}

}  // namespace
}  // namespace qenzor::testing
