#pragma once

#include <map>
#include <memory>
#include <tuple>
#include <vector>

#include "examples/support/mesh.h"
#include "examples/support/world_ids.h"
#include "qenzor/qen/qen.h"

namespace world {

/// Gathers map objects in any order and puts them into a map by segment, layer and z-id, each in
/// ascending order. Segments without objects do not come up.
class MapObjects {
 public:
  void Add(std::uint16_t segment, Layer layer, std::uint64_t id,
           std::unique_ptr<qenzor::CAbstractObjEdit> object);
  /// What was added is gone afterwards.
  void MoveInto(qenzor::CQenEdit& map);

 private:
  using Place = std::tuple<std::uint16_t, Layer, std::uint64_t>;
  std::map<Place, std::vector<std::unique_ptr<qenzor::CAbstractObjEdit>>> m_objects;
};

}  // namespace world
