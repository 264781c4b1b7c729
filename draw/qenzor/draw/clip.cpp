#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

#include "qenzor/draw/clip_impl.h"

namespace qenzor {

void PageBox::Add(const PagePoint& p) {
  Left = std::min(Left, p.x);
  Top = std::min(Top, p.y);
  Right = std::max(Right, p.x);
  Bottom = std::max(Bottom, p.y);
}

PageBox BoundsOfPoints(std::span<const PagePoint> points) {
  constexpr double kInf = std::numeric_limits<double>::infinity();
  PageBox box{kInf, kInf, -kInf, -kInf};
  for (const PagePoint& point : points) box.Add(point);
  return box;
}

namespace {

/// Cuts at one edge: inside(p) says on which side a point is, at(a, b) where the edge is crossed.
template <class Inside, class At>
void CutAtEdge(std::vector<PagePoint>& ring, std::vector<PagePoint>& room, Inside inside, At at) {
  room.clear();
  if (ring.empty()) return;
  PagePoint last = ring.back();
  for (const PagePoint& point : ring) {
    if (inside(point) != inside(last)) room.push_back(at(last, point));
    if (inside(point)) room.push_back(point);
    last = point;
  }
  ring.swap(room);
}

PagePoint AtX(const PagePoint& a, const PagePoint& b, double x) {
  return {x, a.y + (b.y - a.y) * ((x - a.x) / (b.x - a.x))};
}

PagePoint AtY(const PagePoint& a, const PagePoint& b, double y) {
  return {a.x + (b.x - a.x) * ((y - a.y) / (b.y - a.y)), y};
}

}  // namespace

void ClipRing(std::vector<PagePoint>& ring, const PageBox& box) {
  const PageBox around = BoundsOfPoints(ring);
  if (!box.Meets(around)) {
    ring.clear();
    return;
  }
  std::vector<PagePoint> room;
  if (around.Left < box.Left)
    CutAtEdge(
        ring, room, [&](const PagePoint& p) { return p.x >= box.Left; },
        [&](const auto& a, const auto& b) { return AtX(a, b, box.Left); });
  if (around.Right > box.Right)
    CutAtEdge(
        ring, room, [&](const PagePoint& p) { return p.x <= box.Right; },
        [&](const auto& a, const auto& b) { return AtX(a, b, box.Right); });
  if (around.Top < box.Top)
    CutAtEdge(
        ring, room, [&](const PagePoint& p) { return p.y >= box.Top; },
        [&](const auto& a, const auto& b) { return AtY(a, b, box.Top); });
  if (around.Bottom > box.Bottom)
    CutAtEdge(
        ring, room, [&](const PagePoint& p) { return p.y <= box.Bottom; },
        [&](const auto& a, const auto& b) { return AtY(a, b, box.Bottom); });
}

void ClipLine(std::span<const PagePoint> line, const PageBox& box,
              const std::function<void(std::span<const PagePoint>, double)>& take) {
  std::vector<PagePoint> run;
  double length = 0;  // of the line so far
  double before = 0;  // the run at hand
  const auto end_run = [&] {
    if (run.size() > 1) take(run, before);
    run.clear();
  };
  for (std::size_t i = 1; i < line.size(); ++i) {
    const PagePoint a = line[i - 1];
    const PagePoint b = line[i];
    const double dx = b.x - a.x;
    const double dy = b.y - a.y;
    // The part from one share of the way to another lies in the box.
    double from = 0;
    double to = 1;
    const auto cut = [&](double step, double room) {
      if (step == 0) {
        if (room < 0) to = -1;
      } else if (step < 0) {
        from = std::max(from, room / step);
      } else {
        to = std::min(to, room / step);
      }
    };
    cut(-dx, a.x - box.Left);
    cut(dx, box.Right - a.x);
    cut(-dy, a.y - box.Top);
    cut(dy, box.Bottom - a.y);
    const double step = std::hypot(dx, dy);
    if (from > to) {
      end_run();
    } else {
      if (from > 0) end_run();
      if (run.empty()) {
        before = length + step * from;
        run.push_back({a.x + dx * from, a.y + dy * from});
      }
      run.push_back(to < 1 ? PagePoint{a.x + dx * to, a.y + dy * to} : b);
      if (to < 1) end_run();
    }
    length += step;
  }
  end_run();
}

double SignedArea(std::span<const PagePoint> ring) {
  if (ring.empty()) return 0;
  double area = 0;
  PagePoint last = ring.back();
  for (const PagePoint& point : ring) {
    area +=
        (last.x - ring[0].x) * (point.y - ring[0].y) - (point.x - ring[0].x) * (last.y - ring[0].y);
    last = point;
  }
  return area;
}

void DropClosePoints(std::vector<PagePoint>& points, double distance) {
  if (points.size() < 3) return;
  std::size_t kept = 1;
  for (std::size_t i = 1; i + 1 < points.size(); ++i)
    if (std::abs(points[i].x - points[kept - 1].x) >= distance ||
        std::abs(points[i].y - points[kept - 1].y) >= distance)
      points[kept++] = points[i];
  points[kept++] = points.back();
  points.resize(kept);
}

}  // namespace qenzor
