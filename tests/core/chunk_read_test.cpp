// How a chunk and the chunks below it are read: from memory and from a file alike.

#include <gtest/gtest.h>

#include "qenzor/qen/layer_data.h"
#include "qenzor/qen/map_data.h"
#include "qenzor/qen/mesh_segment.h"
#include "qenzor/qen/qen.h"
#include "qenzor/qen/z_id_obj_set.h"
#include "qenzor/zor/poly_shadow_draw_info.h"
#include "tests/support/chunk_io.h"
#include "tests/support/faulty_file.h"
#include "tests/support/qen_bytes.h"

namespace qenzor::testing {
namespace {

/// Tells what arrives, and lets no chunk stay.
class Receiver : public CLayerData {
 public:
  void SubChunkSet(std::uint32_t index, CAbstractChunk* chunk) override {
    Indices.push_back(index);
    Ids.push_back(chunk->GetHeader().ChunkId);
    delete chunk;
  }
  std::vector<std::uint32_t> Indices;
  std::vector<std::uint32_t> Ids;
};

using Numbers = std::vector<std::uint32_t>;

Bytes LayerWithData(std::uint32_t data_size, const Bytes& sub_chunks) {
  return Bytes().U32(id::kLayerData).U32(data_size).U16(9).Add(sub_chunks);
}

const Bytes kEmptyZIdSet = SetChunk(id::kZIdObjSet, {});

TEST(ChunkRead, ChunkOfItsPrimitiveBlockAloneReadsNothingFurther) {
  const Bytes bytes = LayerBytes(0xFFEE);
  ASSERT_NE(FromMemory<CLayerData>(bytes), nullptr);
  CMemFile file(Bytes(bytes).Add(kEmptyZIdSet).vector());
  CLayerData layer;
  ASSERT_TRUE(layer.Read(&file));
  EXPECT_EQ(layer.LayerNo, 0xFFEE);
  EXPECT_EQ(layer.ZIdObjSet, nullptr);
  EXPECT_EQ(file.GetPosition(), 10U);
}

TEST(ChunkRead, SubChunksArriveInFileOrderWithTheirIndex) {
  const Bytes subs = Bytes()
                         .Add(kEmptyZIdSet)
                         .Add(LineBytes({{1, 2}}))
                         .Add(Chunk(id::kNone, {}))
                         .Add(kEmptyZIdSet);
  const Bytes bytes = LayerWithData(2 + subs.size(), subs);
  Receiver memory;
  ASSERT_TRUE(memory.Read(bytes.data(), bytes.size()));
  EXPECT_EQ(memory.Indices, (Numbers{0, 1, 2, 3}));
  EXPECT_EQ(memory.Ids, (Numbers{20, 9, 28, 20}));
  CMemFile source(bytes.vector());
  Receiver file;
  ASSERT_TRUE(file.Read(&source));
  EXPECT_EQ(file.Indices, memory.Indices);
  EXPECT_EQ(file.Ids, memory.Ids);
}

TEST(ChunkRead, SubChunkPastTheParentsEndIsHandedOnButFailsTheRead) {
  const Bytes bytes = LayerWithData(2 + kEmptyZIdSet.size() - 1, kEmptyZIdSet);
  Receiver memory;
  EXPECT_FALSE(memory.Read(bytes.data(), bytes.size()));
  // A memory block that holds the whole sub-chunk lets it be read all the same.
  EXPECT_EQ(memory.Ids, Numbers{20});
  CMemFile source(bytes.vector());
  Receiver file;
  EXPECT_FALSE(file.Read(&source));
  EXPECT_EQ(file.Ids, Numbers{20});
}

TEST(ChunkRead, SubChunkThatOverranStaysWhereItWasPut) {
  const Bytes bytes = LayerWithData(2 + kEmptyZIdSet.size() - 1, kEmptyZIdSet);
  CLayerData layer;
  EXPECT_FALSE(layer.Read(bytes.data(), bytes.size()));
  EXPECT_NE(layer.ZIdObjSet, nullptr);
}

TEST(ChunkRead, MemoryShorterThanTheDataSizeFailsBeforeAnySubChunk) {
  const Bytes whole = LayerBytes(1, kEmptyZIdSet);
  Receiver memory;
  EXPECT_FALSE(memory.Read(whole.data(), whole.size() - 1));
  EXPECT_TRUE(memory.Ids.empty());
}

TEST(ChunkRead, BytesBehindTheChunkAreIgnored) {
  const Bytes more = LayerBytes(1, kEmptyZIdSet).Add("rest");
  EXPECT_NE(FromMemory<CLayerData>(more), nullptr);
  CMemFile file(more.vector());
  CLayerData layer;
  ASSERT_TRUE(layer.Read(&file));
  EXPECT_EQ(file.GetPosition(), more.size() - 4);
}

TEST(ChunkRead, FewerThanEightBytesLeftForASubChunkFail) {
  for (std::uint32_t left = 1; left < 8; ++left) {
    const Bytes bytes = LayerWithData(2 + left, Bytes(std::vector<std::uint8_t>(left)));
    EXPECT_EQ(FromMemory<CLayerData>(bytes), nullptr) << left;
    EXPECT_EQ(FromFile<CLayerData>(bytes), nullptr) << left;
  }
}

TEST(ChunkRead, FewerThanEightBytesFailAndLeaveTheHeaderAlone) {
  const Bytes bytes = LayerBytes(1).Front(7);
  CLayerData layer;
  EXPECT_FALSE(layer.Read(bytes.data(), bytes.size()));
  EXPECT_EQ(layer.GetHeader().ChunkId, 7U);
  EXPECT_EQ(layer.GetHeader().DataSize, 0U);
}

TEST(ChunkRead, PrimitiveBlockLongerThanTheDataSizeFails) {
  for (std::uint32_t size = 0; size < 2; ++size) {
    EXPECT_EQ(FromMemory<CLayerData>(LayerWithData(size, {})), nullptr) << size;
    EXPECT_EQ(FromFile<CLayerData>(LayerWithData(size, {})), nullptr) << size;
  }
}

TEST(ChunkRead, TakesWhateverIdStandsInTheHeader) {
  const Bytes bytes = Chunk(4711, Bytes().U16(3));
  const auto layer = FromMemory<CLayerData>(bytes);
  ASSERT_NE(layer, nullptr);
  EXPECT_EQ(layer->GetHeader().ChunkId, 4711U);
  EXPECT_EQ(Written(*layer), bytes);
}

TEST(ChunkRead, ASubChunkThatCannotBeReadFailsTheReadAndKeepsTheEarlierOnes) {
  const Bytes bad = Bytes().U32(id::kLineObj).U32(2).U16(1);  // one point is missing
  const Bytes subs = Bytes(kEmptyZIdSet).Add(bad);
  const Bytes bytes = LayerWithData(2 + subs.size(), subs);
  Receiver memory;
  EXPECT_FALSE(memory.Read(bytes.data(), bytes.size()));
  EXPECT_EQ(memory.Ids, Numbers{20});
  CMemFile source(bytes.vector());
  Receiver file;
  EXPECT_FALSE(file.Read(&source));
  EXPECT_EQ(file.Ids, Numbers{20});
}

TEST(ChunkRead, EveryCutOfAMapFailsInBothPaths) {
  const Bytes whole = QenDocumentBytes();
  const Bytes map(std::vector<std::uint8_t>(whole.vector().begin() + 42, whole.vector().end()));
  ASSERT_NE(FromMemory<CQenMapData>(map), nullptr);
  ASSERT_NE(FromFile<CQenMapData>(map), nullptr);
  for (std::size_t size = 0; size < map.size(); ++size) {
    EXPECT_EQ(FromMemory<CQenMapData>(map.Front(size)), nullptr) << size;
    EXPECT_EQ(FromFile<CQenMapData>(map.Front(size)), nullptr) << size;
  }
}

TEST(ChunkRead, ExceptionsOfTheFileReachTheCaller) {
  const Bytes bytes = LayerBytes(1, kEmptyZIdSet);
  for (std::uint32_t call = 0; call < 6; ++call) {
    ThrowingFile file(bytes, call);
    CLayerData layer;
    EXPECT_THROW(static_cast<void>(layer.Read(&file)), ThrowingFile::Thrown) << call;
  }
  ThrowingFile file(bytes, 6);
  CLayerData layer;
  EXPECT_TRUE(layer.Read(&file));
}

TEST(ChunkRead, ASizeThatReadingOverwritesIsTakenAsItWas) {
  const Bytes bytes = LayerBytes(1, kEmptyZIdSet);
  CLayerData layer;
  layer.SetHeader(CChunkHeader(id::kLayerData, bytes.size()));
  ASSERT_TRUE(layer.Read(bytes.data(), layer.GetHeader().DataSize));
  EXPECT_EQ(Written(layer), bytes);

  // A field that stands as the size: the colour is read before the last look at the size.
  const Bytes shadow = Bytes().U32(0xFFFFFFFF).U16(0);
  CPolyShadowDrawInfo info;
  info.SetHeader(CChunkHeader(14, 6));
  info.ShadowColor = shadow.size();
  EXPECT_TRUE(info.ReadData(shadow.data(), info.ShadowColor));
  const Bytes cut = Bytes().U32(0xFFFFFFFF).U16(0);
  info.SetHeader(CChunkHeader(14, 100));
  info.ShadowColor = cut.size();
  EXPECT_FALSE(info.ReadData(cut.data(), info.ShadowColor));

  const Bytes whole = QenDocumentBytes();
  CQen map;
  ASSERT_TRUE(map.Read(whole.data(), whole.size()));
  map.Revision = whole.size();
  ASSERT_TRUE(map.Read(whole.data(), map.Revision));
  map.MapData->SetHeader(CChunkHeader(id::kQenMapData, whole.size()));
  EXPECT_TRUE(map.Read(whole.data(), map.MapData->GetHeader().DataSize));
}

TEST(ChunkRead, ReadingAgainReplacesASlot) {
  CMeshSegment segment;
  const Bytes with = SegmentBytes(1, SetChunk(id::kLayerSet, {LayerBytes(1)}));
  const Bytes other = SegmentBytes(2, SetChunk(id::kLayerSet, {LayerBytes(3), LayerBytes(4)}));
  ASSERT_TRUE(segment.Read(with.data(), with.size()));
  ASSERT_TRUE(segment.Read(other.data(), other.size()));
  EXPECT_EQ(Written(segment), other);
}

}  // namespace
}  // namespace qenzor::testing
