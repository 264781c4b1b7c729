#include <cassert>
#include <new>
#include <utility>

#include "qenzor/platform/memory.h"
#include "qenzor/platform/pages_impl.h"
#include "qenzor/platform/slab_source_impl.h"

// The address sanitizer shall see every object by itself.
#if defined(__SANITIZE_ADDRESS__)
#define QENZOR_NO_SLABS
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define QENZOR_NO_SLABS
#endif
#endif

#if defined(__linux__) && !defined(QENZOR_NO_SLABS)
#include <pthread.h>
#include <sys/mman.h>
#endif

namespace qenzor {

namespace {

#if defined(__linux__) && !defined(QENZOR_NO_SLABS)

void Unmap(void* memory, std::size_t size) noexcept { ::munmap(memory, size); }

/// Memory of that size, aligned to it; null when there is none.
void* MapAligned(std::size_t size) noexcept {
  const auto map = [](std::size_t bytes) -> std::uint8_t* {
    void* memory =
        ::mmap(nullptr, bytes, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    return memory == MAP_FAILED ? nullptr : static_cast<std::uint8_t*>(memory);
  };
  const auto excess = [size](const void* memory) {
    return reinterpret_cast<std::uintptr_t>(memory) & (size - 1);
  };
  // Next to an area the system mostly puts another, which is aligned then.
  std::uint8_t* memory = map(size);
  if (memory != nullptr && excess(memory) != 0) {
    Unmap(memory, size);
    std::uint8_t* twice = map(2 * size);
    if (twice == nullptr) return nullptr;
    const std::size_t front = (size - excess(twice)) & (size - 1);
    if (front != 0) Unmap(twice, front);
    Unmap(twice + front + size, size - front);
    memory = twice + front;
  }
  // A page of the area's size would take all of its memory for the first slab.
  if (memory != nullptr) ::madvise(memory, size, MADV_NOHUGEPAGE);
  return memory;
}

void GiveMemory(void* memory, std::size_t size) noexcept { ::madvise(memory, size, MADV_DONTNEED); }

struct Loading {
  Loading() noexcept {
    const auto before = [] { g_slabSource.BeforeFork(); };
    const auto after = [] { g_slabSource.AfterFork(); };
    if (::pthread_atfork(before, after, after) != 0) g_slabSource.Close();
  }
  /// A library that is unloaded leaves nothing behind.
  ~Loading() { g_slabSource.ReleaseKept(); }
  Loading(const Loading&) = delete;
  Loading& operator=(const Loading&) = delete;
};
const Loading g_loading;

#else

void Unmap(void* /*memory*/, std::size_t /*size*/) noexcept {}
void* MapAligned(std::size_t /*size*/) noexcept { return nullptr; }
void GiveMemory(void* /*memory*/, std::size_t /*size*/) noexcept {}

#endif

/// The slabs from first on that are in the set, one after another.
std::size_t LengthOfRun(const Area::Slabs& slabs, std::size_t first, std::size_t most) noexcept {
  std::size_t count = 0;
  while (count < most && first + count < slabs.size() && slabs[first + count]) ++count;
  return count;
}

/// Unmaps areas that are chained.
void UnmapAll(Area* area) noexcept {
  while (area != nullptr) Unmap(std::exchange(area, area->Behind), kAreaSize);
}

std::size_t FirstOf(const Area::Slabs& slabs, std::size_t from = 0) noexcept {
  while (from < slabs.size() && !slabs[from]) ++from;
  return from;
}

}  // namespace

// NOLINTNEXTLINE(cppcoreguidelines-avoid-non-const-global-variables): what an allocator is
constinit CSlabSource g_slabSource;

bool CAreaTable::Add(const Area* area) noexcept {
  const std::uintptr_t number = reinterpret_cast<std::uintptr_t>(area) / kAreaSize;
  if (number / kAreasOfStretch >= kStretches) return false;
  std::atomic<std::uint8_t>& page = m_pageOf[number / kAreasOfStretch];
  if (page == 0) {
    if (m_usedPages == m_pages.size()) return false;
    page = static_cast<std::uint8_t>(m_usedPages++);
  }
  m_pages[page][number % kAreasOfStretch / 64] |= std::uint64_t{1} << number % 64;
  return true;
}

void CAreaTable::Remove(const Area* area) noexcept {
  assert(Has(area));
  const std::uintptr_t number = reinterpret_cast<std::uintptr_t>(area) / kAreaSize;
  const std::uint8_t page = m_pageOf[number / kAreasOfStretch];
  m_pages[page][number % kAreasOfStretch / 64] &= ~(std::uint64_t{1} << number % 64);
}

void CAreaList::PutInFront(Area& area) noexcept {
  assert(area.List == nullptr);
  area.List = this;
  area.Before = nullptr;
  area.Behind = m_front;
  (m_front == nullptr ? m_back : m_front->Before) = &area;
  m_front = &area;
}

void CAreaList::Remove(Area& area) noexcept {
  assert(area.List == this);
  (area.Before == nullptr ? m_front : area.Before->Behind) = area.Behind;
  (area.Behind == nullptr ? m_back : area.Behind->Before) = area.Before;
  area.List = nullptr;
}

Area* CSlabSource::MapArea() noexcept {
  void* memory = MapAligned(kAreaSize);
  if (memory == nullptr) return nullptr;
  auto* area = static_cast<Area*>(memory);
  if (!m_areas.Add(area)) {
    Unmap(memory, kAreaSize);
    return nullptr;
  }
  static_assert(sizeof(Area) <= kSlabSize);
  new (memory) Area;
  area->Free.set().reset(0);
  return area;
}

/// Puts an area whose slabs have changed into the list where it belongs.
void CSlabSource::File(Area& area) noexcept {
  CAreaList* list = area.Free.none()                     ? nullptr
                    : (area.Free & area.Resident).none() ? &m_cold
                                                         : &m_warm;
  if (list == area.List) return;
  if (area.List != nullptr) area.List->Remove(area);
  if (list != nullptr) list->PutInFront(area);
}

SlabRow CSlabSource::Take(std::size_t most) noexcept {
  assert(most > 0);
  bool warm = true;
  SlabRow row;
  {
    const std::lock_guard lock(m_mutex);
    if (m_closed) return row;
    Area* area = m_warm.Front();
    warm = area != nullptr;
    if (!warm) area = m_cold.Front() != nullptr ? m_cold.Front() : MapArea();
    if (area == nullptr) return row;
    const Area::Slabs slabs = warm ? area->Free & area->Resident : area->Free;
    const std::size_t first = FirstOf(slabs);
    row = {area->Slab(first), LengthOfRun(slabs, first, most)};
    for (std::size_t i = first; i < first + row.Count; ++i) {
      area->Free.reset(i);
      area->Resident.set(i);
      area->Live[i].store(kOpenSlab, std::memory_order_relaxed);
    }
    if (warm) m_kept -= row.Count;
    File(*area);
  }
  if (!warm) PopulatePages(row.Front, row.Count * kSlabSize);
  return row;
}

void CSlabSource::Return(SlabRow row) noexcept {
  if (row.Count == 0) return;
  Area* dead = nullptr;
  {
    const std::lock_guard lock(m_mutex);
    Area* area = Area::Of(row.Front);
    const auto first = static_cast<std::size_t>(row.Front - area->Slab(0)) / kSlabSize;
    assert(m_areas.Has(area) && first > 0 && first + row.Count <= kSlabsOfArea);
    for (std::size_t i = first; i < first + row.Count; ++i) {
      assert(!area->Free[i]);
      area->Free.set(i);
    }
    m_kept += row.Count;
    File(*area);
    dead = Shrink(m_mostKept);
  }
  UnmapAll(dead);
}

void CSlabSource::ReturnSlabOf(void* block) noexcept {
  const std::size_t offset = reinterpret_cast<std::uintptr_t>(block) & (kSlabSize - 1);
  Return({static_cast<std::uint8_t*>(block) - offset, 1});
}

/// Gives the system the memory of free slabs, those of the area first that has gone without a new
/// one for the longest, until no more than most are kept. Areas that are wholly free come out of
/// their list, chained, to be unmapped.
Area* CSlabSource::Shrink(std::size_t most) noexcept {
  Area* dead = nullptr;
  while (m_kept > most && m_warm.Back() != nullptr) {
    Area& area = *m_warm.Back();
    const Area::Slabs kept = area.Free & area.Resident;
    m_kept -= kept.count();
    area.Resident &= ~kept;
    if (area.Free.count() == kSlabsOfArea - 1) {
      m_warm.Remove(area);
      m_areas.Remove(&area);
      area.Behind = dead;
      dead = &area;
      continue;
    }
    for (std::size_t i = FirstOf(kept); i < kept.size(); i = FirstOf(kept, i)) {
      const std::size_t count = LengthOfRun(kept, i, kept.size());
      GiveMemory(area.Slab(i), count * kSlabSize);
      i += count;
    }
    File(area);
  }
  return dead;
}

void CSlabSource::KeepAtMost(std::size_t bytes) noexcept {
  Area* dead = nullptr;
  {
    const std::lock_guard lock(m_mutex);
    m_mostKept = bytes / kSlabSize;
    dead = Shrink(m_mostKept);
  }
  UnmapAll(dead);
}

void CSlabSource::ReleaseKept() noexcept {
  Area* dead = nullptr;
  {
    const std::lock_guard lock(m_mutex);
    dead = Shrink(0);
  }
  UnmapAll(dead);
}

void SetKeptMemory(std::size_t bytes) noexcept { g_slabSource.KeepAtMost(bytes); }

void ReleaseKeptMemory() noexcept { g_slabSource.ReleaseKept(); }

}  // namespace qenzor
