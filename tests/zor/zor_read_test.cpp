// Reading draw data.

#include <gtest/gtest.h>

#include <filesystem>

#include "tests/support/chunk_io.h"
#include "tests/support/faulty_file.h"
#include "tests/support/zor_bytes.h"
#include "tests/support/zor_xml.h"

namespace qenzor::testing {
namespace {

void ExpectInfo(const CZor& doc) {
  EXPECT_EQ(std::string(doc.Ident.data(), 9), "ZORMAP\r\n\x1A");
  EXPECT_EQ(doc.Magic, 0x4041);
  EXPECT_EQ(doc.MajorVer, 3);
  EXPECT_EQ(doc.MinorVer, 4);
  EXPECT_EQ(doc.Revision, 0x0A0B0C0DU);
}

TEST(ZorRead, AFreshDocumentHoldsZeroesAndAnEmptyRootChunk) {
  CZor doc;
  EXPECT_EQ(doc.Ident, (std::array<char, 9>{}));
  EXPECT_EQ(doc.Magic, 0);
  EXPECT_EQ(doc.MajorVer, 0);
  EXPECT_EQ(doc.MinorVer, 0);
  EXPECT_EQ(doc.Revision, 0U);
  EXPECT_EQ(doc.DrawData.GetHeader().ChunkId, 26U);
  EXPECT_EQ(doc.DrawData.GetHeader().DataSize, 0U);
  EXPECT_EQ(doc.DrawData.DrawAtterSet, nullptr);
  EXPECT_EQ(doc.DrawData.DrawInfoSet, nullptr);
  EXPECT_EQ(doc.DrawData.MarkDataSet, nullptr);
}

TEST(ZorRead, TakesTheFileInfoFromItsNineteenBytes) {
  const Bytes bytes = {'a',  'b',  'c',  'd',  'e',  'f',  0x0D, 0x0A, 0x1A,
                       0x41, 0x40, 0x02, 0x01, 0x04, 0x03, 0x08, 0x07, 0x06,
                       0x05, 26,   0,    0,    0,    0,    0,    0,    0};
  for (const auto& doc : {ZorFromMemory(bytes), ZorFromFile(bytes)}) {
    ASSERT_NE(doc, nullptr);
    EXPECT_EQ(std::string(doc->Ident.data(), 9), "abcdef\r\n\x1A");
    EXPECT_EQ(doc->Magic, 0x4041);
    EXPECT_EQ(doc->MajorVer, 0x0102);
    EXPECT_EQ(doc->MinorVer, 0x0304);
    EXPECT_EQ(doc->Revision, 0x05060708U);
    EXPECT_EQ(WrittenZor(*doc), bytes);
  }
}

TEST(ZorRead, TakesADocumentFromEverySource) {
  const Bytes bytes = ZorDocumentBytes();
  const TempFile path(bytes);
  auto named = std::make_unique<CZor>();
  ASSERT_TRUE(named->Read(path.Path()));
  const auto memory = ZorFromMemory(bytes);
  const auto file = ZorFromFile(bytes);
  for (CZor* doc : {named.get(), memory.get(), file.get()}) {
    ASSERT_NE(doc, nullptr);
    ExpectInfo(*doc);
    EXPECT_EQ(doc->DrawData.DrawAtterSet->GetElemCount(), 2U);
    EXPECT_EQ(doc->DrawData.DrawInfoSet->GetElemCount(), 2U);
    EXPECT_EQ(doc->DrawData.MarkDataSet->GetElemCount(), 1U);
    EXPECT_EQ(WrittenZor(*doc), bytes);
  }
}

TEST(ZorRead, TakesAnyContentOfTheFileInfo) {
  const Bytes root = Bytes().U32(26).U32(0);
  for (const int content : {0x00, 0x5A, 0xFF}) {
    const Bytes bytes =
        Bytes(std::vector<std::uint8_t>(19, static_cast<std::uint8_t>(content))).Add(root);
    for (const auto& doc : {ZorFromMemory(bytes), ZorFromFile(bytes)}) {
      ASSERT_NE(doc, nullptr);
      EXPECT_EQ(doc->MajorVer, content * 0x101);
      EXPECT_EQ(WrittenZor(*doc), bytes);
    }
  }
}

TEST(ZorRead, WithoutSetsIs27Bytes) {
  const Bytes bytes = ZorInfoBytes().Add(DrawDataBytes({}));
  ASSERT_EQ(bytes.size(), 27U);
  const auto doc = ZorFromMemory(bytes);
  ASSERT_NE(doc, nullptr);
  EXPECT_EQ(WrittenZor(*doc), bytes);
}

TEST(ZorRead, AFileShorterThanItsInfoChangesNothing) {
  for (const std::size_t size : {0U, 1U, 18U}) {
    const TempFile file(Bytes(std::vector<std::uint8_t>(size, 0xEE)));
    CZor doc;
    doc.Magic = 77;
    doc.DrawData.SubChunkSet(0, new CMarkDataSet);
    EXPECT_FALSE(doc.Read(file.Path())) << size;
    EXPECT_EQ(doc.Magic, 77);
    EXPECT_EQ(doc.Ident[0], '\0');
    EXPECT_NE(doc.DrawData.MarkDataSet, nullptr);
  }
}

TEST(ZorRead, AFileThatEndsInTheRootHeaderLeavesTheInfo) {
  for (std::size_t size = 19; size < 27; ++size) {
    const TempFile file(ZorDocumentBytes().Front(size));
    CZor doc;
    EXPECT_FALSE(doc.Read(file.Path())) << size;
    ExpectInfo(doc);
    EXPECT_EQ(doc.DrawData.DrawAtterSet, nullptr);
  }
}

TEST(ZorRead, EveryCutOfADocumentFails) {
  const Bytes whole = ZorDocumentBytes();
  for (std::size_t size = 0; size < whole.size(); ++size) {
    EXPECT_EQ(ZorFromMemory(whole.Front(size)), nullptr) << size;
    EXPECT_EQ(ZorFromFile(whole.Front(size)), nullptr) << size;
  }
}

TEST(ZorRead, AFailureInTheRootChunkKeepsTheSetsReadBefore) {
  const std::vector<Bytes> sets = ThreeSets();
  const Bytes root =
      Bytes().U32(26).U32(sets[0].size() + 16).Add(sets[0]).Add(Bytes().U32(6).U32(99).U64(0));
  const Bytes bytes = ZorInfoBytes().Add(root);
  CZor memory;
  EXPECT_FALSE(memory.Read(bytes.data(), bytes.size()));
  CZor file;
  CMemFile source(bytes.vector());
  EXPECT_FALSE(file.Read(&source));
  for (const CZor* doc : {&memory, &file}) {
    ExpectInfo(*doc);
    ASSERT_NE(doc->DrawData.DrawAtterSet, nullptr);
    EXPECT_EQ(doc->DrawData.DrawAtterSet->GetElemCount(), 2U);
    EXPECT_EQ(doc->DrawData.DrawInfoSet, nullptr);
  }
}

TEST(ZorRead, TheRootChunksIdIsKept) {
  const Bytes bytes = ZorInfoBytes().Add(Chunk(4711, ThreeSets()[2]));
  const auto doc = ZorFromMemory(bytes);
  ASSERT_NE(doc, nullptr);
  EXPECT_EQ(doc->DrawData.GetHeader().ChunkId, 4711U);
  EXPECT_EQ(WrittenZor(*doc), bytes);
}

TEST(ZorRead, BytesBehindTheRootChunkDisappear) {
  const TempFile file(ZorDocumentBytes().Add("and more"));
  CZor doc;
  ASSERT_TRUE(doc.Read(file.Path()));
  EXPECT_EQ(WrittenZor(doc), ZorDocumentBytes());
}

TEST(ZorRead, ReadingAgainReplacesTheSetsThatComeAndKeepsTheOthers) {
  const std::vector<Bytes> sets = ThreeSets();
  const Bytes second = ZorInfoBytes().Add(DrawDataBytes({SetChunk(id::kDrawInfoSet, {})}));
  const auto doc = ZorFromMemory(ZorDocumentBytes());
  ASSERT_TRUE(doc->Read(second.data(), second.size()));
  EXPECT_EQ(WrittenZor(*doc),
            ZorInfoBytes().Add(DrawDataBytes({sets[0], SetChunk(id::kDrawInfoSet, {}), sets[2]})));
}

TEST(ZorRead, AFileThatIsNotThereOrNoFileFails) {
  CZor doc;
  EXPECT_FALSE(doc.Read("/nonexistent/map.zor"));
  EXPECT_FALSE(doc.Read(::testing::TempDir()));
  EXPECT_FALSE(doc.Read(""));
  EXPECT_EQ(doc.Magic, 0);
}

TEST(ZorRead, AFileLongerThanThirtyTwoBitsTellFails) {
  // A sparse file: it takes no room on the disk.
  const TempFile file(ZorDocumentBytes());
  std::error_code error;
  std::filesystem::resize_file(file.Path(), (1ULL << 32U), error);
  if (error) GTEST_SKIP() << "no room for a sparse file: " << error.message();
  CZor doc;
  EXPECT_FALSE(doc.Read(file.Path()));
  EXPECT_EQ(doc.Magic, 0);
}

TEST(ZorRead, AShortReadAtAnyCallFails) {
  const Bytes bytes = ZorDocumentBytes();
  FaultyFile whole(bytes, FaultyFile::kNever);
  ASSERT_TRUE(CZor().Read(&whole));
  for (std::uint32_t call = 0; call < whole.GetCalls(); ++call) {
    FaultyFile file(bytes, call);
    EXPECT_FALSE(CZor().Read(&file)) << call;
  }
}

TEST(ZorRead, AnExceptionAtAnyReadReachesTheCallerAndLeavesTheDocumentWhole) {
  const Bytes bytes = ZorDocumentBytes();
  FaultyFile whole(bytes, FaultyFile::kNever);
  ASSERT_TRUE(CZor().Read(&whole));
  for (std::uint32_t call = 0; call < whole.GetCalls(); ++call) {
    ThrowingFile file(bytes, call);
    CZor doc;
    EXPECT_THROW(static_cast<void>(doc.Read(&file)), ThrowingFile::Thrown) << call;
    ASSERT_TRUE(doc.Read(bytes.data(), bytes.size())) << call;
    EXPECT_EQ(WrittenZor(doc), bytes) << call;
  }
}

}  // namespace
}  // namespace qenzor::testing
