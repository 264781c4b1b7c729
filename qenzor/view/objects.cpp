#include "qenzor/view/objects.h"

#include <algorithm>
#include <cmath>

#include "qenzor/qen/cmb_lbl_obj.h"
#include "qenzor/qen/line_obj.h"
#include "qenzor/qen/poly_obj.h"
#include "qenzor/qen/ras_ll_obj.h"
#include "qenzor/qen/ras_mm_obj.h"

namespace qenzor {

std::optional<ObjectKind> KindOf(const CAbstractObj& object) {
  if (class_cast<CLineObj>(&object) != nullptr) return ObjectKind::kLine;
  if (class_cast<CPolyObj>(&object) != nullptr) return ObjectKind::kPolygon;
  if (class_cast<CCmbLblObj>(&object) != nullptr) return ObjectKind::kLabel;
  if (class_cast<CRasLLObj>(&object) != nullptr) return ObjectKind::kRasterRect;
  if (class_cast<CRasMMObj>(&object) != nullptr) return ObjectKind::kRasterPoint;
  return std::nullopt;
}

std::span<const CPoint> PointsOf(ObjectKind kind, const CAbstractObj& object) {
  const auto all = [](const auto& points) { return std::span(points.data(), points.size()); };
  switch (kind) {
    case ObjectKind::kLine:
      return all(static_cast<const CLineObj&>(object).Pt);
    case ObjectKind::kPolygon:
      return all(static_cast<const CPolyObj&>(object).Pt);
    case ObjectKind::kLabel:
      return {&static_cast<const CCmbLblObj&>(object).Pt, 1};
    case ObjectKind::kRasterPoint:
      return {&static_cast<const CRasMMObj&>(object).Pt, 1};
    case ObjectKind::kRasterRect:
      break;
  }
  return {};
}

std::span<const CPoint> PointsOf(const CAbstractObj& object) {
  const std::optional<ObjectKind> kind = KindOf(object);
  return kind.has_value() ? PointsOf(*kind, object) : std::span<const CPoint>();
}

double LengthOf(std::span<const CPoint> points) {
  double length = 0;
  for (std::size_t i = 1; i < points.size(); ++i) {
    const double dx = static_cast<double>(points[i].x) - points[i - 1].x;
    const double dy = static_cast<double>(points[i].y) - points[i - 1].y;
    length += std::hypot(dx, dy);
  }
  return length;
}

std::optional<CRect> FindBounds(ObjectKind kind, const CAbstractObj& object) {
  if (kind == ObjectKind::kRasterRect) {
    const CRect& rect = static_cast<const CRasLLObj&>(object).Rect;
    return CRect{std::min(rect.left, rect.right), std::min(rect.top, rect.bottom),
                 std::max(rect.left, rect.right), std::max(rect.top, rect.bottom)};
  }
  const std::span<const CPoint> points = PointsOf(kind, object);
  if (points.empty()) return std::nullopt;
  CRect rect{points[0].x, points[0].y, points[0].x, points[0].y};
  for (const CPoint& point : points) {
    rect.left = std::min(rect.left, point.x);
    rect.right = std::max(rect.right, point.x);
    rect.top = std::min(rect.top, point.y);
    rect.bottom = std::max(rect.bottom, point.y);
  }
  return rect;
}

}  // namespace qenzor
