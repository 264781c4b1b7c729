#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

#include "qenzor/platform/export.h"
#include "qenzor/platform/geometry.h"
#include "qenzor/qen/abstract_obj.h"

namespace qenzor {

/// What a map object is.
enum class ObjectKind : std::uint8_t { kLine, kPolygon, kLabel, kRasterRect, kRasterPoint };

inline constexpr std::size_t kObjectKinds = 5;

/// The names of the kinds, in their order, as filters and listings use them.
inline constexpr std::array<std::string_view, kObjectKinds> kObjectKindNames{
    "line", "polygon", "label", "raster_rect", "raster_point"};

constexpr std::string_view NameOf(ObjectKind kind) {
  return kObjectKindNames[static_cast<std::size_t>(kind)];
}

/// The kind of an object; nothing for one of a class that the format does not have.
QENZOR_EXPORT std::optional<ObjectKind> KindOf(const CAbstractObj& object);

/// The points of a line, a polygon, or of what stands at a point; none for a raster by its edges.
QENZOR_EXPORT std::span<const CPoint> PointsOf(ObjectKind kind, const CAbstractObj& object);
/// The same for an object whose kind is not known yet; none for one of another class.
QENZOR_EXPORT std::span<const CPoint> PointsOf(const CAbstractObj& object);
/// The length of the way from point to point, in map units.
QENZOR_EXPORT double LengthOf(std::span<const CPoint> points);

/// The bounding rectangle over all points as they now are (a raster's edges put in order); nothing
/// for an object without points. GetBoundRect tells it as it was read, of a ring without its end.
QENZOR_EXPORT std::optional<CRect> FindBounds(ObjectKind kind, const CAbstractObj& object);

/// One object of a map and where it stands.
struct ObjectAt {
  std::uint16_t Segment = 0;
  std::uint16_t Layer = 0;
  std::uint64_t ZId = 0;
  std::uint32_t Index = 0;  ///< in its object set, from 0
  ObjectKind Kind = ObjectKind::kLine;
  CAbstractObj* Object = nullptr;  ///< the map's

  /// The object as one of the class that its kind says.
  template <class Class>
  const Class& As() const {
    return static_cast<const Class&>(*Object);
  }
};

}  // namespace qenzor
