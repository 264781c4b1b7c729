#include "gdal/map_builder.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

#include "qenzor/qen/all.h"

namespace qenzor::gdal {

namespace {

constexpr double kUnitsOfDegree = 3600000;
constexpr double kMaxCoordinate = 32767;
constexpr std::uint32_t kMaxSegments = 65536;
/// Points of one object, so that rings with their closing point keep within 16 bits with a sign.
constexpr std::size_t kMaxPoints = 32766;

/// Half a unit of the map's rectangle, in degrees: nothing smaller is kept.
constexpr double kTouch = 0.5 / kUnitsOfDegree;

MapBox Grown(const MapBox& box, double by) {
  return {box.West - by, box.South - by, box.East + by, box.North + by};
}

double HalfCell(std::int64_t span, std::uint16_t count) {
  return static_cast<double>(span) / (2.0 * count);
}

/// The segments along a span whose halves fit into 16 bits at a coefficient; 0 for too many.
std::uint16_t CellsFor(std::int64_t span, std::uint16_t coef) {
  const double count = std::ceil(static_cast<double>(span) / (2 * kMaxCoordinate * coef));
  return count <= std::numeric_limits<std::uint16_t>::max()
             ? static_cast<std::uint16_t>(std::max(1.0, count))
             : std::uint16_t{0};
}

bool AppendPoint(std::vector<CPoint>& points, const CPoint& point) {
  if (!points.empty() && points.back() == point) return false;
  points.push_back(point);
  return true;
}

/// Twice the area inside a ring, above 0 where it runs counter-clockwise.
std::int64_t TwiceArea(const std::vector<CPoint>& ring) {
  std::int64_t sum = 0;
  CPoint from = ring.back();
  for (const CPoint& to : ring) {
    sum += static_cast<std::int64_t>(from.x) * to.y - static_cast<std::int64_t>(to.x) * from.y;
    from = to;
  }
  return sum;
}

}  // namespace

std::optional<QenFileInfo> LayOut(const MapLayout& layout, const MapBox& data) {
  const MapBox& box = layout.Box.has_value() ? *layout.Box : data;
  if (!(box.West >= -360 && box.South >= -90 && box.East <= 360 && box.North <= 90)) {
    CPLError(CE_Failure, CPLE_AppDefined,
             "coordinates are not degrees: reproject with -t_srs EPSG:4326");
    return std::nullopt;
  }
  QenFileInfo info = QenFileInfo::Default();
  info.GeoCoodinate = layout.Geo;
  info.IncRect.left = static_cast<std::int32_t>(std::floor(box.West * kUnitsOfDegree));
  info.IncRect.top = static_cast<std::int32_t>(std::floor(box.South * kUnitsOfDegree));
  info.IncRect.right = std::max(static_cast<std::int32_t>(std::ceil(box.East * kUnitsOfDegree)),
                                info.IncRect.left + 1);
  info.IncRect.bottom = std::max(static_cast<std::int32_t>(std::ceil(box.North * kUnitsOfDegree)),
                                 info.IncRect.top + 1);
  const std::int64_t width = std::int64_t{info.IncRect.right} - info.IncRect.left;
  const std::int64_t height = std::int64_t{info.IncRect.bottom} - info.IncRect.top;
  if (layout.Segments.has_value()) {
    std::tie(info.SegmentNumX, info.SegmentNumY) = *layout.Segments;
  } else if (layout.Coef.has_value()) {
    info.SegmentNumX = CellsFor(width, *layout.Coef);
    info.SegmentNumY = CellsFor(height, *layout.Coef);
  }
  const double half =
      std::max(HalfCell(width, info.SegmentNumX), HalfCell(height, info.SegmentNumY));
  const double finest = std::max(1.0, std::ceil(half / kMaxCoordinate));
  const std::uint32_t segments = std::uint32_t{info.SegmentNumX} * info.SegmentNumY;
  if (segments == 0 || segments > kMaxSegments ||
      finest >
          (layout.Coef.has_value() ? *layout.Coef : std::numeric_limits<std::uint16_t>::max())) {
    CPLError(CE_Failure, CPLE_IllegalArg,
             "COEF and SEGMENTS do not fit: coordinates would exceed 16 bits, or the mesh %u "
             "segments",
             kMaxSegments);
    return std::nullopt;
  }
  info.CompCoef = layout.Coef.value_or(static_cast<std::uint16_t>(finest));
  return info;
}

CMapBuilder::CMapBuilder(const QenFileInfo& info)
    : m_map(std::make_unique<CQenEdit>()), m_frame(info) {
  static_cast<QenFileInfo&>(*m_map) = info;
  m_map->MapData = std::make_unique<CQenMapDataEdit>();
  m_map->MapData->MeshSegmentSet = std::make_unique<CMeshSegmentSetEdit>();
}

std::unique_ptr<CQenEdit> CMapBuilder::Take() { return std::move(m_map); }

MapBox CMapBuilder::CellOf(std::uint16_t column, std::uint16_t row) const {
  const MapBox all = m_frame.GetRect();
  const double width = (all.East - all.West) / m_map->SegmentNumX;
  const double height = (all.North - all.South) / m_map->SegmentNumY;
  return {all.West + width * column, all.South + height * row,
          column + 1 == m_map->SegmentNumX ? all.East : all.West + width * (column + 1),
          row + 1 == m_map->SegmentNumY ? all.North : all.South + height * (row + 1)};
}

bool CMapBuilder::Add(const OGRGeometry& geometry, const FeaturePlace& place,
                      const std::function<void(ObjectKind, CAbstractObjEdit&)>& prepare) {
  const MapBox box = BoxOf(geometry);
  const auto first = m_frame.FindSegment({box.West, box.South});
  const auto last = m_frame.FindSegment({box.East, box.North});
  if (!first.has_value() || !last.has_value()) {
    CPLError(CE_Failure, CPLE_AppDefined, "the geometry lies outside the map's rectangle");
    return false;
  }
  const std::uint16_t columns = m_map->SegmentNumX;
  // What only touches the next segment's edge need not be cut.
  const MapBox cell = CellOf(static_cast<std::uint16_t>(*first % columns),
                             static_cast<std::uint16_t>(*first / columns));
  if (*first == *last || Grown(cell, kTouch).Holds(box))
    return AddToSegment(geometry, *first, place, prepare);
  for (int row = *first / columns; row <= *last / columns; ++row)
    for (int column = *first % columns; column <= *last % columns; ++column) {
      const auto segment = static_cast<std::uint16_t>(row * columns + column);
      const std::unique_ptr<OGRGeometry> part = CutToBox(
          geometry, CellOf(static_cast<std::uint16_t>(column), static_cast<std::uint16_t>(row)));
      if (part == nullptr) {
        CPLError(CE_Failure, CPLE_AppDefined, "the geometry cannot be cut at the segments' edges");
        return false;
      }
      if (!AddToSegment(*part, segment, place, prepare)) return false;
    }
  return true;
}

bool CMapBuilder::AddToSegment(const OGRGeometry& geometry, std::uint16_t segment,
                               const FeaturePlace& place,
                               const std::function<void(ObjectKind, CAbstractObjEdit&)>& prepare) {
  const auto keep = [&](ObjectKind kind, std::unique_ptr<CAbstractObjEdit> object) {
    prepare(kind, *object);
    SetFor(segment, place).Append(std::move(object));
    ++m_added;
  };
  bool is_inside = true;
  const auto round = [&](const Path& path) {
    std::vector<CPoint> points;
    for (const MapPoint& at : path) {
      const auto point = m_frame.ToSegment(segment, at);
      is_inside = is_inside && point.has_value();
      if (point.has_value()) AppendPoint(points, *point);
    }
    return points;
  };
  PartSink sink;
  sink.Point = [&](const MapPoint& at) {
    // One on the edge of a segment belongs to that which the frame finds.
    if (m_frame.FindSegment(at) != segment) return;
    const std::vector<CPoint> points = round({at});
    const auto keep_at = [&](ObjectKind kind, auto object) {
      if (!points.empty()) object->Pt = points.front();
      keep(kind, std::move(object));
    };
    if (place.AreRasters)
      keep_at(ObjectKind::kRasterPoint, std::make_unique<CRasMMObjEdit>());
    else
      keep_at(ObjectKind::kLabel, std::make_unique<CCmbLblObjEdit>());
  };
  sink.Line = [&](const Path& path) {
    const std::vector<CPoint> points = round(path);
    if (points.size() < 2) return static_cast<void>(++m_vanished);
    for (std::size_t from = 0; from + 1 < points.size(); from += kMaxPoints - 1) {
      const std::size_t count = std::min(kMaxPoints, points.size() - from);
      auto line = std::make_unique<CLineObjEdit>();
      const auto begin = points.begin() + static_cast<std::ptrdiff_t>(from);
      line->Pt.assign(begin, begin + static_cast<std::ptrdiff_t>(count));
      keep(ObjectKind::kLine, std::move(line));
    }
  };
  sink.Ring = [&](const Path& path) {
    if (path.size() > kMaxPoints) {
      OGRLinearRing ring;
      for (const MapPoint& at : path) ring.addPoint(at.x, at.y);
      ring.closeRings();
      OGRPolygon polygon;
      polygon.addRing(&ring);
      MapBox west = BoxOf(polygon);
      MapBox east = west;
      west.East = east.West = (west.West + west.East) / 2;
      for (const MapBox& half : {west, east})
        if (const auto part = CutToBox(polygon, half))
          is_inside = is_inside && AddToSegment(*part, segment, place, prepare);
      return;
    }
    std::vector<CPoint> points = round(path);
    while (points.size() > 1 && points.front() == points.back()) points.pop_back();
    const std::int64_t area = points.size() < 3 ? 0 : TwiceArea(points);
    if (area == 0) return static_cast<void>(++m_vanished);
    if (place.AreRasters) {
      auto raster = std::make_unique<CRasLLObjEdit>();
      const auto [west, east] = std::ranges::minmax(points, {}, &CPoint::x);
      const auto [south, north] = std::ranges::minmax(points, {}, &CPoint::y);
      raster->Rect = {west.x, south.y, east.x, north.y};
      return keep(ObjectKind::kRasterRect, std::move(raster));
    }
    if (area > 0) std::ranges::reverse(points);
    points.push_back(points.front());
    auto polygon = std::make_unique<CPolyObjEdit>();
    polygon->Pt = std::move(points);
    keep(ObjectKind::kPolygon, std::move(polygon));
  };
  if (TakeApart(geometry, sink) && is_inside) return true;
  CPLError(CE_Failure, CPLE_AppDefined, "the geometry has no place in a map project (%s)",
           geometry.getGeometryName());
  return false;
}

CObjSetEdit& CMapBuilder::SetFor(std::uint16_t segment, const FeaturePlace& place) {
  CLayerSetEdit*& layers = m_segments[segment];
  if (layers == nullptr) {
    auto& added = m_map->MapData->MeshSegmentSet->Append(std::make_unique<CMeshSegmentEdit>());
    added.MeshSegmentNo = segment;
    added.LayerSet = std::make_unique<CLayerSetEdit>();
    layers = added.LayerSet.get();
  }
  CZIdObjSetEdit*& groups = m_layers[{segment, place.Layer}];
  if (groups == nullptr) {
    auto& added = layers->Append(std::make_unique<CLayerDataEdit>());
    added.LayerNo = place.Layer;
    added.ZIdObjSet = std::make_unique<CZIdObjSetEdit>();
    groups = added.ZIdObjSet.get();
  }
  CObjSetEdit*& objects = m_sets[{segment, place.Layer, place.ZId}];
  if (objects == nullptr) {
    auto& added = groups->Append(std::make_unique<CZIdObjEdit>());
    added.ZId = place.ZId;
    added.ObjSet = std::make_unique<CObjSetEdit>();
    objects = added.ObjSet.get();
  }
  return *objects;
}

}  // namespace qenzor::gdal
