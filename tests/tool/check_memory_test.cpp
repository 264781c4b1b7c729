// What the tool takes of memory for files that are made to be expensive.

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <utility>
#include <vector>

#include "tests/support/sanitizers.h"

namespace {

namespace fs = std::filesystem;

constexpr long kMostKiB = 64L * 1024;
constexpr std::size_t kMostOutput = std::size_t{4} * 1024 * 1024;

std::string Little(std::uint64_t value, int width) {
  std::string bytes;
  for (int i = 0; i < width; ++i) bytes += static_cast<char>(value >> (8 * i) & 0xFF);
  return bytes;
}

std::string Chunk(std::uint32_t id, const std::string& data) {
  return Little(id, 4) + Little(data.size(), 4) + data;
}

std::string Nested(int depth, std::string core) {
  for (int i = 0; i < depth; ++i) core = Chunk(77, core);
  return core;
}

std::string Repeated(const std::string& piece, std::size_t bytes) {
  std::string all;
  while (all.size() < bytes) all += piece;
  return all;
}

/// A megabyte of chunks of no known kind, as deep as may be, with others inside that are too deep.
std::string DeepMap() {
  return std::string(42, '\0') +
         Chunk(25, Nested(254, Repeated(Nested(2, ""), std::size_t{1} << 20)));
}

std::string MapOfDeepChains() {
  return std::string(42, '\0') + Chunk(25, Repeated(Nested(300, ""), std::size_t{1} << 20));
}

/// Four megabytes of indices of draw infos that are not there.
std::string DrawingOfBadIndices() {
  std::string atters;
  for (std::uint64_t key = 0; atters.size() < std::size_t{4} << 20; ++key)
    atters += Chunk(3, Little(key, 8) + Chunk(23, Little(8, 4) + Repeated(Little(9, 4), 32)));
  return std::string(19, '\0') + Chunk(26, Chunk(2, Little(0, 4) + atters));
}

class CheckMemory : public testing::Test {
 protected:
  CheckMemory() {
    std::string name = (fs::temp_directory_path() / "qenzor-memory-XXXXXX").string();
    m_folder = ::mkdtemp(name.data());
  }
  ~CheckMemory() override { fs::remove_all(m_folder); }

  /// Runs the tool in a child of its own; the most memory that it held, in KiB.
  long PeakOf(const std::vector<std::string>& arguments) const {
    const pid_t child = ::fork();
    if (child == 0) {
      const std::string out = (m_folder / "out").string();
      if (std::freopen(out.c_str(), "w", stdout) == nullptr ||
          std::freopen("/dev/null", "w", stderr) == nullptr)
        ::_exit(125);
      std::vector<char*> argv{const_cast<char*>(QENZOR_TOOL)};
      for (const std::string& argument : arguments)
        argv.push_back(const_cast<char*>(argument.c_str()));
      argv.push_back(nullptr);
      ::execv(QENZOR_TOOL, argv.data());
      ::_exit(126);
    }
    int status = 0;
    rusage usage{};
    EXPECT_EQ(::wait4(child, &status, 0, &usage), child);
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) <= 1);
    EXPECT_LE(fs::file_size(m_folder / "out"), kMostOutput);
    return usage.ru_maxrss;
  }

  fs::path m_folder;
};

TEST_F(CheckMemory, IsBoundedForFilesFullOfDamage) {
  if (qenzor::testing::kIsSanitized) GTEST_SKIP() << "sanitizers take memory of their own";
  for (const auto& [name, bytes] :
       {std::pair("deep.qen", DeepMap()), std::pair("chains.qen", MapOfDeepChains()),
        std::pair("indices.zor", DrawingOfBadIndices())}) {
    const std::string path = (m_folder / name).string();
    std::ofstream(path, std::ios::binary) << bytes;
    const std::string kind = path.substr(path.size() - 3);
    for (const std::vector<std::string>& command :
         {std::vector<std::string>{"check"}, {"check", "--json"}, {"info"}, {"copy"}, {"to-xml"}}) {
      std::vector<std::string> arguments = command;
      arguments.insert(arguments.end(), {"--kind", kind, path});
      if (command[0] == "copy" || command[0] == "to-xml")
        arguments.push_back((m_folder / "written").string());
      EXPECT_LE(PeakOf(arguments), kMostKiB) << name << ' ' << command.back();
    }
  }
}

}  // namespace
