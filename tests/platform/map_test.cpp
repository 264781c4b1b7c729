#include "qenzor/platform/map.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <map>
#include <memory>
#include <new>
#include <optional>
#include <random>
#include <type_traits>
#include <utility>
#include <vector>

#include "qenzor/platform/key_index.h"

namespace {

// How many more allocations succeed; negative: all of them. Only this file counts.
thread_local long g_allocations_left = -1;

void* Allocate(std::size_t size) {
  if (g_allocations_left == 0) {
    throw std::bad_alloc();
  }
  if (g_allocations_left > 0) {
    --g_allocations_left;
  }
  void* const memory = std::malloc(size == 0 ? 1 : size);
  if (memory == nullptr) {
    throw std::bad_alloc();
  }
  return memory;
}

}  // namespace

void* operator new(std::size_t size) { return Allocate(size); }
void* operator new[](std::size_t size) { return Allocate(size); }
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
  return g_allocations_left < 0 ? std::malloc(size) : nullptr;
}
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept {
  return g_allocations_left < 0 ? std::malloc(size) : nullptr;
}
void operator delete(void* memory, const std::nothrow_t&) noexcept { std::free(memory); }
void operator delete[](void* memory, const std::nothrow_t&) noexcept { std::free(memory); }
void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete[](void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }
void operator delete[](void* memory, std::size_t) noexcept { std::free(memory); }

