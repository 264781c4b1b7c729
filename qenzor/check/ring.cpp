// The order of the sweep is our own, since Boost.Geometry's search for self-intersections compares
// all pairs of long edges with overlapping boxes; what lies on which side of what, and areas, are
// its business.

#include <algorithm>
#include <boost/geometry/algorithms/area.hpp>
#include <boost/geometry/geometries/point_xy.hpp>
#include <boost/geometry/geometries/ring.hpp>
#include <boost/geometry/strategies/cartesian/area.hpp>
#include <boost/geometry/strategies/cartesian/side_by_triangle.hpp>
#include <set>
#include <tuple>
#include <vector>

#include "qenzor/check/ring_impl.h"

namespace qenzor::check {

namespace {

namespace bg = boost::geometry;

using Point = bg::model::d2::point_xy<double>;  // exact for coordinates of 16 bits

/// Sweeps from west to east, and from south to north where x is equal.
bool IsBefore(const Point& a, const Point& b) {
  return std::tuple(a.x(), a.y()) < std::tuple(b.x(), b.y());
}
bool IsSame(const Point& a, const Point& b) { return a.x() == b.x() && a.y() == b.y(); }

/// Above 0 where the place lies to the left of the way from one point to the other.
int SideOf(const Point& from, const Point& to, const Point& place) {
  return bg::strategy::side::side_by_triangle<>::apply(from, to, place);
}

/// An edge as it is swept over. The number is that of the vertex where it begins in the ring.
struct Edge {
  Point Low;
  Point High;
  std::size_t Number;

  int SideOf(const Point& place) const { return check::SideOf(Low, High, place); }
};

/// From south to north where the sweep stands. That is the same all the time that two edges are
/// swept over together, as long as no crossing has been passed.
struct IsBelow {
  using is_transparent = void;

  bool operator()(const Edge& a, const Edge& b) const {
    const bool a_is_first = IsBefore(a.Low, b.Low);
    const Edge& first = a_is_first ? a : b;
    const Edge& second = a_is_first ? b : a;
    int side = first.SideOf(second.Low);
    if (side == 0) side = first.SideOf(second.High);
    if (side == 0) return a.Number < b.Number;
    return (side > 0) == a_is_first;
  }
  bool operator()(const Edge& edge, const Point& place) const { return edge.SideOf(place) > 0; }
  bool operator()(const Point& place, const Edge& edge) const { return edge.SideOf(place) < 0; }
};

class CRingSweep {
 public:
  explicit CRingSweep(std::span<const CPoint> points) {
    for (std::size_t i = 0; i < points.size(); ++i)
      if (i == 0 || points[i] != points[i - 1]) {
        m_vertices.emplace_back(points[i].x, points[i].y);
        m_positions.push_back(i);
      }
    while (m_vertices.size() > 1 && IsSame(m_vertices.front(), m_vertices.back())) {
      m_vertices.pop_back();
      m_positions.pop_back();
    }
  }

  std::optional<RingFlaw> Run() {
    if (m_vertices.size() < 3) return std::nullopt;
    std::vector<std::size_t> order(m_vertices.size());
    for (std::size_t i = 0; i < order.size(); ++i) order[i] = i;
    std::ranges::sort(order, IsBefore, [this](std::size_t i) { return m_vertices[i]; });
    m_places.resize(m_vertices.size(), m_status.end());
    for (auto begin = order.begin(); begin != order.end() && !m_flaw.has_value();) {
      const auto end = std::find_if(begin, order.end(), [&](std::size_t i) {
        return !IsSame(m_vertices[i], m_vertices[*begin]);
      });
      TakePlace({begin, end});
      begin = end;
    }
    if (!m_flaw.has_value()) return std::nullopt;
    return RingFlaw{m_flaw->Kind, m_positions[m_flaw->First], m_positions[m_flaw->Second]};
  }

 private:
  using Status = std::set<Edge, IsBelow>;

  /// A half of a way through a place: where it leads to, and the vertex or edge that it is of.
  struct Arm {
    Point To;
    std::size_t Way;
  };

  std::size_t Next(std::size_t vertex) const {
    return vertex + 1 == m_vertices.size() ? 0 : vertex + 1;
  }
  std::size_t Previous(std::size_t vertex) const {
    return (vertex == 0 ? m_vertices.size() : vertex) - 1;
  }
  Edge EdgeFrom(std::size_t vertex) const {
    const Point& a = m_vertices[vertex];
    const Point& b = m_vertices[Next(vertex)];
    return IsBefore(a, b) ? Edge{a, b, vertex} : Edge{b, a, vertex};
  }

