#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <new>

#include "qenzor/platform/export.h"
#include "qenzor/platform/near_tls_impl.h"

namespace qenzor {

/// While one lives on a thread, what that thread makes for documents may take so many bytes at
/// most: slabs and blocks count themselves, what else is made in step with a document is counted by
/// ChargeMemory. Beyond that, taking memory fails as if there were no more. One inside another
/// counts for both.
class CMemoryBudget {
 public:
  explicit CMemoryBudget(std::uint64_t most) noexcept;
  ~CMemoryBudget();
  CMemoryBudget(const CMemoryBudget&) = delete;
  CMemoryBudget& operator=(const CMemoryBudget&) = delete;

  /// Whether anything was refused.
  bool IsExceeded() const noexcept;

 private:
  std::uint64_t m_leftOutside;
  std::uint64_t m_left;
  bool m_wasExceeded;
};

/// What the thread may still take.
struct MemoryBudget {
  std::uint64_t Left = std::numeric_limits<std::uint64_t>::max();
  bool IsExceeded = false;
};
// NOLINTNEXTLINE(cppcoreguidelines-avoid-non-const-global-variables): it lasts as long as a call
QENZOR_NEAR_TLS QENZOR_EXPORT extern constinit thread_local MemoryBudget t_memoryBudget;

/// Takes the bytes from the budget; false where it has less.
inline bool TakeFromBudget(std::size_t size) noexcept {
  MemoryBudget& budget = t_memoryBudget;
  if (size > budget.Left) {
    budget.IsExceeded = true;
    return false;
  }
  budget.Left -= size;
  return true;
}
/// The same; throws std::bad_alloc then.
inline void ChargeMemory(std::size_t size) {
  if (!TakeFromBudget(size)) throw std::bad_alloc();
}

/// What a set takes for an element beside the element: its place in a list, or an entry under its
/// key, and as much again that growing leaves unused.
inline constexpr std::size_t kListPlace = 2 * sizeof(void*);
inline constexpr std::size_t kKeyedPlace = 2 * (2 * sizeof(std::uint64_t) + sizeof(std::uint32_t));

}  // namespace qenzor
