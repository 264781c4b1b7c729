#include "qenzor/view/box_test.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

namespace qenzor {

namespace {

/// A sum of doubles without rounding: parts of growing size that do not overlap.
class CExactSum {
 public:
  void Add(double value) {
    std::size_t kept = 0;
    for (std::size_t i = 0; i < m_count; ++i) {
      const double sum = value + m_parts[i];
      const double virtual_part = sum - value;
      const double error = (value - (sum - virtual_part)) + (m_parts[i] - virtual_part);
      if (error != 0) m_parts[kept++] = error;
      value = sum;
    }
    if (value != 0) m_parts[kept++] = value;
    m_count = kept;
  }
  void AddProduct(double a, double b) {
    const double product = a * b;
    Add(product);
    Add(std::fma(a, b, -product));
  }
  int Sign() const {
    if (m_count == 0) return 0;
    return m_parts[m_count - 1] > 0 ? 1 : -1;
  }

 private:
  std::array<double, 16> m_parts{};
  std::size_t m_count = 0;
};

/// On which side of the line from a to b the point c lies: 1 left, -1 right, 0 on it.
int SideOf(const MapPoint& a, const MapPoint& b, const MapPoint& c) {
  const double left = (b.x - a.x) * (c.y - a.y);
  const double right = (b.y - a.y) * (c.x - a.x);
  const double difference = left - right;
  // Beyond this many roundings of what was added, the sign is certain.
  constexpr double kBound = 4.0 * 0x1p-53;
  const double doubt = kBound * (std::abs(left) + std::abs(right));
  if (difference > doubt) return 1;
  if (-difference > doubt) return -1;
  // a x b + b x c + c x a, without rounding
  CExactSum sum;
  sum.AddProduct(a.x, b.y);
  sum.AddProduct(-a.y, b.x);
  sum.AddProduct(b.x, c.y);
  sum.AddProduct(-b.y, c.x);
  sum.AddProduct(c.x, a.y);
  sum.AddProduct(-c.y, a.x);
  return sum.Sign();
}

bool EdgeMeetsBox(const MapPoint& a, const MapPoint& b, const MapBox& box) {
  const MapBox around{std::min(a.x, b.x), std::min(a.y, b.y), std::max(a.x, b.x),
                      std::max(a.y, b.y)};
  if (!box.Meets(around)) return false;
  if (box.Holds(a) || box.Holds(b)) return true;
  // Their extents meet east-west and north-south: apart are they only if the box lies on one side.
  const int side = SideOf(a, b, {box.West, box.South});
  return side == 0 || side != SideOf(a, b, {box.East, box.South}) ||
         side != SideOf(a, b, {box.East, box.North}) || side != SideOf(a, b, {box.West, box.North});
}

bool IsInside(std::span<const MapPoint> ring, const MapPoint& point) {
  bool inside = false;
  MapPoint a = ring.back();
  for (const MapPoint& b : ring) {
    const bool up = a.y <= point.y && point.y < b.y;
    const bool down = b.y <= point.y && point.y < a.y;
    if ((up && SideOf(a, b, point) > 0) || (down && SideOf(a, b, point) < 0)) inside = !inside;
    a = b;
  }
  return inside;
}

}  // namespace

bool LineMeetsBox(std::span<const MapPoint> line, const MapBox& box) {
  if (line.empty()) return false;
  if (box.Holds(line.front())) return true;
  for (std::size_t i = 1; i < line.size(); ++i)
    if (EdgeMeetsBox(line[i - 1], line[i], box)) return true;
  return false;
}

bool AreaMeetsBox(std::span<const MapPoint> ring, const MapBox& box) {
  if (ring.empty()) return false;
  // Where no edge meets the box, all of it lies inside or all of it outside.
  return LineMeetsBox(ring, box) || EdgeMeetsBox(ring.back(), ring.front(), box) ||
         IsInside(ring, {box.West, box.South});
}

}  // namespace qenzor
