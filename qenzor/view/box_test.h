#pragma once

#include <span>

#include "qenzor/platform/export.h"
#include "qenzor/view/frame.h"

namespace qenzor {

/// Whether a line has a point in common with the box, edges included. The answer is right for the
/// doubles given, however close the two come. Without points: false.
QENZOR_EXPORT bool LineMeetsBox(std::span<const MapPoint> line, const MapBox& box);

/// The same for the area inside a ring by the even-odd rule, and for its edge. The ring closes
/// where it began, whether or not the last point repeats the first.
QENZOR_EXPORT bool AreaMeetsBox(std::span<const MapPoint> ring, const MapBox& box);

}  // namespace qenzor
