#include <algorithm>
#include <boost/geometry/geometries/box.hpp>
#include <boost/geometry/geometries/point.hpp>
#include <boost/geometry/index/rtree.hpp>

#include "qenzor/draw/taken_places_impl.h"

namespace qenzor {

namespace {

namespace geometry = boost::geometry;

using Corner = geometry::model::point<double, 2, geometry::cs::cartesian>;
using Box = geometry::model::box<Corner>;

Box ToBox(const PageBox& box) { return Box({box.Left, box.Top}, {box.Right, box.Bottom}); }

PageBox FromBox(const Box& box) {
  return {box.min_corner().get<0>(), box.min_corner().get<1>(), box.max_corner().get<0>(),
          box.max_corner().get<1>()};
}

}  // namespace

struct CTakenPlaces::Index {
  geometry::index::rtree<Box, geometry::index::quadratic<16>> Tree;

  bool Meets(const PageBox& box) const {
    // Boxes that only touch do not meet.
    const auto covered = [&](const Box& taken) { return box.Meets(FromBox(taken)); };
    return Tree.qbegin(geometry::index::intersects(ToBox(box)) &&
                       geometry::index::satisfies(covered)) != Tree.qend();
  }
};

CTakenPlaces::CTakenPlaces() : m_index(std::make_unique<Index>()) {}
CTakenPlaces::~CTakenPlaces() = default;

bool CTakenPlaces::Take(const std::vector<PageBox>& boxes) {
  if (std::any_of(boxes.begin(), boxes.end(),
                  [&](const PageBox& box) { return m_index->Meets(box); }))
    return false;
  for (const PageBox& box : boxes) m_index->Tree.insert(ToBox(box));
  return true;
}

}  // namespace qenzor
