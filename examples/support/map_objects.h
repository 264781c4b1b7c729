#pragma once

#include <map>
#include <memory>

#include "examples/support/mesh.h"
#include "examples/support/world_ids.h"
#include "qenzor/qen/mesh_segment_set.h"

namespace world {

/// Gathers map objects in any order and files them by segment, layer and z-id, each in ascending
/// order. Segments without objects do not come up.
class MapObjects {
 public:
  void Add(std::uint16_t segment, Layer layer, std::uint64_t id,
           std::unique_ptr<qenzor::CAbstractObjEdit> object);
  /// Builds the mesh segments out of what was added, which is gone afterwards.
  std::unique_ptr<qenzor::CMeshSegmentSetEdit> TakeSegments();

 private:
  using ObjectsById = std::map<std::uint64_t, std::unique_ptr<qenzor::CObjSetEdit>>;
  using Layers = std::map<Layer, ObjectsById>;

  std::map<std::uint16_t, Layers> m_segments;
};

}  // namespace world
