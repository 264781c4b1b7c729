#include "qenzor/platform/file_replacement.h"

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include "tests/support/named_scratch.h"

namespace qenzor {

namespace {

namespace fs = std::filesystem;

class FileReplacement : public ::testing::Test {
 protected:
  FileReplacement() {
    std::string name = (fs::temp_directory_path() / "qenzor-replace-XXXXXX").string();
    m_folder = ::mkdtemp(name.data());
  }
  ~FileReplacement() override { fs::remove_all(m_folder); }

  std::string At(const std::string& name) const { return (m_folder / name).string(); }
  std::string Text(const std::string& name) const {
    std::ifstream file(At(name), std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
  }
  void Save(const std::string& name, const std::string& text) const {
    std::ofstream(At(name), std::ios::binary) << text;
  }
  std::size_t CountFiles() const {
    return static_cast<std::size_t>(
        std::distance(fs::directory_iterator(m_folder), fs::directory_iterator()));
  }
  static void Write(CFileReplacement& file, std::string_view text) {
    file.GetFile().Write(text.data(), static_cast<std::uint32_t>(text.size()));
  }
  /// Whether that holds in a process of its own in which every file has a name; true where there
  /// can be no such process.
  static bool HoldsWhereFilesHaveNames(const std::function<bool()>& holds) {
    const pid_t child = ::fork();
    if (child == 0) ::_exit(!testing::ForbidFilesWithoutName() || holds() ? 0 : 1);
    int status = 0;
    ::waitpid(child, &status, 0);
    return WIFEXITED(status) && WEXITSTATUS(status) == 0;
  }

  fs::path m_folder;
};

TEST_F(FileReplacement, TheOldFileStaysUntilTheNewOneIsFinished) {
  Save("target", "old");
  std::ifstream before(At("target"));
  CFileReplacement file;
  ASSERT_TRUE(file.Open(At("target")));
  Write(file, "new content");
  EXPECT_EQ(Text("target"), "old");
  ASSERT_TRUE(file.Finish());
  EXPECT_EQ(Text("target"), "new content");
  EXPECT_EQ(CountFiles(), 1U);
  // Whoever has the old file open reads on in it.
  EXPECT_EQ(std::string(std::istreambuf_iterator<char>(before), {}), "old");
}

TEST_F(FileReplacement, WithoutFinishNothingHasHappened) {
  Save("target", "old");
  {
    CFileReplacement file;
    ASSERT_TRUE(file.Open(At("target")));
    Write(file, std::string(1000000, 'x'));
    CFileReplacement fresh;
    ASSERT_TRUE(fresh.Open(At("fresh")));
    Write(fresh, "new");
  }
  EXPECT_EQ(Text("target"), "old");
  EXPECT_EQ(CountFiles(), 1U);
  EXPECT_TRUE(HoldsWhereFilesHaveNames([this] {
    const auto open = std::make_unique<CFileReplacement>();
    return open->Open(At("fresh")) && CountFiles() == 2;
  }));
  EXPECT_EQ(CountFiles(), 1U);
}

TEST_F(FileReplacement, AFileThatAppearsMeanwhileIsReplacedToo) {
  CFileReplacement file;
  ASSERT_TRUE(file.Open(At("target")));
  Write(file, "new");
  Save("target", "somebody else's");
  ASSERT_TRUE(file.Finish(false));
  EXPECT_EQ(Text("target"), "new");
  EXPECT_EQ(CountFiles(), 1U);
}

TEST_F(FileReplacement, AWriteThatFailsIsRemembered) {
  CFileReplacement file;
  ASSERT_TRUE(file.Open("/dev/full"));
  EXPECT_THROW(Write(file, std::string(1000000, 'x')), CFileException);
  EXPECT_EQ(file.GetError(), "cannot be written: No space left on device");
  EXPECT_THROW(Write(file, std::string(1000000, 'x')), CFileException);
  EXPECT_FALSE(file.Finish());
  EXPECT_EQ(file.GetError(), "cannot be written: No space left on device");
}

TEST_F(FileReplacement, KnowsHowMuchHasBeenWritten) {
  CFileReplacement file;
  ASSERT_TRUE(file.Open(At("target")));
  Write(file, "12345");
  EXPECT_EQ(file.GetFile().GetPosition(), 5U);
  Write(file, std::string(1000000, 'x'));
  EXPECT_EQ(file.GetFile().GetPosition(), 1000005U);
  EXPECT_EQ(file.GetFile().GetLength(), 1000005U);
}

TEST_F(FileReplacement, AProcessThatEndsRemovesAllItsScratchFilesAndMakesNoMore) {
  EXPECT_TRUE(HoldsWhereFilesHaveNames([this] {
    std::array<CFileReplacement, 3> files;
    for (CFileReplacement& file : files)
      if (!file.Open(At("target"))) return false;
    if (CountFiles() != 3) return false;
    RemoveScratchFiles();
    if (CountFiles() != 0) return false;
    for (CFileReplacement& file : files)
      if (file.Finish() || file.GetError() != "cannot be written: Operation canceled") return false;
    CFileReplacement later;
    return !later.Open(At("target")) && CountFiles() == 0;
  }));
}

TEST_F(FileReplacement, AProcessThatEndsLeavesTheFilesOfItsParentAlone) {
  EXPECT_TRUE(HoldsWhereFilesHaveNames([this] {
    CFileReplacement file;
    if (!file.Open(At("target"))) return false;
    const pid_t child = ::fork();
    if (child == 0) {
      RemoveScratchFiles();
      ::_exit(0);
    }
    ::waitpid(child, nullptr, 0);
    Write(file, "new");
    return file.Finish() && Text("target") == "new" && CountFiles() == 1;
  }));
}

TEST_F(FileReplacement, ThreadsWriteSideBySide) {
  const auto holds = [this] {
    std::vector<std::thread> threads;
    for (char letter = 'a'; letter < 'i'; ++letter)
      threads.emplace_back([this, letter] {
        for (int i = 0; i < 20; ++i)
          for (const std::string& name : {std::string(1, letter), std::string("shared")}) {
            CFileReplacement file;
            if (!file.Open(At(name))) return;
            Write(file, std::string(300000, letter));
            if (!file.Finish(false)) return;
          }
      });
    for (std::thread& thread : threads) thread.join();
    const std::string shared = Text("shared");
    if (shared.empty() || shared != std::string(300000, shared[0])) return false;
    for (char letter = 'a'; letter < 'i'; ++letter)
      if (Text(std::string(1, letter)) != std::string(300000, letter)) return false;
    return CountFiles() == 9;
  };
  EXPECT_TRUE(holds());
  EXPECT_TRUE(HoldsWhereFilesHaveNames(holds));
}

}  // namespace

}  // namespace qenzor
