#include "gdal/simple_parts.h"

#include <memory>
#include <utility>

namespace qenzor::gdal {

namespace {

Path PathOf(const OGRSimpleCurve& curve) {
  Path path;
  path.reserve(static_cast<std::size_t>(curve.getNumPoints()));
  for (int i = 0; i < curve.getNumPoints(); ++i) path.push_back({curve.getX(i), curve.getY(i)});
  return path;
}

/// Cuts through the middle of a hole, so that neither half has it.
bool DivideThroughHole(const OGRPolygon& polygon, const PartSink& sink) {
  const MapBox all = BoxOf(polygon);
  const MapBox hole = BoxOf(*polygon.getInteriorRing(0));
  const double middle = (hole.West + hole.East) / 2;
  if (!(all.West < middle && middle < all.East)) return false;
  for (const MapBox& half : {MapBox{all.West, all.South, middle, all.North},
                             MapBox{middle, all.South, all.East, all.North}}) {
    const std::unique_ptr<OGRGeometry> part = CutToBox(polygon, half);
    if (part == nullptr || !TakeApart(*part, sink)) return false;
  }
  return true;
}

}  // namespace

MapBox BoxOf(const OGRGeometry& geometry) {
  OGREnvelope envelope;
  geometry.getEnvelope(&envelope);
  return {envelope.MinX, envelope.MinY, envelope.MaxX, envelope.MaxY};
}

std::unique_ptr<OGRGeometry> CutToBox(const OGRGeometry& geometry, const MapBox& box) {
  OGRLinearRing ring;
  ring.addPoint(box.West, box.South);
  ring.addPoint(box.West, box.North);
  ring.addPoint(box.East, box.North);
  ring.addPoint(box.East, box.South);
  ring.addPoint(box.West, box.South);
  OGRPolygon cell;
  cell.addRing(&ring);
  if (geometry.IsValid() != FALSE)
    return std::unique_ptr<OGRGeometry>(geometry.Intersection(&cell));
  // An area that crosses itself, by what GEOS takes it for.
  const std::unique_ptr<OGRGeometry> valid(geometry.MakeValid());
  return valid == nullptr ? nullptr : std::unique_ptr<OGRGeometry>(valid->Intersection(&cell));
}

bool TakeApart(const OGRGeometry& geometry, const PartSink& sink) {
  if (geometry.IsEmpty()) return true;
  switch (wkbFlatten(geometry.getGeometryType())) {
    case wkbPoint:
      sink.Point({geometry.toPoint()->getX(), geometry.toPoint()->getY()});
      return true;
    case wkbLineString:
      sink.Line(PathOf(*geometry.toLineString()));
      return true;
    case wkbPolygon: {
      const OGRPolygon& polygon = *geometry.toPolygon();
      if (polygon.getNumInteriorRings() > 0) return DivideThroughHole(polygon, sink);
      Path ring = PathOf(*polygon.getExteriorRing());
      while (ring.size() > 1 && ring.front() == ring.back()) ring.pop_back();
      sink.Ring(ring);
      return true;
    }
    case wkbMultiPoint:
    case wkbMultiLineString:
    case wkbMultiPolygon:
    case wkbGeometryCollection: {
      for (const OGRGeometry* part : *geometry.toGeometryCollection())
        if (!TakeApart(*part, sink)) return false;
      return true;
    }
    default: {
      // Curves become lines, as fine as GDAL makes them.
      if (!geometry.hasCurveGeometry()) return false;
      const std::unique_ptr<OGRGeometry> linear(geometry.getLinearGeometry());
      return linear != nullptr && TakeApart(*linear, sink);
    }
  }
}

}  // namespace qenzor::gdal
