#include "qenzor/core/chunk_header.h"

#include <gtest/gtest.h>

#include "tests/support/bytes.h"
#include "tests/support/faulty_file.h"

namespace qenzor::testing {
namespace {

const Bytes kBytes{0x07, 0x00, 0x00, 0x80, 0x04, 0x03, 0x02, 0xF1};

TEST(ChunkHeader, IsZeroWhenDefaultConstructed) {
  const CChunkHeader header;
  EXPECT_EQ(header.ChunkId, 0U);
  EXPECT_EQ(header.DataSize, 0U);
}

TEST(ChunkHeader, KeepsIdAndSizeThroughConstructionAndAssignment) {
  const CChunkHeader header(25, 4096);
  CChunkHeader copy;
  copy = header;
  EXPECT_EQ(copy.ChunkId, 25U);
  EXPECT_EQ(copy.DataSize, 4096U);
}

TEST(ChunkHeader, ReadsIdThenSizeLittleEndianFromMemory) {
  CChunkHeader header;
  ASSERT_TRUE(header.Read(kBytes.data(), kBytes.size()));
  EXPECT_EQ(header.ChunkId, 0x80000007U);
  EXPECT_EQ(header.DataSize, 0xF1020304U);
}

TEST(ChunkHeader, RefusesFewerThanEightBytesOfMemory) {
  for (std::uint32_t size = 0; size < 8; ++size) {
    CChunkHeader header;
    const Bytes part = kBytes.Front(size);
    EXPECT_FALSE(header.Read(part.data(), part.size())) << size;
  }
}

TEST(ChunkHeader, ReadsFromTheFilesPositionAndStopsBehindTheHeader) {
  CMemFile file(Bytes{0xAA}.Add(kBytes).U8(0xBB).vector());
  file.Seek(1, CFile::begin);
  CChunkHeader header;
  ASSERT_TRUE(header.Read(&file));
  EXPECT_EQ(header.ChunkId, 0x80000007U);
  EXPECT_EQ(header.DataSize, 0xF1020304U);
  EXPECT_EQ(file.GetPosition(), 9U);
}

TEST(ChunkHeader, RefusesFewerThanEightBytesOfAFile) {
  for (std::size_t size = 0; size < 8; ++size) {
    CMemFile file(kBytes.Front(size).vector());
    CChunkHeader header;
    EXPECT_FALSE(header.Read(&file)) << size;
  }
}

TEST(ChunkHeader, AsksForTheSizeEvenWhenTheIdCameShort) {
  FaultyFile file(kBytes, 0);
  CChunkHeader header;
  EXPECT_FALSE(header.Read(&file));
  EXPECT_EQ(file.GetCalls(), 2U);
}

TEST(ChunkHeader, WritesIdThenSizeLittleEndian) {
  CMemFile file;
  EXPECT_TRUE(CChunkHeader(0x80000007, 0xF1020304).Write(&file));
  EXPECT_EQ(Bytes(file.GetBytes()), kBytes);
}

TEST(ChunkHeader, TurnsTheFilesExceptionIntoFalse) {
  FaultyFile file(0);
  EXPECT_FALSE(CChunkHeader(1, 2).Write(&file));
}

}  // namespace
}  // namespace qenzor::testing
