#pragma once

#include "examples/support/outline.h"

namespace world {

/// The mesh: segments of 15 degrees, 24 across and 12 up, numbered from the south-west corner of
/// the map, eastwards first. A segment's own coordinates are arc seconds from its middle, -27,000
/// to 27,000, so they fit into 16 bits.
constexpr std::int32_t kSegmentSize = 15 * 3600;
constexpr std::uint16_t kSegmentsAcross = kTurn / kSegmentSize;
constexpr std::uint16_t kSegmentsUp = 2 * kPole / kSegmentSize;

/// A piece of a path in one segment, in the segment's own coordinates.
struct Piece {
  std::uint16_t segment = 0;
  Path path;
};

Piece PieceAt(qenzor::CPoint point);

/// Cuts an unrolled line at the edges of the segments. A stretch along an edge belongs to the
/// segment north or east of it; one along the antimeridian is an edge of the data and left out.
std::vector<Piece> CutLine(const Path& line);

/// Cuts a polygon at the edges of the segments. The pieces are closed clockwise rings without
/// holes: a piece around a hole is cut once more, through the hole. Ordered by segment, and the
/// same on every machine.
std::vector<Piece> CutPolygon(const Outline& outline);

/// The path with a point more wherever it crosses an edge of a segment. A crossing depends only on
/// the edge that is cut, not on its direction, so neighbours stay neighbours.
Path SplitAtMesh(const Path& path);

}  // namespace world
