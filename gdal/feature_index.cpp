#include "gdal/feature_index.h"

#include <algorithm>
#include <map>
#include <memory>
#include <utility>

#include "qenzor/qen/all.h"

namespace qenzor::gdal {

namespace {

constexpr std::size_t kFewestOfLine = 2;
constexpr std::size_t kFewestOfRing = 3;

void AddPoint(CRect& rect, const CPoint& point) {
  rect.left = std::min(rect.left, point.x);
  rect.right = std::max(rect.right, point.x);
  rect.top = std::min(rect.top, point.y);
  rect.bottom = std::max(rect.bottom, point.y);
}

template <class Class>
CRect ReadBounds(const CAbstractObj& object) {
  const auto& bounded = static_cast<const Class&>(object);
  CRect rect = bounded.GetBoundRect();
  // What a ring's rectangle leaves out.
  AddPoint(rect, bounded.Pt[bounded.Pt.size() - 1]);
  return rect;
}

std::optional<CRect> BoundsOf(ObjectKind kind, const CAbstractObj& object, bool trusts_bounds) {
  if (!HasGeometry(kind, object)) return std::nullopt;
  if (trusts_bounds && kind == ObjectKind::kLine) return ReadBounds<CLineObj>(object);
  if (trusts_bounds && kind == ObjectKind::kPolygon) return ReadBounds<CPolyObj>(object);
  return FindBounds(kind, object);
}

/// What is in a slot, or nothing.
template <class Set>
const Set& ElemsOf(const std::unique_ptr<Set>& slot) {
  static const Set s_none;
  return slot == nullptr ? s_none : *slot;
}

}  // namespace

std::span<const CPoint> OpenRing(std::span<const CPoint> points) {
  while (points.size() > 1 && points.front() == points.back())
    points = points.first(points.size() - 1);
  return points;
}

bool HasGeometry(ObjectKind kind, const CAbstractObj& object) {
  const std::span<const CPoint> points = PointsOf(kind, object);
  if (kind == ObjectKind::kLine) return points.size() >= kFewestOfLine;
  if (kind == ObjectKind::kPolygon) return OpenRing(points).size() >= kFewestOfRing;
  return true;
}

void CFeatureIndex::Add(std::uint16_t segment, const CZIdObj& group, std::uint32_t object,
                        const std::optional<CRect>& bounds) {
  const bool is_new_part = m_parts.empty() || m_parts.back().Segment != segment;
  if (is_new_part)
    m_parts.push_back({segment, static_cast<std::uint32_t>(m_runs.size()), m_count, std::nullopt});
  if (is_new_part || m_runs.back().Group != &group || m_next_object != object)
    m_runs.push_back({&group, m_count, object});
  m_next_object = object + 1;
  ++m_count;
  if (!bounds.has_value()) return;
  std::optional<CRect>& all = m_parts.back().Bounds;
  if (!all.has_value()) {
    all = bounds;
  } else {
    AddPoint(*all, {bounds->left, bounds->top});
    AddPoint(*all, {bounds->right, bounds->bottom});
  }
}

ObjectAt CFeatureIndex::At(std::uint32_t feature) const {
  const auto run = std::prev(std::upper_bound(
      m_runs.begin(), m_runs.end(), feature,
      [](std::uint32_t wanted, const Run& candidate) { return wanted < candidate.FirstFeature; }));
  const std::uint32_t index = run->FirstObject + (feature - run->FirstFeature);
  return {m_parts[PartOf(feature)].Segment,  m_layer, run->Group->ZId, index, m_kind,
          run->Group->ObjSet->GetElem(index)};
}

std::size_t CFeatureIndex::PartOf(std::uint32_t feature) const {
  const auto behind = std::upper_bound(
      m_parts.begin(), m_parts.end(), feature,
      [](std::uint32_t wanted, const Part& candidate) { return wanted < candidate.FirstFeature; });
  return static_cast<std::size_t>(behind - m_parts.begin()) - 1;
}

std::vector<CFeatureIndex> IndexFeatures(const CQen& map, bool trusts_bounds) {
  std::map<std::pair<std::uint16_t, ObjectKind>, CFeatureIndex> indices;
  // One lookup serves many neighbours.
  CFeatureIndex* index = nullptr;
  const auto add_group = [&](std::uint16_t segment, std::uint16_t layer, const CZIdObj& group) {
    for (std::uint32_t i = 0; i < group.ObjSet->GetElemCount(); ++i) {
      CAbstractObj& object = *group.ObjSet->GetElem(i);
      const auto kind = KindOf(object);
      if (!kind.has_value()) continue;
      if (index == nullptr || index->GetLayer() != layer || index->GetKind() != *kind)
        index = &indices.try_emplace({layer, *kind}, layer, *kind).first->second;
      index->Add(segment, group, i, BoundsOf(*kind, object, trusts_bounds));
    }
  };
  for (const CMeshSegment* segment : ElemsOf(map.MapData->MeshSegmentSet))
    for (const CLayerData* layer : ElemsOf(segment->LayerSet))
      for (const CZIdObj* group : ElemsOf(layer->ZIdObjSet))
        if (group->ObjSet != nullptr) add_group(segment->MeshSegmentNo, layer->LayerNo, *group);
  std::vector<CFeatureIndex> ordered;
  ordered.reserve(indices.size());
  for (auto& [key, one] : indices) ordered.push_back(std::move(one));
  return ordered;
}

}  // namespace qenzor::gdal
