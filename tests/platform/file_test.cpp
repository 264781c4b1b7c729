#include "qenzor/platform/file.h"

#include <gtest/gtest.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cstdlib>
#include <limits>
#include <string>
#include <string_view>

#include "tests/support/temp_file.h"

namespace qenzor::testing {
namespace {

TEST(File, PositionsCountWhatIsStillInTheBuffer) {
  const TempFile path;
  CFile file;
  ASSERT_TRUE(file.Open(path.Path(), CFile::modeCreate | CFile::modeWrite));
  EXPECT_EQ(file.GetPosition(), 0U);
  file.Write("abcdef", 6);
  EXPECT_EQ(file.GetPosition(), 6U);
  EXPECT_EQ(file.GetLength(), 6U);
  EXPECT_EQ(file.Seek(2, CFile::begin), 2U);
  file.Write("X", 1);
  EXPECT_EQ(file.Seek(-1, CFile::end), 5U);
  EXPECT_EQ(file.Seek(-3, CFile::current), 2U);
  file.Close();
  EXPECT_EQ(path.Content(), Bytes("abXdef"));
}

TEST(File, SeekingWhereNothingCanBeThrows) {
  const TempFile path(std::string_view("abc"));
  CFile file;
  EXPECT_THROW(file.Seek(0, CFile::begin), CFileException);
  ASSERT_TRUE(file.Open(path.Path(), CFile::modeRead));
  EXPECT_THROW(file.Seek(-1, CFile::begin), CFileException);
  EXPECT_EQ(file.Seek(1, CFile::begin), 1U);
  CMemFile memory;
  EXPECT_THROW(memory.Seek(-1, CFile::begin), CFileException);
  EXPECT_EQ(CFile().GetPosition(), 0U);
  EXPECT_EQ(CFile().GetLength(), 0U);
}

TEST(File, ABlockLargerThanTheBufferGoesThroughAtOnce) {
  const TempFile path;
  const std::string large(1 << 20, 'x');
  CFile file;
  ASSERT_TRUE(file.Open(path.Path(), CFile::modeCreate | CFile::modeWrite));
  file.Write("ab", 2);
  file.Write(large.data(), static_cast<std::uint32_t>(large.size()));
  file.Close();
  EXPECT_EQ(path.Content(), Bytes("ab" + large));
}

TEST(File, AFullDiskIsAnExceptionThatSaysSo) {
  CFile file;
  if (!file.Open("/dev/full", CFile::modeWrite)) GTEST_SKIP() << "no /dev/full here";
  file.Write("abc", 3);
  try {
    file.Close();
    FAIL() << "nothing was thrown";
  } catch (const CFileException& error) {
    EXPECT_FALSE(std::string(error.what()).empty());
  }
  EXPECT_THROW(file.Write("abc", 3), CFileException);
}

/// A file of this content, opened for reading and writing.
class UpdatedFile {
 public:
  explicit UpdatedFile(std::string_view content) : m_path(content) {
    EXPECT_TRUE(m_file.Open(m_path.Path(), CFile::modeWrite));
  }
  CFile* operator->() { return &m_file; }
  std::string Read(std::uint32_t size) {
    std::string text(size, '?');
    text.resize(m_file.Read(text.data(), size));
    return text;
  }
  std::string ClosedContent() {
    m_file.Close();
    return m_path.Text();
  }

