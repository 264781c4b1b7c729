#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include "qenzor/platform/export.h"

namespace qenzor {

/// Finds the position that was filed under a 64-bit key. It has no order of its own; a map that
/// keeps its entries in a row (map.h) owns one. Movable; a moved-from index is empty.
class QENZOR_EXPORT CKeyIndex {
 public:
  /// No key is ever filed under this position.
  static constexpr std::uint32_t kAbsent = 0xFFFFFFFF;

  /// Takes no memory before the first key.
  CKeyIndex() noexcept;
  ~CKeyIndex();
  CKeyIndex(CKeyIndex&& other) noexcept;
  CKeyIndex& operator=(CKeyIndex&& other) noexcept;

  std::size_t GetCount() const noexcept;
  /// The key's position, or kAbsent.
  std::uint32_t Find(std::uint64_t key) const noexcept;
  /// The key's position; kAbsent if there was none, and then `position` is filed. When memory runs
  /// out, nothing has changed.
  std::uint32_t FindOrAdd(std::uint64_t key, std::uint32_t position);
  /// Files the key under `to` if it stands under `from`, and says whether it did.
  bool Relocate(std::uint64_t key, std::uint32_t from, std::uint32_t to) noexcept;
  /// Forgets the key; its position, or kAbsent.
  std::uint32_t Remove(std::uint64_t key) noexcept;
  /// Forgets all keys and gives their memory back.
  void Clear() noexcept;
  /// Makes room for `count` keys in all.
  void Reserve(std::size_t count);

 private:
  struct Table;
  Table& GetTable();

  std::unique_ptr<Table> m_table;
};

/// The bucket of a key, below `buckets` (which is not 0): one step of the minimal standard
/// generator on the key's low 32 bits, by Schrage's method, whose products all fit in 32 bits.
constexpr std::uint32_t BucketOfKey(std::uint64_t key, std::uint32_t buckets) noexcept {
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
