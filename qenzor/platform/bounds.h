#pragma once

#include <span>

#include "qenzor/platform/export.h"
#include "qenzor/platform/geometry.h"

namespace qenzor {

/// The smallest rectangle around the points; all 0 when there are none.
QENZOR_EXPORT CRect BoundRectOf(std::span<const CPoint> points) noexcept;

}  // namespace qenzor
