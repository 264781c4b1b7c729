#include "qenzor/platform/file.h"

#include <gtest/gtest.h>

#include <string>

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
