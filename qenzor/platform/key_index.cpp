#include "qenzor/platform/key_index.h"

#include <algorithm>
#include <boost/unordered/unordered_flat_map.hpp>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <random>
#include <vector>

namespace qenzor {
namespace {

/// Numbers drawn once per process. A file is a stranger's: with a fixed hash, keys could be
/// prepared that all collide.
struct Salt {
  std::uint64_t Mask;
  std::uint64_t Factor;  // odd, so that no two keys become one
};

Salt DrawSalt() {
  std::random_device source;
  const auto draw = [&source] { return std::uint64_t{source()} << 32U | source(); };
  const std::uint64_t mask = draw();
  return {mask, draw() | 1U};
}

const Salt& GetSalt() {
  static const Salt salt = DrawSalt();
  return salt;
}

/// The container mixes the result further, so the high bits of a product are enough here.
class KeyHash {
 public:
  std::size_t operator()(std::uint64_t key) const noexcept {
    return static_cast<std::size_t>((key ^ m_salt.Mask) * m_salt.Factor);
  }

 private:
  Salt m_salt = GetSalt();
};

std::vector<std::uint32_t> OrderBySorting(std::vector<BucketSlot>& slots) {
  std::sort(slots.begin(), slots.end(), [](const BucketSlot& a, const BucketSlot& b) {
    return a.Bucket != b.Bucket ? a.Bucket < b.Bucket : a.Position > b.Position;
  });
  std::vector<std::uint32_t> order(slots.size());
  std::transform(slots.begin(), slots.end(), order.begin(),
                 [](const BucketSlot& slot) { return slot.Position; });
  return order;
}

std::vector<std::uint32_t> OrderByCounting(const std::vector<BucketSlot>& slots,
                                           std::uint32_t buckets) {
  std::vector<std::uint32_t> ends(buckets);
  for (const BucketSlot& slot : slots) {
    ++ends[slot.Bucket];
  }
  std::uint32_t total = 0;
  for (std::uint32_t& end : ends) {
    end = total += end;
  }
  std::vector<std::uint32_t> order(slots.size());
  for (const BucketSlot& slot : slots) {
    order[--ends[slot.Bucket]] = slot.Position;
  }
  return order;
}

}  // namespace

struct CKeyIndex::Table {
  boost::unordered_flat_map<std::uint64_t, std::uint32_t, KeyHash> Positions;
};

CKeyIndex::CKeyIndex() noexcept = default;
CKeyIndex::~CKeyIndex() = default;
CKeyIndex::CKeyIndex(CKeyIndex&& other) noexcept = default;
CKeyIndex& CKeyIndex::operator=(CKeyIndex&& other) noexcept = default;

std::size_t CKeyIndex::GetCount() const noexcept { return m_table ? m_table->Positions.size() : 0; }

std::uint32_t CKeyIndex::Find(std::uint64_t key) const noexcept {
  if (!m_table) {
    return kAbsent;
  }
  const auto found = m_table->Positions.find(key);
  return found == m_table->Positions.end() ? kAbsent : found->second;
}

std::uint32_t CKeyIndex::FindOrAdd(std::uint64_t key, std::uint32_t position) {
  const auto [found, added] = GetTable().Positions.try_emplace(key, position);
  return added ? kAbsent : found->second;
}

bool CKeyIndex::Relocate(std::uint64_t key, std::uint32_t from, std::uint32_t to) noexcept {
  if (!m_table) {
    return false;
  }
  const auto found = m_table->Positions.find(key);
  if (found == m_table->Positions.end() || found->second != from) {
    return false;
  }
  found->second = to;
  return true;
}

std::uint32_t CKeyIndex::Remove(std::uint64_t key) noexcept {
  if (!m_table) {
    return kAbsent;
  }
  const auto found = m_table->Positions.find(key);
  if (found == m_table->Positions.end()) {
    return kAbsent;
  }
  const std::uint32_t position = found->second;
  m_table->Positions.erase(found);
  return position;
}

void CKeyIndex::Clear() noexcept { m_table.reset(); }

void CKeyIndex::Reserve(std::size_t count) { GetTable().Positions.reserve(count); }

CKeyIndex::Table& CKeyIndex::GetTable() {
  if (!m_table) {
    m_table = std::make_unique<Table>();
  }
  return *m_table;
}

std::vector<std::uint32_t> OrderByBucket(std::vector<BucketSlot> slots, std::uint32_t buckets) {
  // Counting touches every bucket and sorting compares every slot about log2(slots) times: a few
  // slots per hundred buckets are where the two cost the same.
  constexpr std::size_t kBucketsPerSlot = 32;
  return slots.size() < buckets / kBucketsPerSlot ? OrderBySorting(slots)
                                                  : OrderByCounting(slots, buckets);
}

}  // namespace qenzor
