#pragma once

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cstddef>
#include <fstream>
#include <optional>

#include "tests/support/sanitizers.h"

namespace qenzor::testing {

inline constexpr std::ptrdiff_t kMib = 1024 * 1024;

/// The memory that the system has given this process.
inline std::ptrdiff_t ResidentBytes() {
  std::ifstream statm("/proc/self/statm");
  std::ptrdiff_t size = 0;
  std::ptrdiff_t resident = 0;
  statm >> size >> resident;
  return resident * ::sysconf(_SC_PAGESIZE);
}

/// What run gives in a process of its own, which what is done here reaches no more; nothing if that
/// dies, or takes so long that it is killed.
template <class Run>
std::optional<std::ptrdiff_t> InChild(const Run& run) {
  constexpr unsigned kMostSeconds = 110;
  std::array<int, 2> ends{};
  if (::pipe(ends.data()) != 0) return std::nullopt;
  const pid_t child = ::fork();
  if (child == 0) {
    ::alarm(kMostSeconds);
    const std::ptrdiff_t result = run();
    const bool told = ::write(ends[1], &result, sizeof result) == sizeof result;
    ::_exit(told ? 0 : 1);
  }
  ::close(ends[1]);
  std::ptrdiff_t result = 0;
  const bool told = ::read(ends[0], &result, sizeof result) == sizeof result;
  ::close(ends[0]);
  int status = 0;
  const bool ended = ::waitpid(child, &status, 0) == child && status == 0;
  return told && ended ? std::optional(result) : std::nullopt;
}

/// Holds what run gives, in a process of its own, against a limit.
template <class Run>
void ExpectAtMost(std::ptrdiff_t most, const Run& run) {
  if (kIsSanitized) GTEST_SKIP() << "a sanitizer takes memory of its own";
  const std::optional<std::ptrdiff_t> bytes = InChild(run);
  ASSERT_TRUE(bytes.has_value());
  EXPECT_LE(*bytes, most);
}

}  // namespace qenzor::testing
