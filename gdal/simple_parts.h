#pragma once

#include <ogr_geometry.h>

#include <functional>
#include <memory>
#include <vector>

#include "qenzor/view/frame.h"

namespace qenzor::gdal {

/// A line, or a ring without its closing point.
using Path = std::vector<MapPoint>;

/// Hears of each part of a geometry.
struct PartSink {
  std::function<void(const MapPoint&)> Point;
  std::function<void(const Path&)> Line;
  std::function<void(const Path&)> Ring;
};

/// Takes a geometry apart into points, lines and rings without holes: an area with holes is divided
/// through them. False for a geometry of another kind, and where it cannot be divided.
bool TakeApart(const OGRGeometry& geometry, const PartSink& sink);

/// What of a geometry lies in the box; null where nothing does, or the cutting fails.
std::unique_ptr<OGRGeometry> CutToBox(const OGRGeometry& geometry, const MapBox& box);

/// The rectangle around a geometry.
MapBox BoxOf(const OGRGeometry& geometry);

}  // namespace qenzor::gdal
