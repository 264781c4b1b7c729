#pragma once

// Where slabs come from: areas of address space, each a row of slabs behind a header.

#include <array>
#include <atomic>
#include <bitset>
#include <cassert>
#include <cstddef>
#include <cstdint>
#include <mutex>

namespace qenzor {

/// What one object that outlives its document keeps alive. Blocks never cross the border of two.
inline constexpr std::size_t kSlabSize = std::size_t{16} * 1024;
inline constexpr std::size_t kAreaSize = std::size_t{2} * 1024 * 1024;
inline constexpr std::size_t kSlabsOfArea = kAreaSize / kSlabSize;

/// Adjacent slabs.
struct SlabRow {
  std::uint8_t* Front = nullptr;
  std::size_t Count = 0;
};

class CAreaList;

/// Stands at the front of an area, which is aligned to its size, in the place of the first slab.
struct Area {
  using Slabs = std::bitset<kSlabsOfArea>;

  static Area* Of(void* block) noexcept {
    return reinterpret_cast<Area*>(static_cast<std::uint8_t*>(block) -
                                   (reinterpret_cast<std::uintptr_t>(block) & (kAreaSize - 1)));
  }
  std::uint8_t* Slab(std::size_t index) noexcept {
    return reinterpret_cast<std::uint8_t*>(this) + index * kSlabSize;
  }
  std::atomic<std::int32_t>& LiveOf(const void* block) noexcept {
    return Live[(reinterpret_cast<std::uintptr_t>(block) & (kAreaSize - 1)) / kSlabSize];
  }

  Slabs Free;      ///< that nobody cuts or has blocks in
  Slabs Resident;  ///< that have been used since the system was last given their memory
  CAreaList* List = nullptr;
  Area* Before = nullptr;
  Area* Behind = nullptr;
  /// Blocks of each slab that have not come back. While a slab is being cut, which its thread
  /// counts apart, this is kOpenSlab less the blocks that came back.
  std::array<std::atomic<std::int32_t>, kSlabsOfArea> Live{};
};
inline constexpr std::int32_t kOpenSlab = std::int32_t{1} << 30;

/// Which addresses are areas: what tells a block of a slab from one of the global operator new.
/// Asking takes no lock. Addresses beyond 48 bits, and beyond a few stretches of 64 GiB each that
/// the system has chosen to place areas in, are never made areas.
class CAreaTable {
 public:
  bool Has(const void* address) const noexcept {
    const std::uintptr_t area = reinterpret_cast<std::uintptr_t>(address) / kAreaSize;
    if (area / kAreasOfStretch >= kStretches) return false;
    const std::size_t page = m_pageOf[area / kAreasOfStretch].load(std::memory_order_relaxed);
    return (Word(page, area).load(std::memory_order_relaxed) >> area % 64 & 1U) != 0;
  }
  /// False when there is no room for it. One thread at a time adds and removes.
  bool Add(const Area* area) noexcept;
  void Remove(const Area* area) noexcept;

 private:
  static constexpr std::size_t kAreasOfStretch = std::size_t{1} << 15;
  static constexpr std::size_t kStretches = (std::size_t{1} << 48) / kAreaSize / kAreasOfStretch;
  using Page = std::array<std::atomic<std::uint64_t>, kAreasOfStretch / 64>;

  const std::atomic<std::uint64_t>& Word(std::size_t page, std::uintptr_t area) const noexcept {
    return m_pages[page][area % kAreasOfStretch / 64];
  }

  std::array<std::atomic<std::uint8_t>, kStretches> m_pageOf{};
  std::array<Page, 16> m_pages{};  ///< the first belongs to no stretch and stays empty
  std::size_t m_usedPages = 1;
};

/// Areas in the order in which they were put at the front.
class CAreaList {
 public:
  Area* Front() const noexcept { return m_front; }
  Area* Back() const noexcept { return m_back; }
  void PutInFront(Area& area) noexcept;
  void Remove(Area& area) noexcept;

 private:
  Area* m_front = nullptr;
  Area* m_back = nullptr;
};

/// Gives slabs to whoever cuts them and keeps some that are empty for the next. It is the one thing
/// that threads share; its lock is held for a few instructions, at times for a call to the system,
/// and never while a process forks.
class CSlabSource {
 public:
  constexpr CSlabSource() noexcept = default;

  bool Owns(const void* block) const noexcept { return m_areas.Has(block); }
  /// At least one slab and at most so many, not 0; none when the system has no memory.
  SlabRow Take(std::size_t most) noexcept;
  /// Takes back slabs that are empty.
  void Return(SlabRow row) noexcept;
  void KeepAtMost(std::size_t bytes) noexcept;
  void ReleaseKept() noexcept;

  /// Takes note of blocks of a slab that are dead, or were never cut.
  void Drop(void* slab, std::int32_t blocks) noexcept {
    assert(Owns(slab) && blocks > 0);
    if (Area::Of(slab)->LiveOf(slab).fetch_sub(blocks, std::memory_order_acq_rel) == blocks)
      ReturnSlabOf(slab);
  }

  /// Around a fork, so that no child gets a lock that a thread holds which it does not have.
  void BeforeFork() noexcept { m_mutex.lock(); }
  void AfterFork() noexcept { m_mutex.unlock(); }
  /// Gives no slabs.
  void Close() noexcept { m_closed = true; }

 private:
  Area* MapArea() noexcept;
  void File(Area& area) noexcept;
  Area* Shrink(std::size_t most) noexcept;
  void ReturnSlabOf(void* block) noexcept;

  CAreaTable m_areas;
  std::mutex m_mutex;
  CAreaList m_warm;  ///< areas with free slabs that are resident
  CAreaList m_cold;  ///< areas with free slabs of which none is
  std::size_t m_kept = 0;
  std::size_t m_mostKept = std::size_t{16} * 1024 * 1024 / kSlabSize;
  bool m_closed = false;
};

// It is never destroyed: objects may outlive every destructor of this library.
// NOLINTNEXTLINE(cppcoreguidelines-avoid-non-const-global-variables): what an allocator is
extern CSlabSource g_slabSource;

}  // namespace qenzor
