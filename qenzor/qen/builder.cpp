#include "qenzor/qen/builder.h"

#include "qenzor/qen/url_info.h"
#include "qenzor/qen/walk.h"

namespace qenzor {

namespace {

/// What the slot holds; a new object if it was empty.
template <class T>
T& Filled(std::unique_ptr<T>& slot) {
  if (slot == nullptr) slot = std::make_unique<T>();
  return *slot;
}

}  // namespace

CMapBuilder::CMapBuilder(CQenEdit& map) : m_map(map) {
  ForEachSegment(map, [&](auto& segment) { m_segments.emplace(segment.MeshSegmentNo, &segment); });
  ForEachLayer(map, [&](auto& segment, auto& layer) {
    m_layers.emplace(LayerKey(segment.MeshSegmentNo, layer.LayerNo), &layer);
  });
  ForEachZIdObj(map, [&](auto& segment, auto& layer, auto& z_id_obj) {
    m_zIdObjs.emplace(ZIdKey(segment.MeshSegmentNo, layer.LayerNo, z_id_obj.ZId), &z_id_obj);
  });
}

CObjSetEdit& CMapBuilder::GetObjects(std::uint16_t segment, std::uint16_t layer,
                                     std::uint64_t z_id) {
  CZIdObjEdit*& place = m_zIdObjs[{segment, layer, z_id}];
  if (place == nullptr) {
    auto& set = Filled(GetLayer(segment, layer).ZIdObjSet);
    place = &set.Append(std::make_unique<CZIdObjEdit>());
    place->ZId = z_id;
  }
  return Filled(place->ObjSet);
}

CLayerDataEdit& CMapBuilder::GetLayer(std::uint16_t segment, std::uint16_t layer) {
  CLayerDataEdit*& place = m_layers[{segment, layer}];
  if (place == nullptr) {
    auto& set = Filled(GetSegment(segment).LayerSet);
    place = &set.Append(std::make_unique<CLayerDataEdit>());
    place->LayerNo = layer;
  }
  return *place;
}

CMeshSegmentEdit& CMapBuilder::GetSegment(std::uint16_t segment) {
  CMeshSegmentEdit*& place = m_segments[segment];
  if (place == nullptr) {
    auto& set = Filled(Filled(m_map.MapData).MeshSegmentSet);
    place = &set.Append(std::make_unique<CMeshSegmentEdit>());
    place->MeshSegmentNo = segment;
  }
  return *place;
}

void AddLink(CAbstractObjEdit& object, CStringW url) {
  auto link = std::make_unique<CUrlInfoEdit>();
  link->Text = std::move(url);
  Filled(object.AddedObjInfoSet).Append(std::move(link));
}

}  // namespace qenzor