  void Tell(RingFlaw::How kind, std::size_t a, std::size_t b) {
    if (!m_flaw.has_value()) m_flaw = {kind, std::min(a, b), std::max(a, b)};
  }

  /// Goes on past all vertices at one place.
  void TakePlace(std::span<const std::size_t> vertices) {
    const auto for_each_edge = [&](auto&& f) {
      for (const std::size_t vertex : vertices) {
        f(vertex, m_vertices[Next(vertex)]);
        f(Previous(vertex), m_vertices[Previous(vertex)]);
      }
    };
    const Point& place = m_vertices[vertices.front()];
    for_each_edge([&](std::size_t edge, const Point& other) {
      if (IsBefore(other, place)) Leave(edge);
    });
    const auto through = m_status.find(place);
    const bool is_passed = through != m_status.end();
    for_each_edge([&](std::size_t edge, const Point& other) {
      if (IsBefore(place, other)) Enter(edge);
    });
    if (m_flaw.has_value() || (vertices.size() < 2 && !is_passed)) return;
    std::vector<Arm> arms;
    for (const std::size_t vertex : vertices) {
      arms.push_back({m_vertices[Previous(vertex)], vertex});
      arms.push_back({m_vertices[Next(vertex)], vertex});
    }
    if (is_passed) {
      arms.push_back({through->Low, through->Number});
      arms.push_back({through->High, through->Number});
    }
    FindPassage(place, arms);
  }

  void Leave(std::size_t edge) {
    const auto after = m_status.erase(m_places[edge]);
    if (after != m_status.end() && after != m_status.begin()) Compare(*std::prev(after), *after);
  }

  void Enter(std::size_t edge) {
    const auto at = m_status.insert(EdgeFrom(edge)).first;
    m_places[edge] = at;
    if (at != m_status.begin()) Compare(*std::prev(at), *at);
    if (const auto after = std::next(at); after != m_status.end()) Compare(*at, *after);
  }

  void Compare(const Edge& a, const Edge& b) {
    const int low = a.SideOf(b.Low);
    const int high = a.SideOf(b.High);
    if (low == 0 && high == 0) {
      if (IsBefore(std::max(a.Low, b.Low, IsBefore), std::min(a.High, b.High, IsBefore)))
        Tell(RingFlaw::How::kOverlap, a.Number, b.Number);
    } else if (low * high < 0 && b.SideOf(a.Low) * b.SideOf(a.High) < 0) {
      Tell(RingFlaw::How::kCrossing, a.Number, b.Number);
    }
  }

  /// No two arms lead in one direction here. Ways that do not pass through each other close like
  /// brackets when one goes round.
  void FindPassage(const Point& place, std::vector<Arm>& arms) {
    const auto is_behind = [&](const Arm& arm) { return IsBefore(arm.To, place); };
    std::ranges::sort(arms, [&](const Arm& a, const Arm& b) {
      if (is_behind(a) != is_behind(b)) return is_behind(b);
      return SideOf(place, a.To, b.To) > 0;
    });
    std::vector<std::size_t> open;
    for (const Arm& arm : arms) {
      if (!open.empty() && open.back() == arm.Way)
        open.pop_back();
      else
        open.push_back(arm.Way);
    }
    if (!open.empty()) Tell(RingFlaw::How::kPassage, open[0], open[1]);
  }

  std::vector<Point> m_vertices;         ///< the first is not repeated at the end
  std::vector<std::size_t> m_positions;  ///< of the vertices among the points given
  Status m_status;                       ///< the edges that the sweep stands on
  std::vector<Status::iterator> m_places;
  std::optional<RingFlaw> m_flaw;
};

}  // namespace

std::optional<RingFlaw> FindRingFlaw(std::span<const CPoint> points) {
  return CRingSweep(points).Run();
}

bool IsCounterClockwise(std::span<const CPoint> points) {
  constexpr bool kClockwise = true;
  constexpr bool kClosed = false;  // the edge from the last point to the first is always added
  bg::model::ring<Point, kClockwise, kClosed> ring;
  for (const CPoint& point : points) ring.emplace_back(point.x, point.y);
  return bg::area(ring) < 0;
}

}  // namespace qenzor::check
