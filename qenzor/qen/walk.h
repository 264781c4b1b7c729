#pragma once

#include <memory>
#include <type_traits>

#include "qenzor/qen/qen.h"

namespace qenzor {

// Walks over a map in its chunk or its edit form, in the order of the file. What f gets is const if
// the map is; it may be changed, but no set on the way to it. qenzor/view/walk.h has a walk with
// filters.

template <class Document>
concept MapForm = std::is_base_of_v<CQen, std::remove_const_t<Document>> ||
    std::is_base_of_v<CQenEdit, std::remove_const_t<Document>>;

/// Calls f for each element of the set in the slot, if there is one; const ones where Owner is.
template <class Owner, class Set, class F>
void ForEachIn(const std::unique_ptr<Set>& slot, F&& f) {
  using Kept = std::conditional_t<std::is_const_v<Owner>, const Set, Set>;
  if (slot == nullptr) return;
  for (auto* elem : static_cast<Kept&>(*slot))
    if (elem != nullptr) f(*elem);
}

/// Calls f(segment) for every mesh segment of the map.
template <MapForm Document, class F>
void ForEachSegment(Document& map, F&& f) {
  if (map.MapData != nullptr) ForEachIn<Document>(map.MapData->MeshSegmentSet, f);
}

/// Calls f(segment, layer) for every layer of the map.
template <MapForm Document, class F>
void ForEachLayer(Document& map, F&& f) {
  ForEachSegment(map, [&](auto& segment) {
    ForEachIn<Document>(segment.LayerSet, [&](auto& layer) { f(segment, layer); });
  });
}

/// Calls f(segment, layer, z_id_object) for every z-id object of the map.
template <MapForm Document, class F>
void ForEachZIdObj(Document& map, F&& f) {
  ForEachLayer(map, [&](auto& segment, auto& layer) {
    ForEachIn<Document>(layer.ZIdObjSet, [&](auto& z_id_obj) { f(segment, layer, z_id_obj); });
  });
}

/// Calls f(segment, layer, z_id_object, object) for every object of the map that is of the class,
/// named by its chunk: ForEachObject<CLineObj>(map, f) for lines, without a class for all.
template <class Chunk = CAbstractObj, MapForm Document, class F>
void ForEachObject(Document& map, F&& f) {
  constexpr bool kIsEdit = std::is_base_of_v<CQenEdit, std::remove_const_t<Document>>;
  using Wanted = std::conditional_t<kIsEdit, typename Chunk::EditClass, Chunk>;
  ForEachZIdObj(map, [&](auto& segment, auto& layer, auto& z_id_obj) {
    ForEachIn<Document>(z_id_obj.ObjSet, [&]<class Object>(Object& object) {
      if constexpr (std::is_same_v<Wanted, std::remove_const_t<Object>>)
        f(segment, layer, z_id_obj, object);
      else if (auto* wanted = class_cast<Wanted>(&object))
        f(segment, layer, z_id_obj, *wanted);
    });
  });
}

}  // namespace qenzor
