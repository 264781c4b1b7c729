#pragma once

#include <cstdint>
#include <limits>
#include <optional>
#include <string_view>
#include <vector>

#include "qenzor/catalogue.h"
#include "qenzor/platform/export.h"
#include "qenzor/platform/strings.h"

namespace qenzor {

enum class ChangeKind : std::uint8_t { kSet, kAdd, kDelete, kMove };

/// One step on the way to what changed: what is counted, and which one it is.
struct PlaceStep {
  /// In the place of an index: behind the last element.
  static constexpr std::uint64_t kEnd = std::numeric_limits<std::uint64_t>::max();
  /// In the place of Nth, on the way to others: all elements, whatever their numbers.
  static constexpr std::uint32_t kAll = std::numeric_limits<std::uint32_t>::max();

  std::string_view Key;      ///< as "segment"; from the library's own tables
  std::uint64_t Number = 0;  ///< the element's own number, or its index from 0
  std::uint32_t Nth = 0;     ///< which of the elements that have the number, from 0

  bool operator==(const PlaceStep&) const = default;
};

/// One thing in which two documents differ. Values are JSON texts.
struct Change {
  ChangeKind Kind = ChangeKind::kSet;
  /// From the outermost container to the element that is meant: set and moved ones and deleted ones
  /// as they are found in the earlier document, added ones as in the later. Empty for the document.
  std::vector<PlaceStep> Place;
  /// Of numbered elements: the position among all of their set, where told.
  std::optional<std::uint32_t> Position;
  std::optional<std::uint32_t> To;  ///< of a moved one: its position in the later document
  CString Field;                    ///< of a set: tags and indices, parted by slashes
  CString Before;                   ///< the value that was there, or the deleted element; may lack
  CString After;                    ///< the value that is there now, or the added element

  bool operator==(const Change&) const = default;
};

/// What changes one document into another.
struct ChangeDocument {
  ClassFamily Document = ClassFamily::kQen;
  std::vector<Change> Changes;
};

/// How the elements of a set are called: the tag of their number's field, or of the set, the key of
/// change documents, and the word for people.
struct PlaceName {
  std::string_view Tag;
  std::string_view Key;
  std::string_view Word;
};

/// The change in a line or two for people, without a line feed at the end. Long values are told by
/// their extent.
QENZOR_EXPORT CString DescribeChange(const Change& change);

}  // namespace qenzor
