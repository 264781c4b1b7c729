// Documents on several threads at once, one document a thread.

#include <gtest/gtest.h>

#include <array>
#include <memory>
#include <thread>
#include <vector>

#include "qenzor/platform/memory.h"
#include "tests/support/document_kinds.h"
#include "tests/support/large_map.h"
#include "tests/support/temp_file.h"

namespace qenzor::testing {
namespace {

constexpr std::size_t kThreads = 4;
constexpr int kTimes = 5;

/// Runs the work on several threads at once; the number of times it gave false.
template <class Work>
int CountFailures(const Work& work) {
  std::array<int, kThreads> failures{};
  std::vector<std::thread> threads;
  for (int& failed : failures)
    threads.emplace_back([&] {
      for (int i = 0; i < kTimes; ++i) failed += work() ? 0 : 1;
    });
  for (std::thread& thread : threads) thread.join();
  int sum = 0;
  for (const int failed : failures) sum += failed;
  return sum;
}

template <class Doc>
bool Writes(Doc& doc, const Bytes& bytes) {
  CMemFile file;
  return doc.Write(&file) && Bytes(file.GetBytes()) == bytes;
}

template <class Kind>
class Threads : public ::testing::Test {};
TYPED_TEST_SUITE(Threads, DocumentKinds, KindNames);

TYPED_TEST(Threads, TakeADocumentThroughAllItsForms) {
  const Bytes bytes = TypeParam::DocumentBytes();
  EXPECT_EQ(CountFailures([&] {
              typename TypeParam::Doc doc;
              const TempFile file(bytes);
              const TempFile xml;
              if (!doc.Read(file.Path())) return false;
              const std::unique_ptr<typename TypeParam::Doc> clone(doc.Clone());
              if (clone == nullptr || !Writes(*clone, bytes)) return false;
              typename TypeParam::Converter converter;
              if (!converter.ConvertChunkToText(xml.Path(), doc, 0)) return false;
              const std::unique_ptr<typename TypeParam::Edit> edit(TypeParam::FromXml(xml.Path()));
              if (edit == nullptr) return false;
              const std::unique_ptr<typename TypeParam::Doc> again(TypeParam::ToDoc(*edit));
              return again != nullptr && Writes(*again, bytes);
            }),
            0);
}

TEST(ThreadsAndSlabs, ReadLargeMapsWhileKeptMemoryComesAndGoes) {
  const Bytes bytes = LargeMapBytes(3000, 20);
  EXPECT_EQ(CountFailures([&] {
              CQen map;
              CMemFile file(bytes.vector());
              if (!map.Read(&file)) return false;
              const std::unique_ptr<CQen> clone(map.Clone());
              map.MapData.reset();
              ReleaseKeptMemory();
              return clone != nullptr && Writes(*clone, bytes);
            }),
            0);
}

TEST(ThreadsAndSlabs, HandDocumentsToEachOther) {
  const Bytes bytes = LargeMapBytes(3000, 20);
  std::vector<CQen> maps(kThreads);
  for (int i = 0; i < kTimes; ++i) {
    std::vector<std::thread> threads;
    for (std::size_t at = 0; at < kThreads; ++at)
      threads.emplace_back([&, at] { maps[at].Read(bytes.data(), bytes.size()); });
    for (std::thread& thread : threads) thread.join();
    threads.clear();
    for (std::size_t at = 0; at < kThreads; ++at)
      threads.emplace_back([&, at] { maps[(at + 1) % kThreads].MapData.reset(); });
    for (std::thread& thread : threads) thread.join();
  }
  CQen map;
  ASSERT_TRUE(map.Read(bytes.data(), bytes.size()));
  EXPECT_TRUE(Writes(map, bytes));
}

}  // namespace
}  // namespace qenzor::testing
