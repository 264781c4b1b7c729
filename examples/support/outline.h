#pragma once

#include <optional>

#include "examples/support/topology.h"

namespace world {

/// A polygon on the unrolled globe: where it crosses the antimeridian x runs on past a half turn
/// instead of jumping. Every ring is closed.
struct Outline {
  Path shell;
  std::vector<Path> holes;
};

/// Moves every point by whole turns to where it is nearest to the one before it.
void Unroll(Path& path);

/// The outline of a polygon. A shell that runs around the globe is closed over the pole on its
/// side. No outline if the shell is degenerate; holes that are, or that run around the globe (the
/// edge of the data at a pole), are left out.
std::optional<Outline> OutlineOf(const Topology& topology, const PolygonArcs& polygon);

/// Twice the area of a closed ring, in square arc seconds; positive when it runs anticlockwise.
std::int64_t TwiceArea(const Path& ring);

/// A point well inside a closed ring, for its label: the middle of its widest place among a few
/// parallels.
qenzor::CPoint LabelPoint(const Path& ring);

}  // namespace world
