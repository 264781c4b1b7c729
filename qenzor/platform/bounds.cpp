#include "qenzor/platform/bounds.h"

#include <algorithm>

namespace qenzor {

#ifdef __GNUC__

namespace {

// Two points side by side. Map objects are mostly points, whose bounds are taken while they are
// read: a number at a time that was a quarter of all instructions.
using Pair = std::int32_t __attribute__((vector_size(16)));

Pair LoadPair(const CPoint& first, const CPoint& second) noexcept {
  return Pair{first.x, first.y, second.x, second.y};
}

}  // namespace

CRect BoundRectOf(std::span<const CPoint> points) noexcept {
  if (points.empty()) return {};
  Pair low = LoadPair(points.front(), points.front());
  Pair high = low;
  for (std::size_t i = points.size() % 2; i < points.size(); i += 2) {
    const Pair pair = LoadPair(points[i], points[i + 1]);
    low = pair < low ? pair : low;
    high = pair > high ? pair : high;
  }
  return {std::min(low[0], low[2]), std::min(low[1], low[3]), std::max(high[0], high[2]),
          std::max(high[1], high[3])};
}

#else

CRect BoundRectOf(std::span<const CPoint> points) noexcept {
  if (points.empty()) return {};
  const CPoint first = points.front();
  CRect rect{first.x, first.y, first.x, first.y};
  for (const CPoint& point : points)
    rect = {std::min(rect.left, point.x), std::min(rect.top, point.y),
            std::max(rect.right, point.x), std::max(rect.bottom, point.y)};
  return rect;
}

#endif

}  // namespace qenzor
