// Reading map projects.

#include <gtest/gtest.h>

#include <filesystem>

#include "qenzor/qen/qen.h"
#include "tests/support/chunk_io.h"
#include "tests/support/faulty_file.h"
#include "tests/support/qen_bytes.h"
#include "tests/support/temp_file.h"

namespace qenzor::testing {
namespace {

Bytes WrittenDoc(CQen& doc) {
  CMemFile file;
  return doc.Write(&file) ? Bytes(file.GetBytes()) : Bytes("not written");
}

TEST(QenRead, AFreshDocumentHoldsZeroesAndNoMapData) {
  CQen doc;
  EXPECT_EQ(doc.Ident, (std::array<char, 9>{}));
  EXPECT_EQ(doc.Magic, 0);
  EXPECT_EQ(doc.MajorVer, 0);
  EXPECT_EQ(doc.MinorVer, 0);
  EXPECT_EQ(doc.Revision, 0U);
  EXPECT_EQ(doc.GeoCoodinate, 0);
  EXPECT_EQ(doc.IncRect, CRect{});
  EXPECT_EQ(doc.SegmentNumX, 0);
  EXPECT_EQ(doc.SegmentNumY, 0);
  EXPECT_EQ(doc.CompCoef, 0);
  EXPECT_EQ(doc.MapData, nullptr);
}

void ExpectInfo(const CQen& doc) {
  EXPECT_EQ(std::string(doc.Ident.data(), 9), "QENMAP\r\n\x1A");
  EXPECT_EQ(doc.Magic, 0x4041);
  EXPECT_EQ(doc.MajorVer, 1);
  EXPECT_EQ(doc.MinorVer, 2);
  EXPECT_EQ(doc.Revision, 0x01020304U);
  EXPECT_EQ(doc.GeoCoodinate, 5);
  EXPECT_EQ(doc.IncRect, (CRect{-100, -200, 300, 400}));
  EXPECT_EQ(doc.SegmentNumX, 6);
  EXPECT_EQ(doc.SegmentNumY, 7);
  EXPECT_EQ(doc.CompCoef, 8);
}

TEST(QenRead, TakesTheFileInfoFromEverySource) {
  const Bytes bytes = QenDocumentBytes();
  CQen memory;
  ASSERT_TRUE(memory.Read(bytes.data(), bytes.size()));
  ExpectInfo(memory);
  CMemFile source(bytes.vector());
  CQen file;
  ASSERT_TRUE(file.Read(&source));
  ExpectInfo(file);
  const TempFile path(bytes);
  CQen named;
  ASSERT_TRUE(named.Read(path.Path()));
  ExpectInfo(named);
  EXPECT_EQ(WrittenDoc(named), bytes);
}

TEST(QenRead, TakesAnyContentOfTheFileInfo) {
  const Bytes bytes = Bytes(std::vector<std::uint8_t>(42, 0xFF)).Add(Bytes().U32(25).U32(0));
  CQen doc;
  ASSERT_TRUE(doc.Read(bytes.data(), bytes.size()));
  EXPECT_EQ(doc.Magic, 0xFFFF);
  EXPECT_EQ(doc.IncRect, (CRect{-1, -1, -1, -1}));
  EXPECT_EQ(WrittenDoc(doc), bytes);
}

TEST(QenRead, AFileShorterThanItsInfoChangesNothing) {
  for (const std::size_t size : {0U, 1U, 41U}) {
    const TempFile file(Bytes(std::vector<std::uint8_t>(size, 0xEE)));
    CQen doc;
    doc.Magic = 77;
    doc.MapData = std::make_unique<CQenMapData>();
    const CQenMapData* before = doc.MapData.get();
    EXPECT_FALSE(doc.Read(file.Path())) << size;
    EXPECT_EQ(doc.Magic, 77);
    EXPECT_EQ(doc.Ident[0], '\0');
    EXPECT_EQ(doc.MapData.get(), before);
  }
}

TEST(QenRead, AFileThatEndsInTheRootHeaderLeavesInfoAndEmptyMapData) {
  for (std::size_t size = 42; size < 50; ++size) {
    const TempFile file(QenDocumentBytes().Front(size));
    CQen doc;
    doc.MapData = FromMemory<CQenMapData>(MapDataBytes({}));
    EXPECT_FALSE(doc.Read(file.Path())) << size;
    ExpectInfo(doc);
    ASSERT_NE(doc.MapData, nullptr);
    EXPECT_EQ(doc.MapData->MeshSegmentSet, nullptr);
  }
}

TEST(QenRead, AFailureInTheRootChunkKeepsWhatWasRead) {
  const Bytes set = SetChunk(id::kMeshSegmentSet, {SegmentBytes(1)});
  const Bytes root = Bytes().U32(25).U32(set.size() + 8).Add(set).Add(Bytes().U32(99).U32(50));
  const Bytes bytes = QenInfoBytes().Add(root);
  CQen doc;
  EXPECT_FALSE(doc.Read(bytes.data(), bytes.size()));
  ExpectInfo(doc);
  ASSERT_NE(doc.MapData, nullptr);
  EXPECT_NE(doc.MapData->MeshSegmentSet, nullptr);
}

TEST(QenRead, TheRootChunksIdIsKept) {
  const Bytes bytes = QenInfoBytes().Add(Chunk(4711, SetChunk(id::kMeshSegmentSet, {})));
  const TempFile file(bytes);
  CQen doc;
  ASSERT_TRUE(doc.Read(file.Path()));
  EXPECT_EQ(doc.MapData->GetHeader().ChunkId, 4711U);
  EXPECT_EQ(WrittenDoc(doc), bytes);
}

TEST(QenRead, BytesBehindTheRootChunkDisappear) {
  const TempFile file(QenDocumentBytes().Add("and more"));
  CQen doc;
  ASSERT_TRUE(doc.Read(file.Path()));
  EXPECT_EQ(WrittenDoc(doc), QenDocumentBytes());
}

TEST(QenRead, EveryCutOfADocumentFails) {
  const Bytes whole = QenDocumentBytes();
  for (std::size_t size = 0; size < whole.size(); ++size) {
    const Bytes cut = whole.Front(size);
    CQen memory;
    EXPECT_FALSE(memory.Read(cut.data(), cut.size())) << size;
    CMemFile source(cut.vector());
    CQen file;
    EXPECT_FALSE(file.Read(&source)) << size;
  }
}

TEST(QenRead, ReadingAgainReplacesTheMapData) {
  const Bytes first = QenDocumentBytes();
  const Bytes second = QenInfoBytes().Add(Chunk(25, {}));
  CQen doc;
  ASSERT_TRUE(doc.Read(first.data(), first.size()));
  ASSERT_TRUE(doc.Read(second.data(), second.size()));
  EXPECT_EQ(WrittenDoc(doc), second);
}

TEST(QenRead, AFileThatIsNotThereOrNoFileFails) {
  CQen doc;
  EXPECT_FALSE(doc.Read("/nonexistent/map.qen"));
  EXPECT_FALSE(doc.Read(::testing::TempDir()));
  EXPECT_FALSE(doc.Read(""));
  EXPECT_EQ(doc.MapData, nullptr);
}

TEST(QenRead, AFileLongerThanThirtyTwoBitsTellFails) {
  // A sparse file: it takes no room on the disk.
  const TempFile file(QenDocumentBytes());
  std::error_code error;
  std::filesystem::resize_file(file.Path(), (1ULL << 32U), error);
  if (error) GTEST_SKIP() << "no room for a sparse file: " << error.message();
  CQen doc;
  EXPECT_FALSE(doc.Read(file.Path()));
  EXPECT_EQ(doc.Magic, 0);
}

}  // namespace
}  // namespace qenzor::testing