namespace qenzor {
namespace {

using Key = std::uint64_t;
using Keys = std::vector<Key>;
using NumberMap = CMap<Key, int>;

constexpr std::uint32_t kManyBuckets = 8191;
constexpr std::uint32_t kFewBuckets = 17;

template <class V>
Keys KeysInOrder(const CMap<Key, V>& map) {
  Keys keys;
  map.ForEachOrdered([&](Key key, const V&) { keys.push_back(key); });
  return keys;
}

/// The order in its own words: buckets ascending, the latest first, from keys by age.
Keys Expected(const Keys& by_age, std::uint32_t buckets) {
  Keys keys(by_age.rbegin(), by_age.rend());
  std::stable_sort(keys.begin(), keys.end(), [buckets](Key a, Key b) {
    return BucketOfKey(a, buckets) < BucketOfKey(b, buckets);
  });
  return keys;
}

// In constant expressions, where an overflow would not compile.
TEST(BucketOfKey, IsOneStepOfTheGeneratorForEveryKindOfKey) {
  static_assert(BucketOfKey(0, kManyBuckets) == 0);
  static_assert(BucketOfKey(1, kManyBuckets) == 16807 % 8191);
  static_assert(BucketOfKey(127773, kManyBuckets) == (2147483647 - 2836) % 8191);
  static_assert(BucketOfKey(127772, kManyBuckets) == 2147464004 % 8191);
  static_assert(BucketOfKey(0x7FFFFFFF, kManyBuckets) == 0);
  static_assert(BucketOfKey(0xFFFFFFFF, kManyBuckets) == (2147483647 - 16807) % 8191);
  static_assert(BucketOfKey(0x80000000, kManyBuckets) == (2147483647 - 16807) % 8191);
  static_assert(BucketOfKey(0x80000001, kFewBuckets) == 0);
  static_assert(BucketOfKey(2, 1) == 0);
  SUCCEED();
}

// The step is 16807 * k modulo 2^31 - 1, which 64 bits can say directly.
TEST(BucketOfKey, AgreesWithTheUndividedProduct) {
  std::mt19937_64 random(1);
  for (int i = 0; i < 100000; ++i) {
    const Key key = random();
    const std::int64_t number = static_cast<std::int32_t>(static_cast<std::uint32_t>(key));
    std::int64_t step = 16807 * number % 2147483647;
    step += step < 0 ? 2147483647 : 0;
    ASSERT_EQ(BucketOfKey(key, kManyBuckets), static_cast<std::uint64_t>(step) % kManyBuckets);
  }
}

TEST(BucketOfKey, OnlyTheLowHalfOfTheKeyCounts) {
  EXPECT_EQ(BucketOfKey(0x123456789ABCDEF0, kManyBuckets), BucketOfKey(0x9ABCDEF0, kManyBuckets));
}

TEST(Map, IsEmptyAtFirst) {
  NumberMap map(kManyBuckets);
  EXPECT_EQ(map.GetCount(), 0U);
  EXPECT_EQ(map.Find(0), nullptr);
  EXPECT_EQ(map.Remove(0), std::nullopt);
  EXPECT_TRUE(map.WalkOrder().empty());
}

TEST(Map, FindsWhatWasSet) {
  NumberMap map(kFewBuckets);
  EXPECT_TRUE(map.Set(0, 10));
  EXPECT_TRUE(map.Set(~Key{0}, 20));
  EXPECT_EQ(map.GetCount(), 2U);
  EXPECT_EQ(*map.Find(0), 10);
  EXPECT_EQ(*std::as_const(map).Find(~Key{0}), 20);
  EXPECT_EQ(map.Find(1), nullptr);
}

// Key 2 lies in bucket 33614 % 8191 = 850, key 1 in 425, key 3 in 1275.
TEST(Map, IsWalkedByAscendingBuckets) {
  NumberMap map(kManyBuckets);
  for (const Key key : Keys{3, 1, 0, 2}) {
    map.Set(key, 0);
  }
  EXPECT_EQ(KeysInOrder(map), (Keys{0, 1, 2, 3}));
}

TEST(Map, InsideABucketTheLatestComesFirst) {
  NumberMap map(kManyBuckets);
  const Key high = Key{1} << 32U;
  for (const Key key : {high + 5, Key{5}, 2 * high + 5}) {
    map.Set(key, 0);
  }
  EXPECT_EQ(KeysInOrder(map), (Keys{2 * high + 5, 5, high + 5}));
}

TEST(Map, ReplacingKeepsThePlaceAndDestroysTheOldValue) {
  CMap<Key, std::shared_ptr<int>> map(1);
  const auto old = std::make_shared<int>(1);
  map.Set(7, old);
  map.Set(8, nullptr);
  EXPECT_EQ(old.use_count(), 2);
  EXPECT_FALSE(map.Set(7, std::make_shared<int>(2)));
  EXPECT_EQ(old.use_count(), 1);
  EXPECT_EQ(**map.Find(7), 2);
  EXPECT_EQ(map.GetCount(), 2U);
  EXPECT_EQ(KeysInOrder(map), (Keys{8, 7}));
}

TEST(Map, RemovingGivesTheValueAndAddingAgainIsMostRecent) {
  CMap<Key, std::unique_ptr<int>> map(1);
  for (const Key key : Keys{1, 2, 3}) {
    map.Set(key, std::make_unique<int>(static_cast<int>(key)));
  }
  const auto value = map.Remove(1);
  ASSERT_TRUE(value.has_value());
  EXPECT_EQ(**value, 1);
  EXPECT_EQ(map.Find(1), nullptr);
  EXPECT_FALSE(map.Remove(1).has_value());
  EXPECT_EQ(map.GetCount(), 2U);
  EXPECT_EQ(KeysInOrder(map), (Keys{3, 2}));
  EXPECT_TRUE(map.Set(1, std::make_unique<int>(4)));
  EXPECT_EQ(KeysInOrder(map), (Keys{1, 3, 2}));
}

TEST(Map, ClearDestroysTheValuesAndLeavesAUsableMap) {
  CMap<Key, std::shared_ptr<int>> map(kFewBuckets);
  const auto value = std::make_shared<int>(1);
  map.Set(1, value);
  map.Clear();
  EXPECT_EQ(value.use_count(), 1);
  EXPECT_EQ(map.GetCount(), 0U);
  EXPECT_EQ(map.Find(1), nullptr);
  EXPECT_TRUE(map.Set(1, value));
  EXPECT_EQ(KeysInOrder(map), (Keys{1}));
}

TEST(Map, MovesAndIsEmptyAfterwards) {
  static_assert(!std::is_copy_constructible_v<NumberMap>);
  NumberMap map(kFewBuckets);
  map.Set(1, 2);
  NumberMap other(std::move(map));
  EXPECT_EQ(*other.Find(1), 2);
  map = std::move(other);
  EXPECT_EQ(*map.Find(1), 2);
  EXPECT_EQ(other.GetCount(), 0U);  // NOLINT(bugprone-use-after-move): the contract
  EXPECT_TRUE(other.WalkOrder().empty());
  EXPECT_TRUE(other.Set(5, 6));
  EXPECT_EQ(KeysInOrder(other), (Keys{5}));
}

TEST(Map, PositionsOfTheWalkLeadToTheEntries) {
  NumberMap map(kFewBuckets);
  map.Reserve(100);
  for (int i = 0; i < 100; ++i) {
    map.Set(static_cast<Key>(i), i);
  }
  std::size_t walked = 0;
  for (const std::uint32_t position : map.WalkOrder()) {
    map.At(position).Value += 1000;
    EXPECT_EQ(std::as_const(map).At(position).Key + 1000, static_cast<Key>(map.At(position).Value));
    ++walked;
  }
  EXPECT_EQ(walked, 100U);
  map.ForEachOrdered([](Key key, int value) { EXPECT_EQ(value - 1000, static_cast<int>(key)); });
}

// On both sides of the size where the walk changes from sorting to counting.
TEST(Map, TheOrderDoesNotDependOnTheSize) {
  for (const std::uint32_t buckets : {1U, kFewBuckets, kManyBuckets, 4000000000U}) {
    for (const std::size_t size : {std::size_t{1}, std::size_t{100}, std::size_t{200},
                                   std::size_t{300}, std::size_t{20000}}) {
      std::mt19937_64 random(size);
      NumberMap map(buckets);
      Keys keys;
      while (keys.size() < size) {
        keys.push_back(random());
        ASSERT_TRUE(map.Set(keys.back(), 0));
      }
      ASSERT_EQ(KeysInOrder(map), Expected(keys, buckets)) << size << " of " << buckets;
    }
  }
}

TEST(Map, AgreesWithAModelOverRandomOperations) {
  std::mt19937 random(3);
  for (const unsigned range : {3U, 40U, 3000U}) {
    NumberMap map(kFewBuckets);
    std::map<Key, int> model;
    Keys by_age;
    for (int i = 0; i < 20000; ++i) {
      const Key key = random() % range;
      if (random() % 2 == 0) {
        const bool added = model.insert_or_assign(key, i).second;
        ASSERT_EQ(map.Set(key, i), added);
        if (added) {
          by_age.push_back(key);
        }
      } else {
        const auto found = model.find(key);
        const std::optional<int> value = map.Remove(key);
        ASSERT_EQ(value.has_value(), found != model.end());
        if (value) {
          ASSERT_EQ(*value, found->second);
          model.erase(found);
          by_age.erase(std::find(by_age.begin(), by_age.end(), key));
        }
      }
      ASSERT_EQ(map.GetCount(), model.size());
      if (i % 97 == 0) {
        ASSERT_EQ(KeysInOrder(map), Expected(by_age, kFewBuckets));
        map.ForEachOrdered([&](Key k, int value) { ASSERT_EQ(value, model.at(k)); });
      }
    }
  }
}

// A million removals from the front would take minutes if each moved the entries behind it.
TEST(Map, ManyRemovalsKeepTheOrderAndTheTime) {
  constexpr Key kKeys = 1000000;
  NumberMap map(kManyBuckets);
  for (Key key = 0; key < kKeys; ++key) {
    map.Set(key, 0);
  }
  for (Key key = 0; key < kKeys - 5; ++key) {
    ASSERT_TRUE(map.Remove(key).has_value());
  }
  Keys left;
  for (Key key = kKeys - 5; key < kKeys; ++key) {
    left.push_back(key);
  }
  EXPECT_EQ(KeysInOrder(map), Expected(left, kManyBuckets));
}

TEST(Map, AFailedSetChangesNothing) {
  unsigned failures = 0;
  for (std::size_t size = 0; size < 200; ++size) {
    for (long allocations = 0;; ++allocations) {
      NumberMap map(kFewBuckets);
      Keys keys;
      for (Key key = 0; key < size; ++key) {
        map.Set(key, 1);
        keys.push_back(key);
      }
      bool failed = false;
      g_allocations_left = allocations;
      try {
        map.Set(size, 2);
      } catch (const std::bad_alloc&) {
        failed = true;
      }
      g_allocations_left = -1;
      if (!failed) {
        break;
      }
      ++failures;
      ASSERT_EQ(map.Find(size), nullptr);
      ASSERT_EQ(KeysInOrder(map), Expected(keys, kFewBuckets));
      ASSERT_TRUE(map.Set(size, 3));
      keys.push_back(size);
      ASSERT_EQ(KeysInOrder(map), Expected(keys, kFewBuckets));
    }
  }
  EXPECT_GE(failures, 10U);
}

TEST(Map, TurningTheOrderRoundThatFailsChangesNothing) {
  NumberMap map(kFewBuckets);
  Keys keys;
  for (Key key = 0; key < 100; ++key) {
    map.Set(key, 1);
    keys.push_back(key);
  }
  g_allocations_left = 0;
  bool failed = false;
  try {
    map.Reverse();
  } catch (const std::bad_alloc&) {
    failed = true;
  }
  g_allocations_left = -1;
  EXPECT_TRUE(failed);
  EXPECT_EQ(KeysInOrder(map), Expected(keys, kFewBuckets));
  EXPECT_NE(map.Find(42), nullptr);
  map.Reverse();
  std::reverse(keys.begin(), keys.end());
  EXPECT_EQ(KeysInOrder(map), Expected(keys, kFewBuckets));
}

TEST(Map, RemovingAndClearingTakeNoMemory) {
  NumberMap map(kFewBuckets);
  for (Key key = 0; key < 1000; ++key) {
    map.Set(key, 1);
  }
  g_allocations_left = 0;
  std::size_t removed = 0;
  for (Key key = 0; key < 900; ++key) {
    removed += map.Remove(key).has_value() ? 1 : 0;
  }
  const std::size_t left = map.GetCount();
  map.Clear();
  g_allocations_left = -1;
  EXPECT_EQ(removed, 900U);
  EXPECT_EQ(left, 100U);
  EXPECT_EQ(map.GetCount(), 0U);
}

TEST(Map, TakesNoMemoryBeforeTheFirstKey) {
  g_allocations_left = 0;
  NumberMap map(kManyBuckets);
  const bool absent = map.Find(1) == nullptr;
  g_allocations_left = -1;
  EXPECT_TRUE(absent);
}

TEST(Map, IsWalkedInTheOrderOfAdditionToo) {
  NumberMap map(kFewBuckets);
  for (const Key key : Keys{5, 3, 9, 7}) map.Set(key, 1);
  map.Set(3, 2);
  map.Remove(9);
  Keys keys;
  map.ForEach([&](Key key, int value) {
    keys.push_back(key);
    EXPECT_EQ(value, key == 3 ? 2 : 1);
  });
  EXPECT_EQ(keys, (Keys{5, 3, 7}));
}

TEST(KeyIndex, RelocatesOnlyFromTheRightPosition) {
  const auto key_at = [](std::uint32_t) { return Key{1}; };
  CKeyIndex index;
  EXPECT_FALSE(index.Relocate(1, 0, 2));
  index.Reserve(1);
  EXPECT_EQ(index.FindOrAdd(1, 5, key_at), CKeyIndex::kAbsent);
  EXPECT_EQ(index.FindOrAdd(1, 6, key_at), 5U);
  EXPECT_FALSE(index.Relocate(1, 6, 2));
  EXPECT_FALSE(index.Relocate(9, 5, 2));
  EXPECT_TRUE(index.Holds(1, 5));
  EXPECT_TRUE(index.Relocate(1, 5, 2));
  EXPECT_FALSE(index.Holds(1, 5));
  EXPECT_EQ(index.Find(1, key_at), 2U);
  EXPECT_EQ(index.Remove(1, key_at), 2U);
  EXPECT_EQ(index.Remove(1, key_at), CKeyIndex::kAbsent);
  EXPECT_EQ(index.GetCount(), 0U);
}

TEST(KeyIndex, KeysThatDifferInFewBitsAllFindTheirPosition) {
  for (const std::uint32_t shift : {0U, 20U, 44U}) {
    const auto key_at = [shift](std::uint32_t position) { return Key{position} << shift; };
    CKeyIndex index;
    for (std::uint32_t i = 0; i < 200000; ++i) {
      index.Reserve(i + 1);
      ASSERT_EQ(index.FindOrAdd(key_at(i), i, key_at), CKeyIndex::kAbsent);
    }
    for (std::uint32_t i = 0; i < 200000; ++i) ASSERT_EQ(index.Find(key_at(i), key_at), i);
  }
}

TEST(KeyIndex, KeysThatStayAreFoundWhileOthersGo) {
  const auto key_at = [](std::uint32_t position) { return Key{position} * 3; };
  CKeyIndex index;
  index.Reserve(5000);
  for (std::uint32_t i = 0; i < 5000; ++i) index.FindOrAdd(key_at(i), i, key_at);
  for (std::uint32_t gone = 0; gone < 5000; gone += 2) {
    ASSERT_EQ(index.Remove(key_at(gone), key_at), gone);
    ASSERT_EQ(index.Find(key_at(gone), key_at), CKeyIndex::kAbsent);
    ASSERT_EQ(index.Find(key_at(gone + 1), key_at), gone + 1);
  }
  for (std::uint32_t i = 0; i < 5000; ++i)
    ASSERT_EQ(index.Find(key_at(i), key_at), i % 2 == 0 ? CKeyIndex::kAbsent : i);
}

TEST(KeyIndex, GivesOnlyItsMemoryAwayWhenMoved) {
  const auto key_at = [](std::uint32_t position) { return Key{position}; };
  CKeyIndex index;
  index.Reserve(1);
  index.FindOrAdd(7, 7, key_at);
  CKeyIndex other = std::move(index);
  EXPECT_EQ(other.Find(7, key_at), 7U);
  EXPECT_EQ(index.GetCount(), 0U);  // NOLINT(bugprone-use-after-move): that is the point
  EXPECT_EQ(index.Find(7, key_at), CKeyIndex::kAbsent);
}

}  // namespace
}  // namespace qenzor
