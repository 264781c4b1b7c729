#include "qenzor/view/walk.h"

#include <span>
#include <utility>

#include "qenzor/view/box_test.h"

namespace qenzor {

namespace {

template <class Number>
bool Passes(const std::optional<std::set<Number>>& filter, Number number) {
  return !filter.has_value() || filter->contains(number);
}

}  // namespace

CObjectCursor::CObjectCursor(const CQen& map, CFrame frame, const Filters& filters)
    : m_frame(std::move(frame)), m_filters(filters) {
  if (map.MapData != nullptr) m_segments = map.MapData->MeshSegmentSet.get();
}

bool CObjectCursor::NextSegment() {
  while (m_segments != nullptr && m_next_segment < m_segments->GetElemCount()) {
    const CMeshSegment* segment = m_segments->GetElem(m_next_segment++);
    if (segment->LayerSet == nullptr || !Passes(m_filters.Segments, segment->MeshSegmentNo))
      continue;
    m_at.Segment = segment->MeshSegmentNo;
    m_segment_frame = m_frame.ForSegment(m_at.Segment);
    m_layers = segment->LayerSet.get();
    m_next_layer = 0;
    return true;
  }
  return false;
}

bool CObjectCursor::NextLayer() {
  do {
    while (m_layers != nullptr && m_next_layer < m_layers->GetElemCount()) {
      const CLayerData* layer = m_layers->GetElem(m_next_layer++);
      if (layer->ZIdObjSet == nullptr || !Passes(m_filters.Layers, layer->LayerNo)) continue;
      m_at.Layer = layer->LayerNo;
      m_z_id_objs = layer->ZIdObjSet.get();
      m_next_z_id_obj = 0;
      return true;
    }
  } while (NextSegment());
  return false;
}

bool CObjectCursor::NextZIdObj() {
  do {
    while (m_z_id_objs != nullptr && m_next_z_id_obj < m_z_id_objs->GetElemCount()) {
      const CZIdObj* z_id_obj = m_z_id_objs->GetElem(m_next_z_id_obj++);
      if (z_id_obj->ObjSet == nullptr || !Passes(m_filters.ZIds, z_id_obj->ZId)) continue;
      m_at.ZId = z_id_obj->ZId;
      m_objs = z_id_obj->ObjSet.get();
      m_next_obj = 0;
      return true;
    }
  } while (NextLayer());
  return false;
}

const ObjectAt* CObjectCursor::Next() {
  do {
    while (m_objs != nullptr && m_next_obj < m_objs->GetElemCount()) {
      m_at.Index = m_next_obj++;
      m_at.Object = m_objs->GetElem(m_at.Index);
      const auto kind = KindOf(*m_at.Object);
      if (!kind.has_value() || !m_filters.Passes(*kind)) continue;
      m_at.Kind = *kind;
      if (!m_filters.Box.has_value() || IsInBox()) return &m_at;
    }
  } while (NextZIdObj());
  return nullptr;
}

bool CObjectCursor::IsInBox() {
  const auto bounds = FindBounds(m_at.Kind, *m_at.Object);
  if (!bounds.has_value()) return false;
  const MapBox& box = *m_filters.Box;
  const MapBox around = m_segment_frame.At(*bounds);
  if (!box.Meets(around)) return false;
  // A point and an upright rectangle are their bounds.
  if ((m_at.Kind != ObjectKind::kLine && m_at.Kind != ObjectKind::kPolygon) || box.Holds(around))
    return true;
  const std::span<const CPoint> points = PointsOf(m_at.Kind, *m_at.Object);
  m_points.clear();
  m_points.reserve(points.size());
  for (const CPoint& point : points) m_points.push_back(m_segment_frame.At(point));
  return m_at.Kind == ObjectKind::kLine ? LineMeetsBox(m_points, box) : AreaMeetsBox(m_points, box);
}

}  // namespace qenzor
