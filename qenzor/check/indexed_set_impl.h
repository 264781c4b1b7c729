#pragma once

#include <cstdint>
#include <vector>

#include "qenzor/check/schema_impl.h"

namespace qenzor::check {

/// Counts what is kept and lost of the elements of a set that is written behind others. In sets
/// whose elements go by their position, empty ones come in the places of those that are lost before
/// others.
class CIndexedSet {
 public:
  /// The elements follow in the bytes.
  CIndexedSet(const ClassSchema& schema, std::vector<std::uint8_t>& bytes)
      : m_schema(schema), m_bytes(bytes), m_begin(bytes.size()) {}

  /// An element stands at the end of the bytes.
  void Keep() { ++m_kept; }
  /// Here so many bytes are left out: one element of the kind where that is known, or any number of
  /// elements.
  void Lose(const ClassSchema* kind, std::uint64_t size, bool is_one);
  /// The position that an element has at this place.
  std::uint64_t GetPosition() const { return m_kept + m_gaps.size(); }
  /// Fills in what is needed; gives how many elements there are. Declared is how many there were.
  std::uint64_t Close(std::uint64_t declared);

 private:
  struct Gap {
    std::size_t At;        ///< in the bytes
    std::uint64_t Before;  ///< how many elements have been kept before it
    const ClassSchema* Kind;
    std::uint64_t Size;
    bool IsOne;
    std::uint64_t Number = 1;  ///< of the elements that are lost there
  };

  void CountLost(std::uint64_t declared, bool ends_in_gap);

  const ClassSchema& m_schema;
  std::vector<std::uint8_t>& m_bytes;
  std::size_t m_begin;
  std::uint64_t m_kept = 0;
  std::vector<Gap> m_gaps;
};

}  // namespace qenzor::check
