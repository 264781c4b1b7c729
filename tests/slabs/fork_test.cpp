// A process may fork while other threads of it read documents.

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <thread>
#include <vector>

#include "qenzor/platform/memory.h"
#include "tests/support/large_map.h"
#include "tests/support/sanitizers.h"

namespace qenzor::testing {
namespace {

bool ReadsAndForgets(const Bytes& bytes) {
  CQen map;
  return map.Read(bytes.data(), bytes.size());
}

TEST(Fork, AChildCanReadThoughAnotherThreadWasAllocating) {
  if (kIsSanitized) GTEST_SKIP() << "the sanitizers' own allocator can hang in a child";
  // Nothing is kept, so that slabs come and go all the time.
  SetKeptMemory(0);
  const Bytes bytes = LargeMapBytes(600, 40);
  std::atomic<bool> stop{false};
  std::vector<std::thread> readers;
  for (int i = 0; i < 3; ++i)
    readers.emplace_back([&] {
      while (!stop) ReadsAndForgets(bytes);
    });
  int failed = 0;
  for (int i = 0; i < 300; ++i) {
    const pid_t child = ::fork();
    if (child == 0) {
      ::alarm(20);
      ::_exit(ReadsAndForgets(bytes) ? 0 : 1);
    }
    int status = 0;
    if (::waitpid(child, &status, 0) != child || status != 0) ++failed;
  }
  stop = true;
  for (std::thread& reader : readers) reader.join();
  EXPECT_EQ(failed, 0);
}

}  // namespace
}  // namespace qenzor::testing
