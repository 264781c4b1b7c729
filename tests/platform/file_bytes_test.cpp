#include "qenzor/platform/file_bytes.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <cerrno>
#include <string>

#include "tests/support/temp_file.h"

namespace qenzor::testing {
namespace {

std::string LargeContent() {
  std::string content(2 * 1024 * 1024 + 3, 'x');
  content.back() = 'y';
  return content;
}

/// Whether this system grants leases here, without which nothing is mapped.
bool HasLeases(const TempFile& file) { return CFileBytes(file.Path()).IsMapped(); }

TEST(FileBytes, HoldsTheWholeFile) {
  const TempFile file{std::string_view(LargeContent())};
  if (!HasLeases(file)) GTEST_SKIP() << "no leases here";
  const CFileBytes mapped(file.Path());
  ASSERT_EQ(mapped.GetSize(), LargeContent().size());
  EXPECT_EQ(std::string(mapped.GetBytes(), mapped.GetBytes() + mapped.GetSize()), LargeContent());
}

TEST(FileBytes, NobodyWritesTheFileMeanwhile) {
  const TempFile file{std::string_view(LargeContent())};
  if (!HasLeases(file)) GTEST_SKIP() << "no leases here";
  {
    const CFileBytes mapped(file.Path());
    EXPECT_EQ(::open(file.Path().c_str(), O_WRONLY | O_TRUNC | O_NONBLOCK), -1);
    EXPECT_EQ(errno, EWOULDBLOCK);
    EXPECT_EQ(mapped.GetBytes()[mapped.GetSize() - 1], 'y');
  }
  const int writer = ::open(file.Path().c_str(), O_WRONLY | O_NONBLOCK);
  ASSERT_NE(writer, -1);
  // What somebody writes already is not mapped.
  EXPECT_EQ(CFileBytes(file.Path()).GetBytes(), nullptr);
  ::close(writer);
}

TEST(FileBytes, ASmallFileIsCopied) {
  const TempFile file(std::string_view("small"));
  const CFileBytes bytes(file.Path());
  EXPECT_FALSE(bytes.IsMapped());
  ASSERT_NE(bytes.GetBytes(), nullptr);
  EXPECT_EQ(std::string(bytes.GetBytes(), bytes.GetBytes() + bytes.GetSize()), "small");
}

TEST(FileBytes, MissingEmptyAndOtherFilesHaveNone) {
  EXPECT_EQ(CFileBytes("/nonexistent/file").GetBytes(), nullptr);
  EXPECT_EQ(CFileBytes(TempFile(std::string_view("")).Path()).GetBytes(), nullptr);
  EXPECT_EQ(CFileBytes("/dev/zero").GetBytes(), nullptr);
  EXPECT_EQ(CFileBytes("/").GetBytes(), nullptr);
}

}  // namespace
}  // namespace qenzor::testing
