#pragma once

// Every data class, once, with what belongs to it. The lists themselves stand in qenzor/qen/all.h
// and qenzor/zor/all.h; everything that must know all classes walks them from here.

#include <algorithm>
#include <array>
#include <cstdint>
#include <string_view>
#include <type_traits>
#include <utility>

#include "qenzor/qen/all.h"
#include "qenzor/zor/all.h"

namespace qenzor {

/// The document that a class belongs to.
enum class ClassFamily : std::uint8_t { kQen, kZor };

/// One class: its three forms, its id and tag, and the document that it belongs to.
template <class ChunkT, ClassFamily kOf>
struct DataClass {
  using Chunk = ChunkT;
  using Edit = typename Chunk::EditClass;
  using Converter = typename Chunk::ConverterClass;
  static constexpr std::uint32_t kChunkId = Chunk::kChunkId;
  static constexpr std::string_view kTag = Chunk::kTag;
  static constexpr ClassFamily kFamily = kOf;
  /// Whether it holds elements of one class, or of those derived from that, behind their number.
  static constexpr bool kIsSet = requires { typename Chunk::Element; };
  /// Whether it is a set that files its elements under keys.
  static constexpr bool kIsKeyed = requires { typename Chunk::Key; };

  static_assert(std::is_base_of_v<CAbstractChunk, Chunk>,
                "The chunk form must be a CAbstractChunk.");
  static_assert(std::is_base_of_v<CAbstractChunkEdit, Edit>,
                "EditClass must name a class derived from CAbstractChunkEdit.");
  static_assert(std::is_base_of_v<CAbstractChunkTextConverter, Converter>,
                "ConverterClass must name a class derived from CAbstractChunkTextConverter.");
};

namespace catalogue {

template <ClassFamily kOf, class... Chunks>
constexpr ClassList<DataClass<Chunks, kOf>...> Rows(ClassList<Chunks...> /*chunks*/) noexcept {
  return {};
}

template <class... Rows, class F>
constexpr decltype(auto) Apply(ClassList<Rows...> /*rows*/, F&& f) {
  return std::forward<F>(f).template operator()<Rows...>();
}

}  // namespace catalogue

/// The rows of all classes, in the order in which the factories match them. No class of one
/// document ever matches one of the other.
using Catalogue = decltype(catalogue::Rows<ClassFamily::kQen>(QenClasses{}) +
                           catalogue::Rows<ClassFamily::kZor>(ZorClasses{}));

/// The result of f.operator()<Rows...>(), with the DataClass of each class.
template <class F>
constexpr decltype(auto) WithAllClasses(F&& f) {
  return catalogue::Apply(Catalogue{}, std::forward<F>(f));
}

/// Calls f(DataClass<…>{}) for each class, in order.
template <class F>
constexpr void ForEachClass(F&& f) {
  WithAllClasses([&f]<class... Rows>() { (f(Rows{}), ...); });
}

/// The same until f gives true; whether it did.
template <class F>
constexpr bool AnyClass(F&& f) {
  return WithAllClasses([&f]<class... Rows>() { return (f(Rows{}) || ...); });
}

/// The number of classes.
inline constexpr std::size_t kClassCount =
    WithAllClasses([]<class... Rows>() { return sizeof...(Rows); });

/// One more than the highest chunk id.
inline constexpr std::uint32_t kChunkIds =
    WithAllClasses([]<class... Rows>() { return std::max({Rows::kChunkId...}) + 1; });

namespace catalogue {

template <class Values>
constexpr bool AreDistinct(Values values) {
  std::sort(values.begin(), values.end());
  return std::adjacent_find(values.begin(), values.end()) == values.end();
}

/// Each set's edit form holds the edit forms of all that the set itself may hold.
template <class Set, class Row>
constexpr bool FitsInto() {
  if constexpr (Set::kIsSet)
    return !std::is_base_of_v<typename Set::Chunk::Element, typename Row::Chunk> ||
           std::is_base_of_v<typename Set::Edit::ElementEdit, typename Row::Edit>;
  else
    return true;
}

}  // namespace catalogue

static_assert(WithAllClasses([]<class... Rows>() {
                return catalogue::AreDistinct(std::array{Rows::kChunkId...});
              }),
              "Two classes have the same chunk id.");
static_assert(WithAllClasses([]<class... Rows>() {
                return catalogue::AreDistinct(std::array{Rows::kTag...});
              }),
              "Two classes have the same tag.");
static_assert(!AnyClass([](auto row) { return row.kChunkId == 0; }),
              "Chunk id 0 belongs to unknown chunks.");
static_assert(!AnyClass([]<class Set>(Set) {
  return AnyClass([]<class Row>(Row) { return !catalogue::FitsInto<Set, Row>(); });
}),
              "A class that a set holds must have an edit form that the set's edit form holds.");

}  // namespace qenzor
