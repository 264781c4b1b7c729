#pragma once

#include <array>
#include <bitset>
#include <cstdint>
#include <optional>
#include <set>
#include <string_view>

#include "qenzor/core/result.h"
#include "qenzor/platform/export.h"
#include "qenzor/view/frame.h"
#include "qenzor/view/objects.h"

namespace qenzor {

/// Which objects of a map are meant: those that pass every filter that is set.
struct QENZOR_EXPORT Filters {
  std::optional<MapBox> Box;  ///< in the frame's coordinates
  std::optional<std::set<std::uint16_t>> Layers;
  std::optional<std::set<std::uint16_t>> Segments;
  std::optional<std::set<std::uint64_t>> ZIds;
  std::optional<std::bitset<kObjectKinds>> Kinds;

  /// Sets a filter from its name and the text that a user gives for it, as kFilterOptions lists
  /// them. Numbers and kinds add to those set before; a box replaces the one before. A failure
  /// says what is wrong and changes nothing.
  Result<void> Add(std::string_view name, std::string_view text);
  /// Whether nothing is filtered out.
  bool PassAll() const { return !Box && !Layers && !Segments && !ZIds && !Kinds; }

  bool Passes(ObjectKind kind) const {
    return !Kinds || Kinds->test(static_cast<std::size_t>(kind));
  }
};

/// One filter as users ask for it.
struct FilterOption {
  std::string_view Name;
  std::string_view Value;
  std::string_view Help;
};

inline constexpr std::array<FilterOption, 5> kFilterOptions{{
    {"bbox", "W,S,E,N", "Only objects in this box, in the frame's coordinates"},
    {"layer", "N,...", "Only layers of these numbers"},
    {"segment", "N,...", "Only segments of these numbers"},
    {"zid", "N,...|@FILE", "Only objects of these z-ids; a file has numbers, # begins a comment"},
    {"objects", "KIND,...", "Only line, polygon, label, raster_rect, raster_point"},
}};

/// Adds the z-ids of a text as a file of them holds it: numbers parted by white space or commas,
/// one or more a line, # and what follows on its line being a comment. A failure names the line and
/// changes nothing.
QENZOR_EXPORT Result<void> AddZIds(std::string_view text, std::set<std::uint64_t>& z_ids);

}  // namespace qenzor
