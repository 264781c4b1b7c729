#include "examples/support/map_objects.h"

#include <utility>

#include "examples/support/append.h"

namespace world {

using qenzor::CAbstractObjEdit;
using qenzor::CLayerDataEdit;
using qenzor::CLayerSetEdit;
using qenzor::CMeshSegmentEdit;
using qenzor::CMeshSegmentSetEdit;
using qenzor::CObjSetEdit;
using qenzor::CZIdObjEdit;
using qenzor::CZIdObjSetEdit;

void MapObjects::Add(std::uint16_t segment, Layer layer, std::uint64_t id,
                     std::unique_ptr<CAbstractObjEdit> object) {
  auto& objects = m_segments[segment][layer][id];
  if (!objects) objects = std::make_unique<CObjSetEdit>();
  Append(*objects, std::move(object));
}

std::unique_ptr<CMeshSegmentSetEdit> MapObjects::TakeSegments() {
  auto segments = std::make_unique<CMeshSegmentSetEdit>();
  for (auto& [number, layers] : std::exchange(m_segments, {})) {
    auto segment = std::make_unique<CMeshSegmentEdit>();
    segment->MeshSegmentNo = number;
    segment->LayerSet = std::make_unique<CLayerSetEdit>();
    for (auto& [layer, objects_by_id] : layers) {
      auto layer_data = std::make_unique<CLayerDataEdit>();
      layer_data->LayerNo = static_cast<std::uint16_t>(layer);
      layer_data->ZIdObjSet = std::make_unique<CZIdObjSetEdit>();
      for (auto& [id, objects] : objects_by_id) {
        auto z_id_obj = std::make_unique<CZIdObjEdit>();
        z_id_obj->ZId = id;
        z_id_obj->ObjSet = std::move(objects);
        Append(*layer_data->ZIdObjSet, std::move(z_id_obj));
      }
      Append(*segment->LayerSet, std::move(layer_data));
    }
    Append(*segments, std::move(segment));
  }
  return segments;
}

}  // namespace world
