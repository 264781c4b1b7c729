#pragma once

#include <cstddef>
#include <iterator>
#include <memory>
#include <type_traits>
#include <utility>
#include <vector>

#include "qenzor/platform/standard.h"

namespace qenzor {

/// Walks the elements of a set in order. It gives pointers, which go on belonging to the set; a
/// place that is still empty gives null. Good until the set is changed.
template <class Element>
class CElemIterator {
 public:
  using Owner = std::unique_ptr<std::remove_const_t<Element>>;
  using iterator_category = std::forward_iterator_tag;
  using difference_type = std::ptrdiff_t;
  using value_type = Element*;
  using pointer = void;
  using reference = Element*;

  CElemIterator() = default;
  explicit CElemIterator(const Owner* at) : m_at(at) {}

  Element* operator*() const { return m_at->get(); }
  CElemIterator& operator++() {
    ++m_at;
    return *this;
  }
  // NOLINTNEXTLINE(cert-dcl21-cpp): an iterator gives what it was as a value of its own
  CElemIterator operator++(int) { return CElemIterator(m_at++); }
  bool operator==(const CElemIterator&) const = default;

 private:
  const Owner* m_at = nullptr;
};

/// The same for a keyed set, whose elements are put in order when the walk begins.
template <class Element>
class CKeyedElemIterator {
 public:
  using Elems = std::vector<std::remove_const_t<Element>*>;
  using iterator_category = std::forward_iterator_tag;
  using difference_type = std::ptrdiff_t;
  using value_type = Element*;
  using pointer = void;
  using reference = Element*;

  CKeyedElemIterator() = default;
  explicit CKeyedElemIterator(Elems elems)
      : m_elems(std::make_shared<const Elems>(std::move(elems))) {}

  Element* operator*() const { return (*m_elems)[m_at]; }
  CKeyedElemIterator& operator++() {
    ++m_at;
    return *this;
  }
  // NOLINTNEXTLINE(cert-dcl21-cpp): an iterator gives what it was as a value of its own
  CKeyedElemIterator operator++(int) {
    CKeyedElemIterator before = *this;
    ++m_at;
    return before;
  }
  bool operator==(const CKeyedElemIterator&) const = default;
  bool operator==(std::default_sentinel_t /*end*/) const {
    return m_elems == nullptr || m_at == m_elems->size();
  }

 private:
  std::shared_ptr<const Elems> m_elems;
  std::size_t m_at = 0;
};

}  // namespace qenzor
