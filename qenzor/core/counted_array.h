#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <memory>
#include <type_traits>
#include <utility>

namespace qenzor {

/// An owning array beside its count, as a chunk stores it: the count has the width that it has in
/// the file, so an array can never hold more than the file can tell.
template <class T, class Count>
class CCountedArray {
 public:
  using value_type = T;
  using count_type = Count;
  static constexpr std::size_t kMaxCount = std::numeric_limits<Count>::max();

  CCountedArray() noexcept = default;
  CCountedArray(CCountedArray&& other) noexcept
      : m_elems(std::move(other.m_elems)), m_count(std::exchange(other.m_count, Count{0})) {}
  CCountedArray& operator=(CCountedArray&& other) noexcept {
    m_elems = std::move(other.m_elems);
    m_count = std::exchange(other.m_count, Count{0});
    return *this;
  }

  /// Gives the array count elements, all new; the earlier ones are gone. Elements of plain types
  /// are left for the caller to fill.
  void Reset(Count count) {
    m_count = 0;
    m_elems.reset();
    if (count == 0) return;
    m_elems = std::make_unique_for_overwrite<T[]>(count);
    m_count = count;
  }
  void clear() noexcept {
    m_count = 0;
    m_elems.reset();
  }

  Count size() const noexcept { return m_count; }
  bool empty() const noexcept { return m_count == 0; }
  T* data() noexcept { return m_elems.get(); }
  const T* data() const noexcept { return m_elems.get(); }
  T* begin() noexcept { return data(); }
  T* end() noexcept { return data() + m_count; }
  const T* begin() const noexcept { return data(); }
  const T* end() const noexcept { return data() + m_count; }
  /// The element at index, which must be below size().
  T& operator[](std::size_t index) noexcept { return m_elems[index]; }
  const T& operator[](std::size_t index) const noexcept { return m_elems[index]; }

 private:
  std::unique_ptr<T[]> m_elems;
  Count m_count = 0;
};

}  // namespace qenzor
