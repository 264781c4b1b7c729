#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <tuple>
#include <utility>

#include "qenzor/qen/qen.h"

namespace qenzor {

/// Finds, and makes where they are missing, the places of a map's objects. The map must outlive it;
/// sets on the way to objects must not be changed meanwhile but by it.
class QENZOR_EXPORT CMapBuilder {
 public:
  explicit CMapBuilder(CQenEdit& map);

  /// The set for objects under these numbers: the first that the map has, else a new one, for which
  /// segment, layer and z-id object are put behind those that are there. In logarithmic time.
  CObjSetEdit& GetObjects(std::uint16_t segment, std::uint16_t layer, std::uint64_t z_id);

 private:
  using LayerKey = std::pair<std::uint16_t, std::uint16_t>;
  using ZIdKey = std::tuple<std::uint16_t, std::uint16_t, std::uint64_t>;

  CMeshSegmentEdit& GetSegment(std::uint16_t segment);
  CLayerDataEdit& GetLayer(std::uint16_t segment, std::uint16_t layer);

  CQenEdit& m_map;
  std::map<std::uint16_t, CMeshSegmentEdit*> m_segments;
  std::map<LayerKey, CLayerDataEdit*> m_layers;
  std::map<ZIdKey, CZIdObjEdit*> m_zIdObjs;
};

/// Attaches a link to an object, behind those that it has.
QENZOR_EXPORT void AddLink(CAbstractObjEdit& object, CStringW url);

}  // namespace qenzor
