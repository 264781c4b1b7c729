#include "qenzor/platform/slab.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <bit>
#include <cstdint>
#include <memory>
#include <mutex>
#include <new>
#include <utility>

#ifdef __linux__
#include <sys/mman.h>
#include <unistd.h>
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
/// large one, up to a size at which a call for each slab costs nothing beside its use.
constexpr std::size_t kMaxSlabSize = std::size_t{2} * 1024 * 1024;
constexpr std::size_t kMinSlabSize = std::size_t{64} * 1024;
/// No block crosses the border of two segments, at whose front, found from a block's address, it
/// says to which slab they belong.
constexpr std::size_t kSegmentSize = kMinSlabSize;
constexpr std::align_val_t kSlabAlignment{kSegmentSize};
constexpr std::size_t kShareOfLive = 4;
/// Slabs of the largest size that are kept when they are empty.
constexpr std::size_t kMaxKept = 64;

// An allocator's state outlives every call; this is all of it.
// NOLINTBEGIN(cppcoreguidelines-avoid-non-const-global-variables)
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
};
constexpr std::int64_t kOpen = std::int64_t{1} << 40;

/// Empty slabs of one size. A program that opens one document after another would else
/// spend most of its time on having the system clear the same memory again and again.
class CSlabPool {
 public:
  explicit constexpr CSlabPool(std::size_t most) noexcept : m_most(most) {}

  bool Keep(void* slab) noexcept {
    const std::lock_guard lock(m_mutex);
    if (m_count == m_most) return false;
    m_slabs[m_count++] = slab;
    return true;
  }
  /// The slab that was kept last, or null.
  void* Take() noexcept {
    const std::lock_guard lock(m_mutex);
    return m_count == 0 ? nullptr : std::exchange(m_slabs[--m_count], nullptr);
  }

 private:
  std::mutex m_mutex;
  std::array<void*, kMaxKept> m_slabs{};
  std::size_t m_most;
  std::size_t m_count = 0;
};

// Never destroyed: objects may outlive every destructor of this library. Of the smallest slabs a
// thread that reads small documents needs two, in turn.
constinit CSlabPool g_smallest{2};
constinit CSlabPool g_largest{kMaxKept};

CSlabPool* PoolOf(std::size_t size) noexcept {
  return size == kMinSlabSize ? &g_smallest : size == kMaxSlabSize ? &g_largest : nullptr;
}

void* AllocateSlab(std::size_t size) noexcept {
  CSlabPool* pool = PoolOf(size);
  if (void* kept = pool == nullptr ? nullptr : pool->Take(); kept != nullptr) return kept;
  void* memory = ::operator new(size, kSlabAlignment, std::nothrow);
  if (memory != nullptr && size == kMaxSlabSize) PopulatePages(memory, size);
  return memory;
}

void FreeSlab(void* slab, std::size_t size) noexcept {
  CSlabPool* pool = PoolOf(size);
  if (pool == nullptr || !pool->Keep(slab)) ::operator delete(slab, kSlabAlignment);
}

SlabHeader* MakeSlab() noexcept {
  const std::size_t share = g_liveBytes.load(std::memory_order_relaxed) / kShareOfLive;
  const std::size_t size = std::bit_floor(std::clamp(share, kMinSlabSize, kMaxSlabSize));
  void* memory = AllocateSlab(size);
  if (memory == nullptr) return nullptr;
  g_liveBytes.fetch_add(size, std::memory_order_relaxed);
  auto* segment = new (memory) SegmentHeader{};
  segment->Slab = new (segment + 1) SlabHeader{kOpen, size};
  return segment->Slab;
}

void Drop(SlabHeader* slab, std::int64_t blocks) noexcept {
  if (slab->Live.fetch_sub(blocks, std::memory_order_acq_rel) != blocks) return;
  g_liveBytes.fetch_sub(slab->Size, std::memory_order_relaxed);
  FreeSlab(reinterpret_cast<SegmentHeader*>(slab) - 1, slab->Size);
}

/// The slab that a thread is cutting. It has no destructor, so that reaching it costs a thread no
/// more than an address.
class CSlabCutter {
 public:
  void* Cut(std::size_t size) noexcept {
    const std::size_t rounded = (size + kAlignment - 1) & ~(kAlignment - 1);
    if (rounded > m_left && !NextSegment() && !Renew()) return nullptr;
    void* block = m_next;
    m_next += rounded;
    m_left -= rounded;
    ++m_cut;
    return block;
  }
  void Retire() noexcept {
    if (m_slab != nullptr) Drop(m_slab, kOpen - m_cut);
    *this = {};
  }

 private:
  bool Renew() noexcept;
  bool NextSegment() noexcept {
    if (m_segmentsLeft == 0) return false;
    --m_segmentsLeft;
    auto* segment = new (m_next + m_left) SegmentHeader{m_slab};
    m_next = reinterpret_cast<std::uint8_t*>(segment + 1);
    m_left = kSegmentSize - sizeof(SegmentHeader);
    return true;
  }

  SlabHeader* m_slab = nullptr;
  std::uint8_t* m_next = nullptr;
  std::size_t m_left = 0;  ///< bytes left in the segment
  std::size_t m_segmentsLeft = 0;
  std::int64_t m_cut = 0;
};

#if defined(__GNUC__)
[[gnu::tls_model("initial-exec")]]
#endif
constinit thread_local CSlabCutter t_cutter;

/// Retires the cutter's last slab with the thread.
struct CutterEnd {
  CutterEnd() = default;
  ~CutterEnd() { t_cutter.Retire(); }
  CutterEnd(const CutterEnd&) = delete;
  CutterEnd& operator=(const CutterEnd&) = delete;
  void Register() const noexcept {}
};
const thread_local CutterEnd t_cutterEnd;
// NOLINTEND(cppcoreguidelines-avoid-non-const-global-variables)

bool CSlabCutter::Renew() noexcept {
  SlabHeader* slab = MakeSlab();
  if (slab == nullptr) return false;
  Retire();
  t_cutterEnd.Register();
  m_slab = slab;
  m_next = reinterpret_cast<std::uint8_t*>(slab + 1);
  m_left = kSegmentSize - sizeof(SegmentHeader) - sizeof(SlabHeader);
  m_segmentsLeft = slab->Size / kSegmentSize - 1;
  return true;
}

}  // namespace

void PopulatePages(void* memory, std::size_t size) noexcept {
#ifdef MADV_POPULATE_WRITE
  const auto page = static_cast<std::size_t>(::sysconf(_SC_PAGESIZE));
  auto* const end = static_cast<std::uint8_t*>(memory) + size;
  void* from = memory;
  std::size_t whole = size;
  if (std::align(page, page, from, whole) == nullptr) return;
  whole = static_cast<std::size_t>(end - static_cast<std::uint8_t*>(from)) / page * page;
  ::madvise(from, whole, MADV_POPULATE_WRITE);
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
  const std::size_t offset = reinterpret_cast<std::uintptr_t>(block) & (kSegmentSize - 1);
  Drop(reinterpret_cast<SegmentHeader*>(static_cast<std::uint8_t*>(block) - offset)->Slab, 1);
}

}  // namespace qenzor
