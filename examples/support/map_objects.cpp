#include "examples/support/map_objects.h"

#include <utility>

#include "qenzor/qen/builder.h"

namespace world {

void MapObjects::Add(std::uint16_t segment, Layer layer, std::uint64_t id,
                     std::unique_ptr<qenzor::CAbstractObjEdit> object) {
  m_objects[{segment, layer, id}].push_back(std::move(object));
}

void MapObjects::MoveInto(qenzor::CQenEdit& map) {
  qenzor::CMapBuilder builder(map);
  for (auto& [place, objects] : std::exchange(m_objects, {})) {
    const auto [segment, layer, id] = place;
    auto& set = builder.GetObjects(segment, static_cast<std::uint16_t>(layer), id);
    for (auto& object : objects) set.Append(std::move(object));
  }
}

}  // namespace world
