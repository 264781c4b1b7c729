#include "qenzor/platform/mapped_file.h"

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
bool HasLeases(const TempFile& file) { return CMappedFile(file.Path()).GetBytes() != nullptr; }

TEST(MappedFile, HoldsTheWholeFile) {
  const TempFile file{std::string_view(LargeContent())};
  if (!HasLeases(file)) GTEST_SKIP() << "no leases here";
  const CMappedFile mapped(file.Path());
  ASSERT_EQ(mapped.GetSize(), LargeContent().size());
  EXPECT_EQ(std::string(mapped.GetBytes(), mapped.GetBytes() + mapped.GetSize()), LargeContent());
}

TEST(MappedFile, NobodyWritesTheFileMeanwhile) {
  const TempFile file{std::string_view(LargeContent())};
  if (!HasLeases(file)) GTEST_SKIP() << "no leases here";
  {
    const CMappedFile mapped(file.Path());
    EXPECT_EQ(::open(file.Path().c_str(), O_WRONLY | O_TRUNC | O_NONBLOCK), -1);
    EXPECT_EQ(errno, EWOULDBLOCK);
    EXPECT_EQ(mapped.GetBytes()[mapped.GetSize() - 1], 'y');
  }
  const int writer = ::open(file.Path().c_str(), O_WRONLY | O_NONBLOCK);
  ASSERT_NE(writer, -1);
  // What somebody writes already is not mapped.
  EXPECT_EQ(CMappedFile(file.Path()).GetBytes(), nullptr);
  ::close(writer);
}

TEST(MappedFile, SmallMissingAndOtherFilesAreNotMapped) {
  EXPECT_EQ(CMappedFile(TempFile(std::string_view("small")).Path()).GetBytes(), nullptr);
  EXPECT_EQ(CMappedFile("/nonexistent/file").GetBytes(), nullptr);
  EXPECT_EQ(CMappedFile("/dev/zero").GetBytes(), nullptr);
  EXPECT_EQ(CMappedFile("/").GetBytes(), nullptr);
}

}  // namespace
}  // namespace qenzor::testing