 private:
  TempFile m_path;
  CFile m_file;
};

TEST(File, WhatAReadCouldNotSendOnIsToldByTheNextFlushOrClose) {
  for (const bool flushes : {false, true}) {
    CFile file;
    if (!file.Open("/dev/full", CFile::modeWrite)) GTEST_SKIP() << "no /dev/full here";
    file.Write("abc", 3);
    char byte = 0;
    EXPECT_EQ(file.Read(&byte, 1), 0U);
    if (flushes) {
      EXPECT_THROW(file.Flush(), CFileException);
    } else {
      EXPECT_THROW(file.Close(), CFileException);
    }
    EXPECT_NO_THROW(file.Close());
  }
}

TEST(File, AReadAfterAWriteGoesOnWhereTheWriteEnded) {
  UpdatedFile file("abcdef");
  file->Write("XY", 2);
  EXPECT_EQ(file.Read(2), "cd");
  EXPECT_EQ(file->GetPosition(), 4U);
  EXPECT_EQ(file.ClosedContent(), "XYcdef");
}

TEST(File, AWriteAfterAReadGoesOnWhereTheReadEnded) {
  UpdatedFile file("abcdef");
  EXPECT_EQ(file.Read(2), "ab");
  file->Write("XY", 2);
  EXPECT_EQ(file->GetPosition(), 4U);
  EXPECT_EQ(file.Read(9), "ef");
  file->Write("Z", 1);
  EXPECT_EQ(file->Seek(1, CFile::begin), 1U);
  EXPECT_EQ(file.Read(1), "b");
  EXPECT_EQ(file.ClosedContent(), "abXYefZ");
}

TEST(File, BlocksInTheBufferAndCallsMayFollowEachOther) {
  UpdatedFile file("abcdef");
  const std::uint8_t* taken = file->TakeBlock(2);
  ASSERT_NE(taken, nullptr);
  EXPECT_EQ(std::string(taken, taken + 2), "ab");
  std::uint8_t* room = file->BeginBlock(8);
  ASSERT_NE(room, nullptr);
  *room = 'X';
  file->EndBlock(room + 1);
  EXPECT_EQ(file.Read(1), "d");
  EXPECT_EQ(file->TakeBlock(3), nullptr) << "only two are left";
  EXPECT_EQ(file.Read(3), "ef");
  EXPECT_EQ(file.ClosedContent(), "abXdef");
}

TEST(File, OpeningAnotherFileKeepsWhatWasWritten) {
  const TempFile first;
  const TempFile second;
  CFile file;
  ASSERT_TRUE(file.Open(first.Path(), CFile::modeCreate | CFile::modeWrite));
  file.Write("abc", 3);
  ASSERT_TRUE(file.Open(second.Path(), CFile::modeCreate | CFile::modeWrite));
  EXPECT_EQ(first.Text(), "abc");
  EXPECT_EQ(file.GetPosition(), 0U);
  file.Write("de", 2);
  file.Close();
  EXPECT_EQ(first.Text(), "abc");
  EXPECT_EQ(second.Text(), "de");
}

TEST(File, OpeningAnotherFileFailsWhereTheFirstDoesNotTakeItsBytes) {
  const TempFile other(std::string_view("abc"));
  CFile file;
  if (!file.Open("/dev/full", CFile::modeWrite)) GTEST_SKIP() << "no /dev/full here";
  file.Write("abc", 3);
  EXPECT_FALSE(file.Open(other.Path(), CFile::modeRead));
  EXPECT_TRUE(file.Open(other.Path(), CFile::modeRead));
}

TEST(File, AWriteToAFileOpenedForReadingThrows) {
  const TempFile path(std::string_view("abc"));
  CDocumentFile file;
  ASSERT_TRUE(file.Open(path.Path(), CFile::modeRead));
  EXPECT_THROW(file.Write("X", 1), CFileException);
  EXPECT_THROW(file.BeginBlock(1), CFileException);
  EXPECT_FALSE(file.Finish());
  EXPECT_EQ(path.Text(), "abc");
  CFile plain;
  ASSERT_TRUE(plain.Open(path.Path(), CFile::modeCreate | CFile::modeWrite));
  plain.Close();
  EXPECT_THROW(plain.Write("X", 1), CFileException) << "closed";
}

TEST(File, AFileThatIsOnlyWrittenGivesNothing) {
  const TempFile path(std::string_view("abc"));
  CFile file;
  ASSERT_TRUE(file.Open(path.Path(), CFile::modeCreate | CFile::modeWrite));
  file.Write("xyz", 3);
  file.Seek(0, CFile::begin);
  char byte = '?';
  EXPECT_EQ(file.Read(&byte, 1), 0U);
  EXPECT_EQ(byte, '?');
}

TEST(File, LongReadsAndMovesMeetTheSameBytesAsShortOnes) {
  std::string content(300000, '\0');
  for (std::size_t i = 0; i < content.size(); ++i) content[i] = static_cast<char>(i * 7 / 3);
  UpdatedFile file(content);
  std::uint64_t at = 0;
  for (const std::uint32_t size : {70000U, 1U, 3U, 65536U, 65535U, 10U, 65537U}) {
    EXPECT_EQ(file.Read(size), content.substr(at, size)) << size;
    at += size;
    EXPECT_EQ(file->GetPosition(), at);
    EXPECT_EQ(file->Seek(-5, CFile::current), at - 5);
    EXPECT_EQ(file.Read(4), content.substr(at - 5, 4));
    EXPECT_EQ(file->Seek(1, CFile::current), at);
  }
}

/// The two ends of a pipe as paths, the first to read from.
class Pipe {
 public:
  Pipe() { EXPECT_EQ(::pipe(m_ends), 0); }
  ~Pipe() {
    ::close(m_ends[0]);
    CloseWriting();
  }
  Pipe(const Pipe&) = delete;
  Pipe& operator=(const Pipe&) = delete;

