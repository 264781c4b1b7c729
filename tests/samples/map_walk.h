#pragma once

#include "examples/support/world_ids.h"
#include "qenzor/qen/qen.h"

namespace qenzor::samples {

/// Where an object of a map stands.
struct ObjectPlace {
  std::uint16_t segment;
  world::Layer layer;
  std::uint64_t z_id;
};

/// Calls f(place, object) for every object of the map, in order.
template <class F>
void ForEachObject(const CQenEdit& map, F&& f) {
  for (const auto& segment : *map.MapData->MeshSegmentSet->GetElemPtr())
    for (const auto& layer : *segment->LayerSet->GetElemPtr())
      for (const auto& group : *layer->ZIdObjSet->GetElemPtr())
        for (const auto& object : *group->ObjSet->GetElemPtr())
          f(ObjectPlace{segment->MeshSegmentNo, static_cast<world::Layer>(layer->LayerNo),
                        group->ZId},
            *object);
}

/// The same for the objects of one class.
template <class Object, class F>
void ForEach(const CQenEdit& map, F&& f) {
  ForEachObject(map, [&f](const ObjectPlace& place, CAbstractObjEdit& object) {
    if (auto* same = dynamic_cast<Object*>(&object); same != nullptr) f(place, *same);
  });
}

}  // namespace qenzor::samples
