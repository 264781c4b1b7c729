#pragma once

#include <cstdint>
#include <iosfwd>
#include <string>
#include <vector>

#include "qenzor/platform/geometry.h"

namespace world {

/// Points in arc seconds, x to the east and y to the north of (0, 0).
using Path = std::vector<qenzor::CPoint>;

constexpr std::int32_t kHalfTurn = 180 * 3600;
constexpr std::int32_t kTurn = 2 * kHalfTurn;
constexpr std::int32_t kPole = 90 * 3600;

/// An arc by its index, or run backwards by the complement of its index.
using ArcRef = std::int64_t;
/// A ring is made of arcs, a polygon of a shell and the holes in it.
using RingArcs = std::vector<ArcRef>;
using PolygonArcs = std::vector<RingArcs>;

struct Country {
  std::uint64_t id = 0;
  std::string name;  ///< UTF-8
  std::vector<PolygonArcs> polygons;
};

struct Topology {
  std::vector<Path> arcs;
  std::vector<Country> countries;  ///< in ascending order of their ids
};

/// Reads the "countries" of a TopoJSON file. Every point goes to the nearest whole arc second; the
/// arithmetic is on whole numbers, so every machine comes to the same points. A country's id is its
/// numeric ISO code; those that have none are numbered from kFirstFreeId on in the order of their
/// names. Throws std::exception when the file is not such a topology.
Topology ReadTopology(std::istream& in);

/// numerator / denominator, which is positive, to the nearest whole number; halves go up.
std::int64_t RoundedQuotient(std::int64_t numerator, std::int64_t denominator);

}  // namespace world
