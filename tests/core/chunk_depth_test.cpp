// Chunks nest 256 deep at most, the outermost counted.

#include <gtest/gtest.h>

#include "qenzor/core/unknown_chunk.h"
#include "qenzor/qen/layer_data.h"
#include "qenzor/qen/qen.h"
#include "tests/support/chunk_io.h"
#include "tests/support/faulty_file.h"
#include "tests/support/qen_bytes.h"

namespace qenzor::testing {
namespace {

/// A layer in a layer and so on, so many in all. Each is dropped by the one around it, but read.
Bytes NestedLayers(int levels) {
  Bytes bytes = LayerBytes(1);
  for (int level = 1; level < levels; ++level) bytes = LayerBytes(1, bytes);
  return bytes;
}

Bytes NestedUnknown(int levels) {
  Bytes bytes = Chunk(id::kNone, {});
  for (int level = 1; level < levels; ++level) bytes = Chunk(id::kNone, bytes);
  return bytes;
}

constexpr int kMost = 256;

TEST(ChunkDepth, TheMostLevelsAreReadInBothPaths) {
  EXPECT_NE(FromMemory<CLayerData>(NestedLayers(kMost)), nullptr);
  EXPECT_NE(FromFile<CLayerData>(NestedLayers(kMost)), nullptr);
  EXPECT_NE(FromMemory<CUnKnownChunk>(NestedUnknown(kMost)), nullptr);
}

TEST(ChunkDepth, OneLevelMoreIsRefusedInBothPaths) {
  EXPECT_EQ(FromMemory<CLayerData>(NestedLayers(kMost + 1)), nullptr);
  EXPECT_EQ(FromFile<CLayerData>(NestedLayers(kMost + 1)), nullptr);
  EXPECT_EQ(FromMemory<CUnKnownChunk>(NestedUnknown(kMost + 1)), nullptr);
}

TEST(ChunkDepth, AFileSkipsTheInsideOfUnknownChunksHoweverDeep) {
  EXPECT_NE(FromFile<CUnKnownChunk>(NestedUnknown(kMost + 1)), nullptr);
}

TEST(ChunkDepth, ARefusalLeavesNothingBehindForTheNextRead) {
  for (int i = 0; i < 3; ++i) {
    EXPECT_EQ(FromMemory<CLayerData>(NestedLayers(kMost + 1)), nullptr);
    EXPECT_EQ(FromFile<CLayerData>(NestedLayers(kMost + 1)), nullptr);
  }
  EXPECT_NE(FromMemory<CLayerData>(NestedLayers(kMost)), nullptr);
  EXPECT_NE(FromFile<CLayerData>(NestedLayers(kMost)), nullptr);
}

TEST(ChunkDepth, AnExceptionOfTheFileLeavesNothingBehindForTheNextRead) {
  ThrowingFile file(NestedLayers(kMost), 300);
  CLayerData layer;
  EXPECT_THROW(static_cast<void>(layer.Read(&file)), ThrowingFile::Thrown);
  EXPECT_NE(FromFile<CLayerData>(NestedLayers(kMost)), nullptr);
}

TEST(ChunkDepth, TheRootChunkOfADocumentIsLevelOne) {
  CQen doc;
  const Bytes most = QenInfoBytes().Add(Chunk(id::kQenMapData, NestedLayers(kMost - 1)));
  EXPECT_TRUE(doc.Read(most.data(), most.size()));
  const Bytes more = QenInfoBytes().Add(Chunk(id::kQenMapData, NestedLayers(kMost)));
  EXPECT_FALSE(doc.Read(more.data(), more.size()));
}

TEST(ChunkDepth, AHostileDepthIsRefusedWithoutHarm) {
  // 8 bytes a level: a megabyte of headers, each naming all that follows as its data.
  constexpr std::uint32_t kLevels = 1U << 17U;
  Bytes bytes;
  for (std::uint32_t left = kLevels; left > 0; --left)
    bytes.U32(id::kQenMapData).U32((left - 1) * 8);
  EXPECT_EQ(FromMemory<CUnKnownChunk>(bytes), nullptr);
  CMemFile file(bytes.vector());
  CQenMapData map_data;
  EXPECT_FALSE(map_data.Read(&file));
}

}  // namespace
}  // namespace qenzor::testing
