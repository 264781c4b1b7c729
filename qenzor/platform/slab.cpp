#include "qenzor/platform/slab.h"

#include <algorithm>
#include <cassert>
#include <cstdint>
#include <new>
#include <utility>

#include "qenzor/platform/bulk_phase_impl.h"
#include "qenzor/platform/memory_budget_impl.h"
#include "qenzor/platform/near_tls_impl.h"
#include "qenzor/platform/slab_source_impl.h"

namespace qenzor {

namespace {

constexpr std::size_t kAlignment = alignof(std::max_align_t);
/// Larger ones gain nothing, and would leave much of a slab empty at its end.
constexpr std::size_t kMaxBlock = kSlabSize / 16;
/// The most slabs that are taken at once: enough to make the cost of a call to the system
/// negligible, and few compared to a document that has filled as many.
constexpr std::size_t kMaxRow = 16;
/// What a phase takes from the global operator new before its first slab. A small document takes no
/// slab, and a larger one loses at most about as much as it holds at the ends of its slabs.
constexpr std::size_t kSpared = kSlabSize;

/// Cuts blocks from slabs, in order. It has no destructor, so that reaching it costs a thread no
/// more than an address, and is as new when no phase is under way.
class CSlabCutter {
 public:
  /// Null where the block is to come from elsewhere.
  void* Cut(std::size_t size) noexcept {
    const std::size_t rounded = (size + kAlignment - 1) & ~(kAlignment - 1);
    // A size of 0 is not less than anything.
    if (rounded - 1 >= m_left || size > kMaxBlock) return CutFromNext(size);
    return CutHere(rounded);
  }
  /// False when a phase is under way.
  bool Start() noexcept { return !std::exchange(m_inPhase, true); }
  void Finish() noexcept {
    CloseSlab();
    g_slabSource.Return(m_row);
    *this = {};
  }

 private:
  void* CutHere(std::size_t rounded) noexcept {
    assert(rounded != 0 && rounded <= m_left && rounded % kAlignment == 0);
    std::uint8_t* block = m_next;
    m_next += rounded;
    m_left -= rounded;
    ++m_blocks;
    return block;
  }
  // Out of the way of the blocks that need no more than Cut: inlined, it made that a third longer.
  [[gnu::noinline]] void* CutFromNext(std::size_t size) noexcept;
  bool OpenSlab() noexcept;
  void CloseSlab() noexcept;

  std::uint8_t* m_next = nullptr;
  std::size_t m_left = 0;
  std::int32_t m_blocks = 0;  ///< cut from the slab
  bool m_inPhase = false;
  bool m_refused = false;  ///< whether the system had no memory for a slab
  std::uint8_t* m_slab = nullptr;
  SlabRow m_row;            ///< slabs that are still whole
  std::size_t m_slabs = 0;  ///< opened so far
  std::size_t m_spared = 0;
};

// NOLINTBEGIN(cppcoreguidelines-avoid-non-const-global-variables): a phase ends with its call
QENZOR_NEAR_TLS constinit thread_local CSlabCutter t_objects;
QENZOR_NEAR_TLS constinit thread_local CSlabCutter t_arrays;
// NOLINTEND(cppcoreguidelines-avoid-non-const-global-variables)

void* CSlabCutter::CutFromNext(std::size_t size) noexcept {
  if (!m_inPhase || m_refused || size == 0 || size > kMaxBlock) return nullptr;
  const std::size_t rounded = (size + kAlignment - 1) & ~(kAlignment - 1);
  if (m_spared < kSpared) {
    m_spared += rounded;
    return nullptr;
  }
  return OpenSlab() ? CutHere(rounded) : nullptr;
}

bool CSlabCutter::OpenSlab() noexcept {
  CloseSlab();
  // Where there is no room for a slab there may be some for the block.
  if (t_memoryBudget.Left < kSlabSize) return false;
  if (m_row.Count == 0) m_row = g_slabSource.Take(std::clamp(m_slabs, std::size_t{1}, kMaxRow));
  m_refused = m_row.Count == 0;
  if (m_refused) return false;
  t_memoryBudget.Left -= kSlabSize;
  m_slab = std::exchange(m_row.Front, m_row.Front + kSlabSize);
  --m_row.Count;
  ++m_slabs;
  m_next = m_slab;
  m_left = kSlabSize;
  return true;
}

void CSlabCutter::CloseSlab() noexcept {
  if (m_slab != nullptr) g_slabSource.Drop(m_slab, kOpenSlab - m_blocks);
  m_slab = nullptr;
  m_left = 0;
  m_blocks = 0;
}

void* TakeBlock(std::size_t size) {
  ChargeMemory(size);
  return ::operator new(size);
}

}  // namespace

CBulkPhase::CBulkPhase() noexcept : m_outermost(t_objects.Start()) {
  if (m_outermost) t_arrays.Start();
}

CBulkPhase::~CBulkPhase() {
  if (!m_outermost) return;
  t_objects.Finish();
  t_arrays.Finish();
}

// NOLINTNEXTLINE(cppcoreguidelines-avoid-non-const-global-variables): a budget ends with its scope
QENZOR_NEAR_TLS constinit thread_local MemoryBudget t_memoryBudget;

CMemoryBudget::CMemoryBudget(std::uint64_t most) noexcept
    : m_leftOutside(t_memoryBudget.Left),
      m_left(std::min(most, t_memoryBudget.Left)),
      m_wasExceeded(std::exchange(t_memoryBudget.IsExceeded, false)) {
  t_memoryBudget.Left = m_left;
}

CMemoryBudget::~CMemoryBudget() {
  t_memoryBudget.Left = m_leftOutside - (m_left - t_memoryBudget.Left);
  t_memoryBudget.IsExceeded = t_memoryBudget.IsExceeded || m_wasExceeded;
}

bool CMemoryBudget::IsExceeded() const noexcept { return t_memoryBudget.IsExceeded; }

void* TryAllocateBlock(std::size_t size) noexcept {
  void* block = t_objects.Cut(size);
  if (block != nullptr) return block;
  return TakeFromBudget(size) ? ::operator new(size, std::nothrow) : nullptr;
}

void* AllocateBlock(std::size_t size) {
  void* block = t_objects.Cut(size);
  return block != nullptr ? block : TakeBlock(size);
}

void* AllocateArrayBlock(std::size_t size) {
  void* block = t_arrays.Cut(size);
  return block != nullptr ? block : TakeBlock(size);
}

void FreeBlock(void* block) noexcept {
  if (block == nullptr) return;
  if (g_slabSource.Owns(block))
    g_slabSource.Drop(block, 1);
  else
    ::operator delete(block);
}

}  // namespace qenzor
