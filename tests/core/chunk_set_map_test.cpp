// The keyed set, through the only one that there is.

#include <gtest/gtest.h>

#include "qenzor/zor/draw_atter_set.h"
#include "tests/support/chunk_io.h"
#include "tests/support/counted.h"
#include "tests/support/qen_bytes.h"

namespace qenzor::testing {
namespace {

using CountedAtter = Counted<CDrawAtter>;

Bytes AtterBytes(std::uint64_t key) { return Chunk(id::kDrawAtter, Bytes().U64(key)); }

CountedAtter* NewAtter(std::uint64_t key) {
  auto* atter = new CountedAtter;
  atter->ZId = key;
  return atter;
}

TEST(ChunkSetMap, WithoutElementsIsAZeroCount) {
  CDrawAtterSet set;
  EXPECT_EQ(Written(set), SetChunk(id::kDrawAtterSet, {}));
}

TEST(ChunkSetMap, FilesElementsUnderTheirKey) {
  CDrawAtterSet set;
  auto* atter = NewAtter(0x1122334455667788);
  set.SubChunkSet(0, atter);
  EXPECT_EQ(set.GetElem(0x1122334455667788), atter);
  EXPECT_EQ(set.GetElem(0x55667788), nullptr);
  EXPECT_EQ(set.GetElemCount(), 1U);
}

TEST(ChunkSetMap, TheLaterElementUnderAKeyReplacesAndDestroysTheEarlier) {
  CDrawAtterSet set;
  set.SubChunkSet(0, NewAtter(5));
  auto* later = NewAtter(5);
  set.SubChunkSet(1, later);
  EXPECT_EQ(CountedAtter::Alive(), 1);
  EXPECT_EQ(set.GetElemCount(), 1U);
  EXPECT_EQ(set.GetElem(5), later);
}

TEST(ChunkSetMap, CountsAKeyReadTwiceOnce) {
  const Bytes twice = SetChunk(id::kDrawAtterSet, {AtterBytes(5), AtterBytes(5)});
  const auto set = FromMemory<CDrawAtterSet>(twice);
  ASSERT_NE(set, nullptr);
  EXPECT_EQ(Written(*set), SetChunk(id::kDrawAtterSet, {AtterBytes(5)}));
}

TEST(ChunkSetMap, WritesTheSameOrderTwiceWhateverTheOrderRead) {
  // Buckets 16807 k mod 8191 for small k: 0 for 0, 425 for 1, 850 for 2, 1275 for 3.
  const Bytes ordered =
      SetChunk(id::kDrawAtterSet, {AtterBytes(0), AtterBytes(1), AtterBytes(2), AtterBytes(3)});
  const Bytes shuffled =
      SetChunk(id::kDrawAtterSet, {AtterBytes(2), AtterBytes(0), AtterBytes(3), AtterBytes(1)});
  for (const Bytes& bytes : {ordered, shuffled}) {
    const auto set = FromFile<CDrawAtterSet>(bytes);
    ASSERT_NE(set, nullptr);
    EXPECT_EQ(Written(*set), ordered);
    EXPECT_EQ(Written(*set), ordered);
  }
}

TEST(ChunkSetMap, KeysOfOneBucketGoFromTheLatestToTheEarliest) {
  const std::uint64_t high = 1ULL << 32U;  // the high half of a key does not choose the bucket
  const auto set = FromMemory<CDrawAtterSet>(
      SetChunk(id::kDrawAtterSet, {AtterBytes(1), AtterBytes(high + 1), AtterBytes(2 * high + 1)}));
  ASSERT_NE(set, nullptr);
  EXPECT_EQ(Written(*set), SetChunk(id::kDrawAtterSet, {AtterBytes(2 * high + 1),
                                                        AtterBytes(high + 1), AtterBytes(1)}));
}

TEST(ChunkSetMap, TakesManyElementsWhateverTheCountSays) {
  for (const std::uint32_t declared : {0U, 1U, 100U, 0xFFFFFFFFU}) {
    Bytes data = Bytes().U32(declared);
    for (std::uint64_t key = 0; key < 100; ++key) data.Add(AtterBytes(key));
    const Bytes bytes = Chunk(id::kDrawAtterSet, data);
    const auto from_memory = FromMemory<CDrawAtterSet>(bytes);
    const auto from_file = FromFile<CDrawAtterSet>(bytes);
    ASSERT_NE(from_memory, nullptr);
    ASSERT_NE(from_file, nullptr);
    EXPECT_EQ(Written(*from_memory), Written(*from_file));
    for (std::uint64_t key = 0; key < 100; ++key) EXPECT_NE(from_memory->GetElem(key), nullptr);
    EXPECT_EQ(from_memory->GetElemCount(), 100U);
  }
}

TEST(ChunkSetMap, DropsAndDestroysOtherClasses) {
  CDrawAtterSet set;
  set.SubChunkSet(0, new Counted<CDrawAtterSet>);
  EXPECT_EQ(Counted<CDrawAtterSet>::Alive(), 0);
  EXPECT_EQ(set.GetElemCount(), 0U);
  const auto read =
      FromMemory<CDrawAtterSet>(SetChunk(id::kDrawAtterSet, {LayerBytes(1), AtterBytes(1)}));
  ASSERT_NE(read, nullptr);
  EXPECT_EQ(Written(*read), SetChunk(id::kDrawAtterSet, {AtterBytes(1)}));
}

TEST(ChunkSetMap, CloneCopiesHeaderAndElements) {
  const auto set =
      FromMemory<CDrawAtterSet>(SetChunk(id::kDrawAtterSet, {AtterBytes(9), AtterBytes(4)}));
  ASSERT_NE(set, nullptr);
  set->SetHeader({55, 66});
  const auto clone = ClonedFrom(*set);
  ASSERT_NE(clone, nullptr);
  EXPECT_EQ(clone->GetHeader().DataSize, 66U);
  EXPECT_NE(clone->GetElem(9), set->GetElem(9));
  EXPECT_EQ(Written(*clone), Written(*set));
}

TEST(ChunkSetMap, DeepCopyReplacesAndOfAnotherClassReleases) {
  CDrawAtterSet set;
  set.SubChunkSet(0, NewAtter(1));
  const auto source = FromMemory<CDrawAtterSet>(SetChunk(id::kDrawAtterSet, {AtterBytes(2)}));
  ASSERT_NE(source, nullptr);
  set.DeepCopy(source.get());
  EXPECT_EQ(CountedAtter::Alive(), 0);
  EXPECT_EQ(Written(set), SetChunk(id::kDrawAtterSet, {AtterBytes(2)}));
  CDrawAtter other;
  set.DeepCopy(&other);
  EXPECT_EQ(set.GetElemCount(), 0U);
}

}  // namespace
}  // namespace qenzor::testing
