// A file of the library's beside a vector of bytes, while both go through the same random reads,
// writes and moves.

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <vector>

#include "qenzor/platform/file.h"
#include "tests/support/temp_file.h"

namespace qenzor::testing {
namespace {

/// What a file should be: bytes and a place among them.
struct Model {
  std::vector<std::uint8_t> Bytes;
  std::size_t At = 0;

  std::vector<std::uint8_t> Read(std::size_t size) {
    const std::size_t from = std::min(At, Bytes.size());
    const std::size_t count = std::min(size, Bytes.size() - from);
    At += count;
    const auto begin = Bytes.begin() + static_cast<std::ptrdiff_t>(from);
    return {begin, begin + static_cast<std::ptrdiff_t>(count)};
  }
  void Write(const std::vector<std::uint8_t>& bytes) {
    if (bytes.empty()) return;
    Bytes.resize(std::max(Bytes.size(), At + bytes.size()));
    std::copy(bytes.begin(), bytes.end(), Bytes.begin() + static_cast<std::ptrdiff_t>(At));
    At += bytes.size();
  }
};

class FileModel : public ::testing::TestWithParam<unsigned> {
 protected:
  std::size_t Below(std::size_t most) { return m_random() % most; }
  /// Mostly few bytes, at times more than any buffer holds.
  std::uint32_t AnySize() {
    const std::size_t most = Below(20) == 0 ? 700 * 1024 : Below(4) == 0 ? 70 * 1024 : 40;
    return static_cast<std::uint32_t>(Below(most));
  }
  std::vector<std::uint8_t> AnyBytes() {
    std::vector<std::uint8_t> bytes(AnySize());
    std::uint8_t next = static_cast<std::uint8_t>(m_random());
    for (std::uint8_t& byte : bytes) byte = next += 7;
    return bytes;
  }

  void Step(CFile& file, Model& model) {
    switch (Below(8)) {
      case 0:
      case 1: {
        const std::uint32_t size = AnySize();
        std::vector<std::uint8_t> bytes(size);
        bytes.resize(file.Read(bytes.data(), size));
        ASSERT_EQ(bytes, model.Read(size));
        break;
      }
      case 2:
      case 3: {
        const auto bytes = AnyBytes();
        file.Write(bytes.data(), static_cast<std::uint32_t>(bytes.size()));
        model.Write(bytes);
        break;
      }
      case 4: {
        const std::uint32_t size = AnySize();
        if (const std::uint8_t* block = file.TakeBlock(size); block != nullptr) {
          ASSERT_EQ(std::vector<std::uint8_t>(block, block + size), model.Read(size));
        }
        break;
      }
      case 5: {
        const auto bytes = AnyBytes();
        std::uint8_t* room = file.BeginBlock(static_cast<std::uint32_t>(bytes.size()));
        if (room == nullptr) break;
        file.EndBlock(std::copy(bytes.begin(), bytes.end(), room));
        model.Write(bytes);
        break;
      }
      case 6:
        Move(file, model);
        break;
      default:
        file.Flush();
    }
    ASSERT_EQ(file.GetPosition(), model.At);
    ASSERT_EQ(file.GetLength(), model.Bytes.size());
  }

  void Move(CFile& file, Model& model) {
    const std::size_t front = std::max<std::size_t>(model.At, 100) - 100;
    const std::size_t to = Below(3) == 0 ? Below(model.Bytes.size() + 100) : front + Below(200);
    const auto target = static_cast<std::int64_t>(to);
    switch (Below(3)) {
      case 0:
        file.Seek(target, CFile::begin);
        break;
      case 1:
        file.Seek(target - static_cast<std::int64_t>(model.At), CFile::current);
        break;
      default:
        file.Seek(target - static_cast<std::int64_t>(model.Bytes.size()), CFile::end);
    }
    model.At = to;
  }

  std::mt19937_64 m_random{GetParam()};
};

TEST_P(FileModel, WhateverFollowsWhatNothingIsLostOrMisplaced) {
  const TempFile path;
  Model model;
  CFile file;
  ASSERT_TRUE(file.Open(path.Path(), CFile::modeCreate | CFile::modeWrite));
  file.Close();
  for (int round = 0; round < 4; ++round) {
    // Without closing, too.
    ASSERT_TRUE(file.Open(path.Path(), CFile::modeWrite));
    model.At = 0;
    for (int step = 0; step < 150; ++step) ASSERT_NO_FATAL_FAILURE(Step(file, model)) << step;
  }
  file.Close();
  EXPECT_EQ(path.Content().vector(), model.Bytes);
}

TEST_P(FileModel, MemoryIsSuchAFileToo) {
  Model model;
  CMemFile file;
  for (int step = 0; step < 300; ++step) ASSERT_NO_FATAL_FAILURE(Step(file, model)) << step;
  EXPECT_EQ(file.GetBytes(), model.Bytes);
}

INSTANTIATE_TEST_SUITE_P(Seeds, FileModel, ::testing::Range(0U, 8U));

}  // namespace
}  // namespace qenzor::testing
