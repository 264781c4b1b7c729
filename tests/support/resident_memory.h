#pragma once

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cstddef>
#include <fstream>

namespace qenzor::testing {

inline constexpr std::ptrdiff_t kMib = 1024 * 1024;

/// Whether what the process holds is what the library took: a sanitizer takes more than that.
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
inline constexpr bool kMemoryCanBeMeasured = false;
#elif defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer)
inline constexpr bool kMemoryCanBeMeasured = false;
#else
inline constexpr bool kMemoryCanBeMeasured = true;
#endif
#else
inline constexpr bool kMemoryCanBeMeasured = true;
#endif

/// The memory that the system has given this process.
inline std::ptrdiff_t ResidentBytes() {
  std::ifstream statm("/proc/self/statm");
  std::ptrdiff_t size = 0;
  std::ptrdiff_t resident = 0;
  statm >> size >> resident;
  return resident * ::sysconf(_SC_PAGESIZE);
}

/// What run gives in a process of its own, into which nothing reaches that was done before but its
/// memory. It is killed, and -1 returned, if it takes longer than a minute.
template <class Run>
std::ptrdiff_t InChild(const Run& run) {
  std::array<int, 2> ends{};
  if (::pipe(ends.data()) != 0) return -1;
  const pid_t child = ::fork();
  if (child == 0) {
    ::alarm(60);
    const std::ptrdiff_t result = run();
    const bool told = ::write(ends[1], &result, sizeof result) == sizeof result;
    ::_exit(told ? 0 : 1);
  }
  ::close(ends[1]);
  std::ptrdiff_t result = -1;
  if (::read(ends[0], &result, sizeof result) != sizeof result) result = -1;
  ::close(ends[0]);
  int status = 0;
  return ::waitpid(child, &status, 0) == child && status == 0 ? result : -1;
}

/// Holds what run gives, in a process of its own, against a limit.
template <class Run>
void ExpectAtMost(std::ptrdiff_t most, const Run& run) {
  if (!kMemoryCanBeMeasured) GTEST_SKIP() << "a sanitizer takes memory of its own";
  const std::ptrdiff_t bytes = InChild(run);
  EXPECT_GE(bytes, 0);
  EXPECT_LE(bytes, most);
}

}  // namespace qenzor::testing
