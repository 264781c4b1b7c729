#pragma once

#include "qenzor/qen/qen.h"

namespace qenzor {

/// Calls f(segment, layer, z_id_object, object) for every object of the map, in the order of the
/// file. The objects are const if the document is; an object may be changed, but no set on the way
/// to it. qenzor/view/walk.h has a walk with filters.
template <class Document, class F>
requires std::is_base_of_v<CQen, std::remove_const_t<Document>>
void ForEachObject(Document& map, F&& f) {
  // What a slot or a set gives is const where the map is.
  const auto walk = []<class Set>(const std::unique_ptr<Set>& slot, auto&& visit) {
    using Kept = std::conditional_t<std::is_const_v<Document>, const Set, Set>;
    if (slot == nullptr) return;
    for (auto* elem : static_cast<Kept&>(*slot))
      if (elem != nullptr) visit(*elem);
  };
  if (map.MapData == nullptr) return;
  walk(map.MapData->MeshSegmentSet, [&](auto& segment) {
    walk(segment.LayerSet, [&](auto& layer) {
      walk(layer.ZIdObjSet, [&](auto& z_id_obj) {
        walk(z_id_obj.ObjSet, [&](auto& object) { f(segment, layer, z_id_obj, object); });
      });
    });
  });
}

}  // namespace qenzor
