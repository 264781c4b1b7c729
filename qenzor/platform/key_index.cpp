#include "qenzor/platform/key_index.h"

#include <algorithm>
#include <bit>
#include <cassert>
#include <chrono>
#include <exception>
#include <new>
#include <random>
#include <utility>

namespace qenzor {
namespace {

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

CKeyIndex::CKeyIndex(CKeyIndex&& other) noexcept { *this = std::move(other); }

CKeyIndex& CKeyIndex::operator=(CKeyIndex&& other) noexcept {
  m_slots = std::move(other.m_slots);
  m_slotCount = std::exchange(other.m_slotCount, 0);
  m_room = std::exchange(other.m_room, 0);
  m_count = std::exchange(other.m_count, 0);
  m_shift = other.m_shift;
  m_salt = other.m_salt;
  return *this;
}

CKeyIndex::Salt CKeyIndex::DrawSalt() noexcept try {
  std::random_device source;
  const auto draw = [&source] { return std::uint64_t{source()} << 32U | source(); };
  const std::uint64_t mask = draw();
  return {mask, draw() | 1U};
} catch (const std::exception&) {
  // A system that gives no random numbers at the moment: who prepares a file knows neither the time
  // to the nanosecond nor where this process has its memory.
  const auto time = std::chrono::steady_clock::now().time_since_epoch().count();
  const auto place = reinterpret_cast<std::uintptr_t>(&time);
  return {static_cast<std::uint64_t>(time) * kMixer, place * kMixer | 1U};
}

// Drawn once per process, when the library is loaded: a child that is forked while another thread
// draws it at its first use would wait for that thread for ever.
const CKeyIndex::Salt CKeyIndex::s_salt = DrawSalt();

std::size_t CKeyIndex::FindPosition(std::uint64_t key, std::uint32_t position) const noexcept {
  if (m_count == 0) return kNoSlot;
  std::size_t at = HomeOf(HashOf(key));
  while (m_slots[at].Position != position && m_slots[at].Position != kAbsent) at = NextOf(at);
  return m_slots[at].Position == kAbsent || m_slots[at].Hash != HashOf(key) ? kNoSlot : at;
}

bool CKeyIndex::Relocate(std::uint64_t key, std::uint32_t from, std::uint32_t to) noexcept {
  assert(to != kAbsent);
  const std::size_t at = FindPosition(key, from);
  if (at != kNoSlot) m_slots[at].Position = to;
  return at != kNoSlot;
}

bool CKeyIndex::Holds(std::uint64_t key, std::uint32_t position) const noexcept {
  return FindPosition(key, position) != kNoSlot;
}

// What stands behind a free slot must still be found from its own: it moves up unless that would
// bring it in front of its home.
void CKeyIndex::CloseSlot(std::size_t at) noexcept {
  assert(m_count != 0 && at < m_slotCount && m_slots[at].Position != kAbsent);
  const std::size_t mask = m_slotCount - 1;
  for (std::size_t next = NextOf(at); m_slots[next].Position != kAbsent; next = NextOf(next)) {
    const std::size_t home = HomeOf(m_slots[next].Hash);
    if (((next - home) & mask) < ((next - at) & mask)) continue;
    m_slots[at] = m_slots[next];
    at = next;
  }
  m_slots[at] = {};
  --m_count;
}

void CKeyIndex::Clear() noexcept { *this = CKeyIndex(); }

void CKeyIndex::Grow(std::size_t count) {
  if (count > kMaxCount) throw std::bad_alloc();
  constexpr std::size_t kFewestSlots = 8;
  CKeyIndex grown;
  grown.m_slotCount = std::max(std::bit_ceil(count * 2), kFewestSlots);
  grown.m_slots = std::make_unique<Slot[]>(grown.m_slotCount);
  grown.m_room = grown.m_slotCount / 2;
  grown.m_shift = 32 - static_cast<std::uint32_t>(std::countr_zero(grown.m_slotCount));
  grown.m_salt = m_slotCount == 0 ? s_salt : m_salt;
  grown.m_count = m_count;
  for (std::size_t from = 0; from < m_slotCount; ++from) {
    if (m_slots[from].Position == kAbsent) continue;
    std::size_t to = grown.HomeOf(m_slots[from].Hash);
    while (grown.m_slots[to].Position != kAbsent) to = grown.NextOf(to);
    grown.m_slots[to] = m_slots[from];
  }
  *this = std::move(grown);
}

std::vector<std::uint32_t> OrderByBucket(std::vector<BucketSlot> slots, std::uint32_t buckets) {
  assert(buckets != 0);
  // Counting touches every bucket and sorting compares every slot about log2(slots) times: a few
  // slots per hundred buckets are where the two cost the same.
  constexpr std::size_t kBucketsPerSlot = 32;
  return slots.size() < buckets / kBucketsPerSlot ? OrderBySorting(slots)
                                                  : OrderByCounting(slots, buckets);
}

}  // namespace qenzor
