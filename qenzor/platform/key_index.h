#pragma once

#include <cassert>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <memory>
#include <vector>

#include "qenzor/platform/export.h"
#include "qenzor/platform/prefetch.h"

namespace qenzor {

/// Finds the position that was filed under a 64-bit key. It has no order of its own and does not
/// hold the keys either: a map that keeps its entries in a row (map.h) owns one, and tells it with
/// `key_at(position)` which key stands there. Movable; a moved-from index is empty.
///
/// One table of eight bytes a slot, at most half full: a key is looked for from the slot that the
/// upper bits of its hash name, slot by slot, and the key itself is looked at only where all 32
/// bits agree. Since neighbours in the table stay neighbours in a larger one, growing is a walk
/// through both.
class QENZOR_EXPORT CKeyIndex {
 public:
  /// No key is ever filed under this position.
  static constexpr std::uint32_t kAbsent = 0xFFFFFFFF;
  static constexpr std::size_t kMaxCount = std::size_t{1} << 30;

  /// Takes no memory before the first key.
  CKeyIndex() noexcept = default;
  CKeyIndex(CKeyIndex&& other) noexcept;
  CKeyIndex& operator=(CKeyIndex&& other) noexcept;

  std::size_t GetCount() const noexcept { return m_count; }

  /// The key's position, or kAbsent.
  template <class KeyAt>
  std::uint32_t Find(std::uint64_t key, const KeyAt& key_at) const noexcept {
    return m_count == 0 ? kAbsent : m_slots[FindSlot(key, key_at)].Position;
  }
  /// The key's position; kAbsent if there was none, and then `position` is filed, for which there
  /// must be room.
  template <class KeyAt>
  std::uint32_t FindOrAdd(std::uint64_t key, std::uint32_t position, const KeyAt& key_at) noexcept {
    assert(m_count < m_room && position != kAbsent);
    Slot& slot = m_slots[FindSlot(key, key_at)];
    const std::uint32_t found = slot.Position;
    if (found == kAbsent) {
      slot = {HashOf(key), position};
      ++m_count;
    }
    return found;
  }
  /// Has the key's slot fetched into the processor's cache; a hint.
  void PrefetchKey(std::uint64_t key) const noexcept {
    if (m_slotCount != 0) Prefetch(&m_slots[HomeOf(HashOf(key))]);
  }
  /// Files the key under `to` if it stands under `from`, and says whether it did.
  bool Relocate(std::uint64_t key, std::uint32_t from, std::uint32_t to) noexcept;
  /// Whether the key stands under that position.
  bool Holds(std::uint64_t key, std::uint32_t position) const noexcept;
  /// Forgets the key; its position, or kAbsent.
  template <class KeyAt>
  std::uint32_t Remove(std::uint64_t key, const KeyAt& key_at) noexcept {
    if (m_count == 0) return kAbsent;
    const std::size_t at = FindSlot(key, key_at);
    const std::uint32_t position = m_slots[at].Position;
    if (position != kAbsent) CloseSlot(at);
    return position;
  }
  /// Forgets all keys and gives their memory back.
  void Clear() noexcept;
  /// Makes room for `count` keys in all, at most kMaxCount; throws std::bad_alloc.
  void Reserve(std::size_t count) {
    if (count > m_room) Grow(count);
  }

 private:
  struct Slot {
    std::uint32_t Hash = 0;
    std::uint32_t Position = kAbsent;
  };
  /// A file is a stranger's: with a fixed hash, keys could be prepared that all collide.
  struct Salt {
    std::uint64_t Mask = 0;
    std::uint64_t Factor = 1;  // odd, so that no two keys become one
  };
  static Salt DrawSalt() noexcept;
  static const Salt s_salt;
  static constexpr std::uint64_t kMixer = 0x9E3779B97F4A7C15;
  static constexpr std::size_t kNoSlot = std::numeric_limits<std::size_t>::max();

  std::uint32_t HashOf(std::uint64_t key) const noexcept {
    std::uint64_t hash = (key ^ m_salt.Mask) * m_salt.Factor;
    hash = (hash ^ hash >> 32) * kMixer;
    return static_cast<std::uint32_t>(hash >> 32);
  }
  std::size_t HomeOf(std::uint32_t hash) const noexcept { return hash >> m_shift; }
  std::size_t NextOf(std::size_t at) const noexcept { return (at + 1) & (m_slotCount - 1); }

  /// The key's slot, or the free one where it belongs.
  template <class KeyAt>
  std::size_t FindSlot(std::uint64_t key, const KeyAt& key_at) const noexcept {
    const std::uint32_t hash = HashOf(key);
    std::size_t at = HomeOf(hash);
    while (m_slots[at].Position != kAbsent &&
           (m_slots[at].Hash != hash || key_at(m_slots[at].Position) != key))
      at = NextOf(at);
    return at;
  }
  /// The slot that files the position under the key, or kNoSlot.
  std::size_t FindPosition(std::uint64_t key, std::uint32_t position) const noexcept;
  void CloseSlot(std::size_t at) noexcept;
  void Grow(std::size_t count);

  std::unique_ptr<Slot[]> m_slots;
  std::size_t m_slotCount = 0;  // a power of two
  std::size_t m_room = 0;
  std::size_t m_count = 0;
  std::uint32_t m_shift = 0;
  Salt m_salt;
};

/// The bucket of a key, below `buckets` (which is not 0): one step of the minimal standard
/// generator on the key's low 32 bits, by Schrage's method, whose products all fit in 32 bits.
constexpr std::uint32_t BucketOfKey(std::uint64_t key, std::uint32_t buckets) noexcept {
  assert(buckets != 0);
  const auto number = static_cast<std::int32_t>(static_cast<std::uint32_t>(key));
  const std::int32_t quotient = number / 127773;
  const std::int32_t remainder = number % 127773;
  std::int32_t hash = 16807 * remainder - 2836 * quotient;
  if (hash < 0) {
    hash += 2147483647;
  }
  return static_cast<std::uint32_t>(hash) % buckets;
}

/// An entry of a map: the bucket of its key and its position in the row of entries.
struct BucketSlot {
  std::uint32_t Bucket;
  std::uint32_t Position;
};

/// The positions by ascending bucket, inside a bucket the last slot first; the slots come by
/// ascending position. Linear in the slots when they are many; few are sorted, so that the number
/// of buckets does not matter.
QENZOR_EXPORT std::vector<std::uint32_t> OrderByBucket(std::vector<BucketSlot> slots,
                                                       std::uint32_t buckets);

}  // namespace qenzor