  std::string Path() const { return "/dev/fd/" + std::to_string(m_ends[0]); }
  void Put(std::string_view text) const {
    EXPECT_EQ(::write(m_ends[1], text.data(), text.size()), static_cast<ssize_t>(text.size()));
  }
  void CloseWriting() {
    if (m_ends[1] >= 0) ::close(m_ends[1]);
    m_ends[1] = -1;
  }

 private:
  int m_ends[2] = {-1, -1};
};

TEST(File, APipeGivesWhatIsThereAndMovesForwardOnly) {
  Pipe pipe;
  pipe.Put("abcdef");
  CFile file;
  ASSERT_TRUE(file.Open(pipe.Path(), CFile::modeRead));
  char byte = '?';
  ASSERT_EQ(file.Read(&byte, 1), 1U) << "without waiting for the end";
  EXPECT_EQ(byte, 'a');
  EXPECT_EQ(file.Seek(1, CFile::current), 2U);
  EXPECT_EQ(file.GetPosition(), 2U);
  pipe.Put(std::string(30000, 'x') + "z");
  pipe.CloseWriting();
  EXPECT_EQ(file.Seek(30004, CFile::current), 30006U);
  ASSERT_EQ(file.Read(&byte, 1), 1U);
  EXPECT_EQ(byte, 'z');
  EXPECT_THROW(file.Seek(1, CFile::current), CFileException) << "past the end";
}

TEST(File, MemoryRefusesPositionsThatNoFileHas) {
  constexpr auto kFar = std::numeric_limits<std::int64_t>::max();
  CMemFile file;
  EXPECT_EQ(file.Seek(kFar, CFile::begin), static_cast<std::uint64_t>(kFar));
  EXPECT_THROW(file.Write("ab", 2), CFileException);
  EXPECT_THROW(file.Seek(kFar, CFile::current), CFileException);
  EXPECT_THROW(file.Seek(1, CFile::current), CFileException);
  EXPECT_EQ(file.Seek(kFar - 1, CFile::begin), static_cast<std::uint64_t>(kFar) - 1);
  EXPECT_THROW(file.Write("a", 1), CFileException) << "memory has no room for it";
  EXPECT_EQ(file.GetLength(), 0U);
  EXPECT_EQ(file.Seek(0, CFile::end), 0U);
  file.Write("a", 1);
  EXPECT_EQ(file.GetBytes().size(), 1U);
}

TEST(StdioFile, OpeningAFileHandsTheTextToTheSinkFirst) {
  const TempFile path;
  CMemFile sink;
  CStdioFile file(sink);
  file.WriteString("a\n");
  ASSERT_TRUE(file.Open(path.Path(), CFile::modeCreate));
  EXPECT_EQ(Bytes(sink.GetBytes()), Bytes("a\r\n"));
  file.WriteString("b");
  file.Close();
  EXPECT_EQ(path.Text(), "b");
  EXPECT_EQ(sink.GetBytes().size(), 3U);
}

TEST(StdioFile, ATextLongerThan32BitsCountIsWrittenWhole) {
  if (std::getenv("QENZOR_LONG") == nullptr)
    GTEST_SKIP() << "4 GiB are written where there is time";
  constexpr std::size_t kSize = (std::size_t{1} << 32) + 5;
  void* const zeros =
      ::mmap(nullptr, kSize, PROT_READ, MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
  ASSERT_NE(zeros, MAP_FAILED);
  CStdioFile file;
  ASSERT_TRUE(file.Open("/dev/null", CFile::modeCreate));
  file.WriteString({static_cast<const char*>(zeros), kSize});
  EXPECT_EQ(file.GetPosition(), kSize);
  ::munmap(zeros, kSize);
}

TEST(StdioFile, OpeningAFileKeepsTheTextOfTheOneBefore) {
  const TempFile first;
  const TempFile second;
  CStdioFile file;
  ASSERT_TRUE(file.Open(first.Path(), CFile::modeCreate));
  file.WriteString("a");
  ASSERT_TRUE(file.Open(second.Path(), CFile::modeCreate));
  EXPECT_EQ(first.Text(), "a");
}

TEST(File, MemoryHasNoPathAndNothingToClose) {
  CMemFile file;
  EXPECT_FALSE(file.Open("/dev/null", CFile::modeRead));
  file.Write("abc", 3);
  file.Flush();
  file.Close();
  EXPECT_EQ(file.GetBytes().size(), 3U);
}

}  // namespace
}  // namespace qenzor::testing
