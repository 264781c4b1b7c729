#include "qenzor/core/unknown_chunk.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include "qenzor/core/chunk_factory.h"
#include "qenzor/qen/layer_data.h"
#include "qenzor/qen/qen.h"
#include "tests/support/chunk_io.h"
#include "tests/support/faulty_file.h"
#include "tests/support/qen_bytes.h"

namespace qenzor::testing {
namespace {

const Bytes kNoChunks("these bytes are no chunks");

TEST(UnknownChunk, AFileSkipsItsDataWhateverItIs) {
  CMemFile file(Chunk(99, kNoChunks).Add("next").vector());
  CUnKnownChunk chunk;
  ASSERT_TRUE(chunk.Read(&file));
  EXPECT_EQ(file.GetPosition(), 8U + kNoChunks.size());
  EXPECT_EQ(chunk.GetHeader().ChunkId, 99U);
  EXPECT_EQ(chunk.GetHeader().DataSize, kNoChunks.size());
}

TEST(UnknownChunk, DataPastTheEndIsAcceptedWhereThePositionMayMoveThere) {
  const Bytes bytes = Bytes().U32(99).U32(1000).Add("short");
  CMemFile open(bytes.vector());
  EXPECT_TRUE(CUnKnownChunk().Read(&open));
  EXPECT_EQ(open.GetPosition(), 1008U);
  ClampedFile clamped(bytes);
  EXPECT_FALSE(CUnKnownChunk().Read(&clamped));
}

TEST(UnknownChunk, AFileThatCannotBeMovedFailsTheRead) {
  struct StuckFile : CMemFile {
    using CMemFile::CMemFile;
    std::uint64_t Seek(std::int64_t, SeekPosition) override { throw CFileException("stuck"); }
  };
  const Bytes layer = LayerBytes(1, Chunk(99, kNoChunks));
  StuckFile inside(layer.vector());
  EXPECT_FALSE(CLayerData().Read(&inside));
  StuckFile alone(Chunk(99, kNoChunks).vector());
  EXPECT_EQ(CChunkFactory::Create(&alone), nullptr);
}

TEST(UnknownChunk, InAPipeItIsReadOver) {
  int ends[2];
  ASSERT_EQ(::pipe(ends), 0);
  const Bytes bytes = LayerBytes(1, Chunk(99, kNoChunks)).Add(LayerBytes(2, Chunk(99, kNoChunks)));
  const Bytes cut = bytes.Front(bytes.size() - 1);
  ASSERT_EQ(::write(ends[1], cut.data(), cut.size()), static_cast<ssize_t>(cut.size()));
  ::close(ends[1]);
  CFile file;
  ASSERT_TRUE(file.Open("/dev/fd/" + std::to_string(ends[0]), CFile::modeRead));
  const std::unique_ptr<CAbstractChunk> whole(CChunkFactory::Create(&file));
  EXPECT_NE(whole, nullptr);
  EXPECT_EQ(CChunkFactory::Create(&file), nullptr) << "a byte is missing";
  ::close(ends[0]);
}

TEST(UnknownChunk, TheLargestDataSizeIsAForwardMove) {
  CMemFile file(Bytes().U32(99).U32(0xFFFFFFFF).vector());
  EXPECT_TRUE(CUnKnownChunk().Read(&file));
  EXPECT_EQ(file.GetPosition(), 0xFFFFFFFFULL + 8);
}

TEST(UnknownChunk, FromMemoryEmptyDataSucceeds) {
  EXPECT_NE(FromMemory<CUnKnownChunk>(Chunk(28, {})), nullptr);
}

TEST(UnknownChunk, FromMemoryAnExactRunOfChunksSucceeds) {
  const Bytes run = LayerBytes(1).Add(Chunk(200, {})).Add(LineBytes({{1, 1}}));
  EXPECT_NE(FromMemory<CUnKnownChunk>(Chunk(28, run)), nullptr);
}

TEST(UnknownChunk, FromMemoryAnythingElseFails) {
  EXPECT_EQ(FromMemory<CUnKnownChunk>(Chunk(28, kNoChunks)), nullptr);
  EXPECT_EQ(FromMemory<CUnKnownChunk>(Chunk(28, LayerBytes(1).U8(0))), nullptr);
  EXPECT_EQ(FromMemory<CUnKnownChunk>(Bytes().U32(28).U32(9).Add(LayerBytes(1))), nullptr);
}

TEST(UnknownChunk, FromMemoryItsFailureIsItsParentsFailure) {
  const Bytes bad = LayerBytes(1, Chunk(99, kNoChunks));
  EXPECT_EQ(FromMemory<CLayerData>(bad), nullptr);
  // The same bytes are fine in a file, where the data is skipped.
  EXPECT_NE(FromFile<CLayerData>(bad), nullptr);
}

TEST(UnknownChunk, IsWrittenAsItsBareHeader) {
  const auto chunk = FromMemory<CUnKnownChunk>(Chunk(99, LayerBytes(1)));
  ASSERT_NE(chunk, nullptr);
  EXPECT_EQ(Written(*chunk, false), Bytes().U32(99).U32(10));
  EXPECT_EQ(Written(*chunk, true), Bytes().U32(99).U32(0));
}

TEST(UnknownChunk, CloneAndCopyKeepTheHeader) {
  CUnKnownChunk chunk;
  chunk.SetHeader({99, 55});
  const auto clone = ClonedFrom(chunk);
  ASSERT_NE(clone, nullptr);
  EXPECT_EQ(clone->GetHeader().ChunkId, 99U);
  EXPECT_EQ(clone->GetHeader().DataSize, 55U);
  CLayerData other;
  clone->DeepCopy(&other);
  EXPECT_EQ(clone->GetHeader().ChunkId, 99U);
}

TEST(UnknownChunk, DisappearsFromATreeWithItsData) {
  // In no slot and in no set is there a place for it: reading and writing loses it, and every data
  // size above it shrinks.
  const Bytes unknown = Chunk(99, LayerBytes(1));
  const Bytes set = Chunk(id::kMeshSegmentSet, Bytes().U32(1).Add(SegmentBytes(3, unknown)));
  const Bytes with = QenInfoBytes().Add(Chunk(id::kQenMapData, Bytes(set).Add(unknown)));
  CQen doc;
  ASSERT_TRUE(doc.Read(with.data(), with.size()));
  CMemFile file;
  ASSERT_TRUE(doc.Write(&file));
  EXPECT_EQ(
      Bytes(file.GetBytes()),
      QenInfoBytes().Add(Chunk(id::kQenMapData, SetChunk(id::kMeshSegmentSet, {SegmentBytes(3)}))));
}

}  // namespace
}  // namespace qenzor::testing
