#include <cmath>

#include "qenzor/check/figures_impl.h"
#include "qenzor/qen/cmb_lbl_obj.h"
#include "qenzor/qen/layer_data.h"
#include "qenzor/qen/line_obj.h"
#include "qenzor/qen/mesh_segment.h"
#include "qenzor/qen/poly_obj.h"
#include "qenzor/qen/ras_mm_obj.h"
#include "qenzor/qen/z_id_obj.h"

namespace qenzor::check {

namespace {

/// Coordinates are whole numbers, edges of segments need not be: what lies on one is off by half a
/// unit at most, and by what doubles lose.
constexpr double kRounding = 0.501;

bool IsOfPoints(const PathNode& node) {
  return node.Id == CPolyObj::kChunkId || node.Id == CLineObj::kChunkId ||
         node.Id == CCmbLblObj::kChunkId || node.Id == CRasMMObj::kChunkId;
}

}  // namespace

CCell::CCell(const CFrame& frame, std::uint16_t segment)
    : m_frame(frame.ForSegment(segment)), m_box(frame.GetCell(segment)), m_map(frame.GetRect()) {
  const MapPoint origin = m_frame.At(CPoint{0, 0});
  const MapPoint unit = m_frame.At(CPoint{1, 1});
  m_slack = {kRounding * (unit.x - origin.x), kRounding * (unit.y - origin.y)};
  if (m_box.West > m_map.West) m_inner_edges |= kWest;
  if (m_box.South > m_map.South) m_inner_edges |= kSouth;
  if (m_box.East < m_map.East) m_inner_edges |= kEast;
  if (m_box.North < m_map.North) m_inner_edges |= kNorth;
}

MapPoint CCell::At(const CPoint& point) const {
  MapPoint place = m_frame.At(point);
  const unsigned edges = EdgesAt(place);
  if ((edges & (kWest | kEast)) != 0) place.x = (edges & kWest) != 0 ? m_box.West : m_box.East;
  if ((edges & (kSouth | kNorth)) != 0) place.y = (edges & kSouth) != 0 ? m_box.South : m_box.North;
  return place;
}

bool CCell::Holds(const CPoint& point) const { return IsInside(m_box, m_frame.At(point)); }

bool CCell::IsOnMap(const CPoint& point) const { return IsInside(m_map, m_frame.At(point)); }

unsigned CCell::InnerEdgesAt(const CPoint& point) const {
  return EdgesAt(m_frame.At(point)) & m_inner_edges;
}

double CCell::GetEdge(CellEdge edge) const {
  switch (edge) {
    case kWest:
      return m_box.West;
    case kSouth:
      return m_box.South;
    case kEast:
      return m_box.East;
    default:
      return m_box.North;
  }
}

/// None of a point that is not in the segment.
unsigned CCell::EdgesAt(const MapPoint& place) const {
  if (!IsInside(m_box, place)) return 0;
  unsigned edges = 0;
  if (place.x <= m_box.West + m_slack.x) edges |= kWest;
  if (place.y <= m_box.South + m_slack.y) edges |= kSouth;
  if (place.x >= m_box.East - m_slack.x) edges |= kEast;
  if (place.y >= m_box.North - m_slack.y) edges |= kNorth;
  return edges;
}

bool CCell::IsInside(const MapBox& box, const MapPoint& place) const {
  return MapBox{box.West - m_slack.x, box.South - m_slack.y, box.East + m_slack.x,
                box.North + m_slack.y}
      .Holds(place);
}

bool Figure::IsArea() const { return Node.Id == CPolyObj::kChunkId; }
bool Figure::IsLine() const { return Node.Id == CLineObj::kChunkId; }

void CFigureListener::Open(const PathNode& node, const ClassSchema& schema, std::uint64_t offset) {
  // What is not told counts as 0.
  if (schema.Id == CMeshSegment::kChunkId) EnterSegment(0);
  if (schema.Id == CLayerData::kChunkId) m_layer = 0;
  if (schema.Id == CZIdObj::kChunkId) m_z_id = 0;
  if (!IsOfPoints(node)) return;
  m_opened = offset;
  m_points.clear();
  m_offsets.clear();
}

void CFigureListener::Close(const PathNode& node, const ClassSchema& /*schema*/,
                            std::uint64_t /*kept*/) {
  if (!IsOfPoints(node)) return;
  m_offsets.push_back(m_opened);
  Take({node, m_points, m_offsets, m_cell.has_value() ? &*m_cell : nullptr, m_layer, m_z_id});
}

void CFigureListener::Integer(const PathNode& /*node*/, const FieldSchema& field,
                              std::uint64_t value, std::uint64_t /*offset*/) {
  switch (field.Role) {
    case Role::kSegmentNumX:
      m_info.SegmentNumX = static_cast<std::uint16_t>(value);
      return;
    case Role::kSegmentNumY:
      m_info.SegmentNumY = static_cast<std::uint16_t>(value);
      return;
    case Role::kCompCoef:
      m_info.CompCoef = static_cast<std::uint16_t>(value);
      return;
    case Role::kMeshSegmentNo:
      return EnterSegment(value);
    case Role::kLayerNo:
      m_layer = value;
      return;
    case Role::kZId:
      m_z_id = value;
      return;
    default:
      return;
  }
}

void CFigureListener::Rect(const PathNode& /*node*/, const FieldSchema& field, const CRect& rect,
                           std::uint64_t /*offset*/) {
  if (field.Role == Role::kIncRect) m_info.IncRect = rect;
}

void CFigureListener::Point(const PathNode& node, const FieldSchema& /*field*/, const CPoint& point,
                            std::uint64_t offset) {
  if (!IsOfPoints(node)) return;
  m_points.push_back(point);
  m_offsets.push_back(offset);
}

void CFigureListener::EnterSegment(std::uint64_t number) {
  if (!m_frame.has_value()) m_frame.emplace(m_info, m_options);
  if (!m_frame->IsPlain()) m_cell.emplace(*m_frame, static_cast<std::uint16_t>(number));
}

}  // namespace qenzor::check
