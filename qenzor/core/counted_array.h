#pragma once

#include <algorithm>
#include <cassert>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <limits>
#include <memory>
#include <span>
#include <type_traits>
#include <utility>

#include "qenzor/platform/slab.h"

namespace qenzor {

/// An owning array beside its count, as a chunk stores it: the count has the width that it has in
/// the file, so an array can never hold more than the file can tell.
template <class T, class Count>
class CCountedArray {
  static_assert(std::is_nothrow_default_constructible_v<T>);

 public:
  using value_type = T;
  using count_type = Count;
  static constexpr std::size_t kMaxCount = std::numeric_limits<Count>::max();

  CCountedArray() noexcept = default;
  ~CCountedArray() { clear(); }
  CCountedArray(CCountedArray&& other) noexcept
      : m_elems(std::exchange(other.m_elems, nullptr)),
        m_count(std::exchange(other.m_count, Count{0})) {}
  CCountedArray& operator=(CCountedArray&& other) noexcept {
    std::swap(m_elems, other.m_elems);
    std::swap(m_count, other.m_count);
    return *this;
  }

  /// Gives the array count elements, all new and zero; the earlier ones are gone.
  void Reset(Count count) {
    ResetForOverwrite(count);
    if constexpr (std::is_trivially_copyable_v<T>) std::fill_n(m_elems, count, T{});
  }
  /// Gives the array copies of the elements, which must not be its own. False, and nothing changes,
  /// when they are more than it can hold.
  [[nodiscard]] bool Assign(std::span<const T> elems) requires std::is_copy_assignable_v<T> {
    assert(elems.empty() || empty() || std::less()(&elems.back(), m_elems) ||
           std::less()(end() - 1, elems.data()));
    if (elems.size() > kMaxCount) return false;
    ResetForOverwrite(static_cast<Count>(elems.size()));
    std::copy(elems.begin(), elems.end(), m_elems);
    return true;
  }
  /// The same as Reset, but elements of plain data are left uninitialised, for the caller to fill.
  void ResetForOverwrite(Count count) {
    clear();
    if (count == 0) return;
    auto* elems = static_cast<T*>(AllocateArrayBlock(count * sizeof(T)));
    if constexpr (!std::is_trivially_copyable_v<T>)
      std::uninitialized_default_construct_n(elems, count);
    m_elems = elems;
    m_count = count;
  }
  void clear() noexcept {
    if (m_elems == nullptr) return;
    std::destroy_n(m_elems, m_count);
    FreeBlock(m_elems);
    m_elems = nullptr;
    m_count = 0;
  }

  Count size() const noexcept { return m_count; }
  bool empty() const noexcept { return m_count == 0; }
  T* data() noexcept { return m_elems; }
  const T* data() const noexcept { return m_elems; }
  T* begin() noexcept { return data(); }
  T* end() noexcept { return data() + m_count; }
  const T* begin() const noexcept { return data(); }
  const T* end() const noexcept { return data() + m_count; }
  /// The element at index, which must be below size().
  T& operator[](std::size_t index) noexcept {
    assert(index < m_count);
    return m_elems[index];
  }
  const T& operator[](std::size_t index) const noexcept {
    assert(index < m_count);
    return m_elems[index];
  }

 private:
  T* m_elems = nullptr;
  Count m_count = 0;
};

}  // namespace qenzor
