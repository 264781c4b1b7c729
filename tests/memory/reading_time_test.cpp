// How long reading takes, whatever a file claims: about what the undamaged file of its size takes.

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <cstring>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <vector>

#include "qenzor/qen/qen.h"
#include "qenzor/zor/zor.h"

namespace {

using Bytes = std::vector<std::uint8_t>;
using Seconds = std::chrono::duration<double>;

/// Processor time, of which other programs take none.
Seconds Now() {
  std::timespec time{};
  clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
  return std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec);
}

template <class Document>
Seconds TimeOfReading(const Bytes& bytes) {
  const Seconds begin = Now();
  {
    Document document;
    static_cast<void>(document.Read(bytes.data(), static_cast<std::uint32_t>(bytes.size())));
    qenzor::CMemFile file(bytes);
    Document from_file;
    static_cast<void>(from_file.Read(&file));
  }
  return Now() - begin;
}

Bytes Sample(const char* name) {
  std::ifstream file(std::filesystem::path(QENZOR_SAMPLES) / name, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

/// The noise of a busy machine is allowed for; work that grows with what a file claims is far
/// above.
constexpr double kMostTimes = 4;
constexpr Seconds kSlack{0.005};

template <class Document, class Damage>
void ExpectNoSlower(const Bytes& whole, int times, Damage damage) {
  ASSERT_FALSE(whole.empty());
  Seconds valid{1e9};
  for (int i = 0; i < 5; ++i) valid = std::min(valid, TimeOfReading<Document>(whole));
  for (int i = 0; i < times; ++i) {
    const Bytes damaged = damage(whole, i);
    Seconds took{1e9};
    for (int tries = 0; tries < 3 && took > valid * kMostTimes + kSlack; ++tries)
      took = std::min(took, TimeOfReading<Document>(damaged));
    EXPECT_LE(took.count(), (valid * kMostTimes + kSlack).count()) << "damage " << i;
  }
}

/// Counts and sizes that promise the most there can be.
Bytes WithLargeNumbers(Bytes bytes, int seed) {
  std::mt19937 random(static_cast<std::uint32_t>(seed));
  constexpr std::uint32_t kMost = 0xFFFFFFFF;
  for (int i = 0; i < 3; ++i)
    std::memcpy(bytes.data() + random() % (bytes.size() - 4), &kMost, sizeof kMost);
  return bytes;
}

Bytes Truncated(Bytes bytes, int seed) {
  bytes.resize(std::mt19937(static_cast<std::uint32_t>(seed))() % bytes.size());
  return bytes;
}

TEST(ReadingTime, NumbersThatPromiseMuchCostNothing) {
  ExpectNoSlower<qenzor::CQen>(Sample("world.qen"), 200, WithLargeNumbers);
  ExpectNoSlower<qenzor::CZor>(Sample("world.zor"), 200, WithLargeNumbers);
}

TEST(ReadingTime, AFileThatEndsTooSoonIsReadNoLonger) {
  ExpectNoSlower<qenzor::CQen>(Sample("world.qen"), 100, Truncated);
  ExpectNoSlower<qenzor::CZor>(Sample("world.zor"), 100, Truncated);
}

/// A chunk whose size says nothing is left, so that each level could be tempted to read the rest.
TEST(ReadingTime, EveryLevelOfADeepNestIsReadOnce) {
  const auto nest = [](std::size_t levels, std::uint32_t claimed) {
    Bytes inner(1 << 16, 0);
    for (std::size_t level = 0; level < levels; ++level) {
      const std::uint32_t size = claimed == 0 ? static_cast<std::uint32_t>(inner.size()) : claimed;
      Bytes chunk(12);
      const std::uint32_t id = 22;
      std::memcpy(chunk.data(), &id, 4);
      std::memcpy(chunk.data() + 4, &size, 4);
      chunk.insert(chunk.end(), inner.begin(), inner.end());
      inner = std::move(chunk);
    }
    Bytes file(42, 0);
    const std::uint32_t id = 25;
    const auto size = static_cast<std::uint32_t>(inner.size());
    file.resize(50);
    std::memcpy(file.data() + 42, &id, 4);
    std::memcpy(file.data() + 46, &size, 4);
    file.insert(file.end(), inner.begin(), inner.end());
    return file;
  };
  ExpectNoSlower<qenzor::CQen>(
      nest(250, 0), 4, [&](const Bytes&, int i) { return nest(250, i % 2 == 0 ? 0xFFFFFFF0 : 4); });
}

}  // namespace
