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

/// The bytes that a document comes to by way of a file, a copy, XML and the edit form; none where a
/// step fails.
template <class Kind>
Bytes ThroughAllForms(const Bytes& bytes) {
  typename Kind::Doc doc;
  const TempFile file(bytes);
  const TempFile xml;
  if (!doc.Read(file.Path())) return {};
  const std::unique_ptr<typename Kind::Doc> clone(doc.Clone());
  typename Kind::Converter converter;
  if (clone == nullptr || !converter.ConvertChunkToText(xml.Path(), *clone, 0)) return {};
  const std::unique_ptr<typename Kind::Edit> edit(Kind::FromXml(xml.Path()));
  if (edit == nullptr) return {};
  const std::unique_ptr<typename Kind::Doc> again(Kind::ToDoc(*edit));
  CMemFile result;
  if (again == nullptr || !again->Write(&result)) return {};
  return Bytes(result.GetBytes());
}

TYPED_TEST(Threads, TakeADocumentThroughAllItsFormsAsOneDoes) {
  const Bytes bytes = TypeParam::DocumentBytes();
  const Bytes expected = ThroughAllForms<TypeParam>(bytes);
  EXPECT_GT(expected.size(), bytes.size() / 2);
  EXPECT_EQ(CountFailures([&] { return ThroughAllForms<TypeParam>(bytes) == expected; }), 0);
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
      threads.emplace_back([&, at] { EXPECT_TRUE(maps[at].Read(bytes.data(), bytes.size())); });
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
