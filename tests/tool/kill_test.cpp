// The program, killed at random moments while it replaces a file.

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <csignal>
#include <random>
#include <string>
#include <thread>
#include <vector>

#include "tests/support/named_scratch.h"
#include "tests/support/tool.h"

namespace qenzor::testing {

namespace {

using Clock = std::chrono::steady_clock;

class Kill : public Tool {
 protected:
  /// Begins to copy the sample over the target; the process.
  pid_t Start(const std::string& sample) const {
    const pid_t child = ::fork();
    if (child != 0) return child;
    if ((m_namedOnly && !ForbidFilesWithoutName()) || ::chdir(m_folder.c_str()) != 0) ::_exit(99);
    ::execl(QENZOR_TOOL, QENZOR_TOOL, "copy", sample.c_str(), "target", nullptr);
    ::_exit(99);
  }
  static int WaitFor(pid_t child) {
    int status = 0;
    ::waitpid(child, &status, 0);
    return status;
  }
  /// What stands in the folder besides the target.
  std::vector<fs::path> FindOthers() const {
    std::vector<fs::path> others;
    for (const auto& entry : fs::directory_iterator(m_folder))
      if (entry.path() != At("target")) others.push_back(entry.path());
    return others;
  }

  void KillAtRandomMoments(const std::vector<int>& signals) {
    const std::array<std::string, 2> samples{Sample("world.qen"), Sample("world.zor")};
    const std::array<std::string, 2> contents{Load(samples[0]), Load(samples[1])};
    const auto start = Clock::now();
    for (std::size_t i = 0; i < 4; ++i) ASSERT_EQ(WaitFor(Start(samples[i % 2])), 0);
    const auto run =
        std::chrono::duration_cast<std::chrono::microseconds>(Clock::now() - start) / 4;

    std::mt19937 random(1);
    std::uniform_int_distribution<std::int64_t> delay(0, run.count() * 5 / 4);
    int killed = 0;
    int done = 0;
    for (std::size_t i = 0; Clock::now() < start + std::chrono::seconds(8); ++i) {
      const int signal = signals[random() % signals.size()];
      const pid_t child = Start(samples[i % 2]);
      std::this_thread::sleep_for(std::chrono::microseconds(delay(random)));
      ::kill(child, signal);
      const int status = WaitFor(child);
      ++(status == 0 ? done : killed);
      const std::string target = Load(At("target"));
      if (status == 0) {
        ASSERT_TRUE(target == contents[i % 2]);
      } else {
        ASSERT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == signal);
        ASSERT_TRUE(target == contents[0] || target == contents[1]);
      }
      for (const fs::path& other : FindOthers()) {
        // Between two calls to the system nobody can hold off this signal, and the file is whole.
        ASSERT_EQ(signal, SIGKILL) << other;
        ASSERT_TRUE(Load(other) == contents[i % 2]) << other;
        fs::remove(other);
      }
    }
    EXPECT_GT(killed, 0);
    EXPECT_GT(done, 0);
  }

  bool m_namedOnly = false;
};

TEST_F(Kill, LeavesTheOldFileOrTheNewOneAndNothingElse) {
  KillAtRandomMoments({SIGTERM, SIGINT, SIGHUP, SIGKILL});
}

TEST_F(Kill, LeavesNothingElseWhereFilesNeedAName) {
  m_namedOnly = true;
  Save(At("target"), "");
  if (WEXITSTATUS(WaitFor(Start(Sample("world.qen")))) == 99)
    GTEST_SKIP() << "calls cannot be filtered here";
  KillAtRandomMoments({SIGTERM, SIGINT, SIGHUP});
}

}  // namespace

}  // namespace qenzor::testing
