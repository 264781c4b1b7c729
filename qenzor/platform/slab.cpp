#include "qenzor/platform/slab.h"

#include <algorithm>
#include <atomic>
#include <bit>
#include <cstdint>
#include <new>

#ifdef __linux__
#include <sys/mman.h>
#endif

namespace qenzor {

namespace {

constexpr std::size_t kAlignment = alignof(std::max_align_t);
/// The address sanitizer shall see every object by itself.
#if defined(__SANITIZE_ADDRESS__)
#define QENZOR_NO_SLABS
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define QENZOR_NO_SLABS
#endif
#endif
#ifdef QENZOR_NO_SLABS
constexpr std::size_t kMaxBlock = 0;
#else
constexpr std::size_t kMaxBlock = 4096;
#endif
/// Slabs grow with what is alive, so that little is taken for a small document and little lost by a
/// large one, up to the size of a huge page: page by page, a system spends more time on handing out
/// the memory of a large document than the reading of it takes.
constexpr std::size_t kMaxSlabSize = std::size_t{2} * 1024 * 1024;
constexpr std::size_t kMinSlabSize = std::size_t{64} * 1024;
/// No block crosses the border of two segments, at whose front, found from a block's address, it
/// says to which slab they belong.
constexpr std::size_t kSegmentSize = kMinSlabSize;
constexpr std::size_t kShareOfLive = 4;

std::atomic<std::size_t> g_liveBytes{0};

struct SlabHeader;

/// Stands at the front of every segment, which is aligned to its size.
struct alignas(kAlignment) SegmentHeader {
  SlabHeader* Slab;
};

/// Stands in a slab's first segment.
struct alignas(kAlignment) SlabHeader {
  /// Blocks that have not come back. While the slab is being cut, which its thread counts apart,
  /// this is kOpen less the blocks that came back.
  std::atomic<std::int64_t> Live;
  std::size_t Size;
  std::align_val_t Alignment;
};
constexpr std::int64_t kOpen = std::int64_t{1} << 40;

SlabHeader* MakeSlab() noexcept {
  const std::size_t share = g_liveBytes.load(std::memory_order_relaxed) / kShareOfLive;
  const std::size_t size = std::bit_floor(std::clamp(share, kMinSlabSize, kMaxSlabSize));
  const std::align_val_t alignment{size == kMaxSlabSize ? kMaxSlabSize : kSegmentSize};
  void* memory = ::operator new(size, alignment, std::nothrow);
  if (memory == nullptr) return nullptr;
  if (size == kMaxSlabSize) AdviseHugePages(memory, size);
  g_liveBytes.fetch_add(size, std::memory_order_relaxed);
  auto* segment = new (memory) SegmentHeader{};
  segment->Slab = new (segment + 1) SlabHeader{kOpen, size, alignment};
  return segment->Slab;
}

void Drop(SlabHeader* slab, std::int64_t blocks) noexcept {
  if (slab->Live.fetch_sub(blocks, std::memory_order_acq_rel) != blocks) return;
  g_liveBytes.fetch_sub(slab->Size, std::memory_order_relaxed);
  ::operator delete(reinterpret_cast<SegmentHeader*>(slab) - 1, slab->Alignment);
}

/// The slab that a thread is cutting.
class CSlabCutter {
 public:
  CSlabCutter() = default;
  ~CSlabCutter() { Retire(); }
  CSlabCutter(const CSlabCutter&) = delete;
  CSlabCutter& operator=(const CSlabCutter&) = delete;

  void* Cut(std::size_t size) noexcept {
    const std::size_t rounded = (size + kAlignment - 1) & ~(kAlignment - 1);
    if (rounded > m_left && !NextSegment() && !Renew()) return nullptr;
    void* block = m_next;
    m_next += rounded;
    m_left -= rounded;
    ++m_cut;
    return block;
  }

 private:
  bool Renew() noexcept {
    SlabHeader* slab = MakeSlab();
    if (slab == nullptr) return false;
    Retire();
    m_slab = slab;
    m_next = reinterpret_cast<std::uint8_t*>(slab + 1);
    m_left = kSegmentSize - sizeof(SegmentHeader) - sizeof(SlabHeader);
    m_segmentsLeft = slab->Size / kSegmentSize - 1;
    return true;
  }
  bool NextSegment() noexcept {
    if (m_segmentsLeft == 0) return false;
    --m_segmentsLeft;
    auto* segment = new (m_next + m_left) SegmentHeader{m_slab};
    m_next = reinterpret_cast<std::uint8_t*>(segment + 1);
    m_left = kSegmentSize - sizeof(SegmentHeader);
    return true;
  }
  void Retire() noexcept {
    if (m_slab != nullptr) Drop(m_slab, kOpen - m_cut);
    m_slab = nullptr;
    m_left = 0;
    m_segmentsLeft = 0;
    m_cut = 0;
  }

  SlabHeader* m_slab = nullptr;
  std::uint8_t* m_next = nullptr;
  std::size_t m_left = 0;  ///< bytes left in the segment
  std::size_t m_segmentsLeft = 0;
  std::int64_t m_cut = 0;
};

thread_local CSlabCutter t_cutter;

}  // namespace

void AdviseHugePages(void* memory, std::size_t size) noexcept {
#ifdef __linux__
  const auto from =
      (reinterpret_cast<std::uintptr_t>(memory) + kMaxSlabSize - 1) & ~(kMaxSlabSize - 1);
  const auto to = (reinterpret_cast<std::uintptr_t>(memory) + size) & ~(kMaxSlabSize - 1);
  if (from < to) ::madvise(reinterpret_cast<void*>(from), to - from, MADV_HUGEPAGE);
#else
  static_cast<void>(memory);
  static_cast<void>(size);
#endif
}

void* TryAllocateBlock(std::size_t size) noexcept {
  return size <= kMaxBlock ? t_cutter.Cut(size) : ::operator new(size, std::nothrow);
}

void* AllocateBlock(std::size_t size) {
  void* block = TryAllocateBlock(size);
  if (block == nullptr) throw std::bad_alloc();
  return block;
}

void FreeBlock(void* block, std::size_t size) noexcept {
  if (block == nullptr) return;
  if (size > kMaxBlock) {
    ::operator delete(block);
    return;
  }
  const auto segment = reinterpret_cast<std::uintptr_t>(block) & ~(kSegmentSize - 1);
  Drop(reinterpret_cast<SegmentHeader*>(segment)->Slab, 1);
}

}  // namespace qenzor
