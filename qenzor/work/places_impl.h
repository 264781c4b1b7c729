#pragma once

// What the elements of a document are called when a change names their place.

#include <array>
#include <string_view>
#include <tuple>
#include <type_traits>

#include "qenzor/work/change.h"
#include "qenzor/work/content_impl.h"

namespace qenzor::work {

template <class List>
inline constexpr bool kIsNumberAndSlot = false;
template <class O, class V, class C, class P, class S, class Chunk>
inline constexpr bool kIsNumberAndSlot<std::tuple<Field<O, V, C>, SlotField<P, S, Chunk>>> =
    std::is_unsigned_v<V>;

/// A class that is a number and what stands under it: its objects are known by their numbers.
template <class Chunk>
concept Numbered = HasFieldList<Chunk> && kIsNumberAndSlot<decltype(FieldsOf<Chunk>())>;

template <Numbered Chunk>
constexpr auto NumberField() {
  return std::get<0>(FieldsOf<Chunk>());
}
template <Numbered Chunk>
std::uint64_t NumberOf(const Chunk& chunk) {
  return chunk.*NumberField<Chunk>().Member;
}

/// How elements are named that do not go by the tag of their number's field or of their list.
inline constexpr std::array<PlaceName, 6> kPlaceNames{{
    {"MeshSegmentNo", "segment", "segment"},
    {"LayerNo", "layer", "layer"},
    {"ZId", "zid", "z-id"},
    {"ObjSet", "index", "object"},
    {"DrawInfoSet", "draw_info", "draw info"},
    {"MarkDataSet", "mark", "mark"},
}};

constexpr std::string_view PlaceKey(std::string_view tag) {
  for (const PlaceName& name : kPlaceNames)
    if (name.Tag == tag) return name.Key;
  return tag;
}

/// Whether elements of the key are counted in their list, and whether their numbers have 64 bits.
bool IsIndexKey(std::string_view key) noexcept;
bool IsWideKey(std::string_view key) noexcept;

/// The key of a set's elements in a change document.
template <Set Chunk>
constexpr std::string_view KeyOfElements() {
  if constexpr (Numbered<typename Chunk::Element>)
    return PlaceKey(NumberField<typename Chunk::Element>().Tag);
  else
    return PlaceKey(Chunk::kTag);
}

/// Whether the elements of a set may be of several classes, so that each tells its own.
template <Set Chunk>
inline constexpr bool kTellsClass = !HasFieldList<typename Chunk::Element>;

}  // namespace qenzor::work
