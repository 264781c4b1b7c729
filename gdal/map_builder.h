#pragma once

#include <ogr_feature.h>

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <tuple>
#include <utility>

#include "gdal/simple_parts.h"
#include "qenzor/qen/qen.h"
#include "qenzor/view/frame.h"
#include "qenzor/view/objects.h"

namespace qenzor::gdal {

/// How the map is laid out that features are put into.
struct MapLayout {
  std::optional<MapBox> Box;  ///< in degrees
  std::optional<std::pair<std::uint16_t, std::uint16_t>> Segments;
  std::optional<std::uint16_t> Coef;
  std::uint8_t Geo = 1;
};

/// The front of a map for what lies in the box. Nothing, and an error, where there is none.
std::optional<QenFileInfo> LayOut(const MapLayout& layout, const MapBox& data);

/// Where in the map a feature goes.
struct FeaturePlace {
  std::uint16_t Layer = 0;
  std::uint64_t ZId = 0;
  bool AreRasters = false;  ///< areas and points are, instead of polygons and labels
};

/// Puts features into a new map: cut at the edges of segments, rounded to its grid.
class CMapBuilder {
 public:
  explicit CMapBuilder(const QenFileInfo& info);

  /// Adds the objects that the geometry makes, with the values that prepare gives each. False, and
  /// an error, where it cannot be cut or lies outside the map.
  bool Add(const OGRGeometry& geometry, const FeaturePlace& place,
           const std::function<void(ObjectKind, CAbstractObjEdit&)>& prepare);
  /// How many objects there are, and how many parts vanished because they are smaller than the
  /// grid.
  std::uint64_t GetAdded() const { return m_added; }
  std::uint64_t GetVanished() const { return m_vanished; }
  /// The map; afterwards nothing is here any more.
  std::unique_ptr<CQenEdit> Take();

 private:
  bool AddToSegment(const OGRGeometry& geometry, std::uint16_t segment, const FeaturePlace& place,
                    const std::function<void(ObjectKind, CAbstractObjEdit&)>& prepare);
  MapBox CellOf(std::uint16_t column, std::uint16_t row) const;
  CObjSetEdit& SetFor(std::uint16_t segment, const FeaturePlace& place);

  std::unique_ptr<CQenEdit> m_map;
  CFrame m_frame;
  std::map<std::uint16_t, CLayerSetEdit*> m_segments;
  std::map<std::pair<std::uint16_t, std::uint16_t>, CZIdObjSetEdit*> m_layers;
  std::map<std::tuple<std::uint16_t, std::uint16_t, std::uint64_t>, CObjSetEdit*> m_sets;
  std::uint64_t m_added = 0;
  std::uint64_t m_vanished = 0;
};

}  // namespace qenzor::gdal
