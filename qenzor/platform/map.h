#pragma once

#include <algorithm>
#include <cassert>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <stdexcept>
#include <type_traits>
#include <utility>
#include <vector>

#include "qenzor/platform/key_index.h"
#include "qenzor/platform/prefetch.h"

namespace qenzor {

/// A map from 64-bit keys that is walked in a fixed order, which does not depend on its history
/// except among keys of one bucket: buckets ascending (BucketOfKey), inside a bucket the most
/// recently added key first. The number of buckets decides this order only, never the cost.
///
/// The map owns its values. Pointers to values and entry positions are good until a key is added or
/// removed. It can be moved but not copied; a moved-from map is empty. Whatever throws (for want of
/// memory, or std::length_error beyond 2^30 entries) leaves the map as it was.
template <class K, class V>
class CMap {
  static_assert(std::is_same_v<K, std::uint64_t>, "the order is defined for 64-bit keys");
  static_assert(std::is_nothrow_move_constructible_v<V> && std::is_nothrow_move_assignable_v<V>,
                "a throwing move could lose a value half-way");

 public:
  struct Entry {
    K Key;
    V Value;
  };

  struct Ignore {
    void operator()(K /*key*/) const noexcept {}
  };

  /// `buckets` is not 0.
  explicit CMap(std::uint32_t buckets) noexcept : m_buckets(buckets) { assert(buckets != 0); }

  std::size_t GetCount() const noexcept { return m_index.GetCount(); }

  /// The key's value, or null.
  V* Find(K key) noexcept {
    const std::uint32_t position = m_index.Find(key, KeyAt());
    return position == CKeyIndex::kAbsent ? nullptr : &m_entries[position].Value;
  }
  const V* Find(K key) const noexcept {
    const std::uint32_t position = m_index.Find(key, KeyAt());
    return position == CKeyIndex::kAbsent ? nullptr : &m_entries[position].Value;
  }

  /// Says that the key will be asked for or stored soon; a hint.
  void PrefetchKey(K key) const noexcept { m_index.PrefetchKey(key); }

  /// Stores the value. True if the key is new and was added as the most recent; false if it was
  /// there: it keeps its place, and the old value is destroyed.
  bool Set(K key, V value) {
    MakeRoomForOne();
    const std::uint32_t position =
        m_index.FindOrAdd(key, static_cast<std::uint32_t>(m_entries.size()), KeyAt());
    if (position == CKeyIndex::kAbsent) {
      m_entries.push_back(Entry{key, std::move(value)});
      return true;
    }
    std::swap(m_entries[position].Value, value);
    return false;
  }

  /// Takes the key out; its value, or nothing. Added again, the key is the most recent one.
  /// Constant time on average over many removals.
  std::optional<V> Remove(K key) noexcept {
    const std::uint32_t position = m_index.Remove(key, KeyAt());
    if (position == CKeyIndex::kAbsent) {
      return std::nullopt;
    }
    std::optional<V> value(std::move(m_entries[position].Value));
    const std::size_t removed = m_entries.size() - GetCount();
    if (removed > GetCount()) {
      CloseGaps();
    }
    return value;
  }

  /// Destroys all values and gives the memory back.
  void Clear() noexcept {
    m_index.Clear();
    std::vector<Entry>().swap(m_entries);
  }

  /// As if all keys had been added the other way round.
  void Reverse() {
    CloseGaps();
    CKeyIndex index;
    index.Reserve(m_entries.size());
    std::reverse(m_entries.begin(), m_entries.end());
    for (std::uint32_t at = 0; at < m_entries.size(); ++at)
      index.FindOrAdd(m_entries[at].Key, at, KeyAt());
    m_index = std::move(index);
  }

  /// Makes room for `count` keys in all.
  void Reserve(std::size_t count) {
    m_entries.reserve(count);
    m_index.Reserve(count);
  }

  /// The positions of all entries in the map's order; linear in their number.
  std::vector<std::uint32_t> WalkOrder() const {
    const bool gaps = m_entries.size() != GetCount();
    std::vector<BucketSlot> slots;
    slots.reserve(GetCount());
    for (std::uint32_t at = 0; at < m_entries.size(); ++at) {
      const K key = m_entries[at].Key;
      if (!gaps || m_index.Holds(key, at)) {
        slots.push_back({BucketOfKey(key, m_buckets), at});
      }
    }
    return OrderByBucket(std::move(slots), m_buckets);
  }

  /// The entry at a position that WalkOrder gave. Its key must not be changed.
  Entry& At(std::uint32_t position) noexcept {
    assert(position < m_entries.size());
    return m_entries[position];
  }
  const Entry& At(std::uint32_t position) const noexcept {
    assert(position < m_entries.size());
    return m_entries[position];
  }

  /// Calls `visit(key, value)` for every entry in the map's order. `visit` must neither add nor
  /// remove keys. `ahead(key)` is called some entries before `visit` gets the key.
  template <class Visit, class Ahead = Ignore>
  void ForEachOrdered(Visit visit, Ahead ahead = {}) const {
    // The order jumps about in memory. What comes up soon is asked for now: first the entry, then
    // what its value points to.
    constexpr std::size_t kAhead = 8;
    const std::vector<std::uint32_t> order = WalkOrder();
    for (std::size_t i = 0; i < order.size(); ++i) {
      if (i + 2 * kAhead < order.size()) Prefetch(&m_entries[order[i + 2 * kAhead]]);
      if (i + kAhead < order.size()) {
        const Entry& next = m_entries[order[i + kAhead]];
        PrefetchPointee(next.Value);
        ahead(next.Key);
      }
      visit(m_entries[order[i]].Key, m_entries[order[i]].Value);
      assert(GetCount() == order.size());
    }
  }
  /// The same in the order of addition, which is quicker.
  template <class Visit>
  void ForEach(Visit visit) const {
    const bool gaps = m_entries.size() != GetCount();
    for (std::uint32_t at = 0; at < m_entries.size(); ++at)
      if (!gaps || m_index.Holds(m_entries[at].Key, at))
        visit(m_entries[at].Key, m_entries[at].Value);
  }

 private:
  auto KeyAt() const noexcept {
    return [this](std::uint32_t position) { return m_entries[position].Key; };
  }

  // Room first: once the index knows the key, nothing may fail any more.
  void MakeRoomForOne() {
    constexpr std::size_t kMaxEntries = CKeyIndex::kMaxCount;
    constexpr std::size_t kFirstRoom = 4;
    const std::size_t size = m_entries.size();
    if (size == kMaxEntries) {
      throw std::length_error("CMap: too many entries");
    }
    if (size == m_entries.capacity()) {
      m_entries.reserve(std::clamp(size * 2, kFirstRoom, kMaxEntries));
    }
    m_index.Reserve(GetCount() + 1);
  }

  // An entry whose key the index files elsewhere, or not at all, has been removed. Its place stays
  // empty until the gaps outnumber the entries, so that a removal need not move those behind it.
  void CloseGaps() noexcept {
    std::uint32_t end = 0;
    for (std::uint32_t at = 0; at < m_entries.size(); ++at) {
      if (m_index.Relocate(m_entries[at].Key, at, end)) {
        if (at != end) {
          m_entries[end] = std::move(m_entries[at]);
        }
        ++end;
      }
    }
    m_entries.erase(m_entries.begin() + end, m_entries.end());
  }

  std::vector<Entry> m_entries;  // in order of addition
  CKeyIndex m_index;
  std::uint32_t m_buckets;
};

}  // namespace qenzor
