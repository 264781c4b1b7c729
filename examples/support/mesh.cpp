#include "examples/support/mesh.h"

#include <algorithm>
#include <boost/geometry.hpp>
#include <boost/geometry/geometries/geometries.hpp>
#include <boost/geometry/geometries/point_xy.hpp>
#include <cmath>
#include <iterator>
#include <tuple>

namespace world {
namespace {

namespace bg = boost::geometry;
using qenzor::CPoint;

// Whole arc seconds, and products of two of them, are exact in a double.
using FlatPoint = bg::model::d2::point_xy<double>;
using FlatPolygon = bg::model::polygon<FlatPoint>;
using FlatBox = bg::model::box<FlatPoint>;

std::int32_t FloorQuotient(std::int32_t numerator, std::int32_t denominator) {
  return numerator / denominator - (numerator % denominator < 0 ? 1 : 0);
}

/// Parallel lines where `along` is offset plus a multiple of step.
struct Lines {
  std::int32_t CPoint::*along;
  std::int32_t CPoint::*across;
  std::int32_t step;
  std::int32_t offset;
};

constexpr Lines kMeridians{&CPoint::x, &CPoint::y, kSegmentSize, 0};
constexpr Lines kParallels{&CPoint::y, &CPoint::x, kSegmentSize, 0};

CPoint CrossingAt(std::int32_t line, const CPoint& a, const CPoint& b, const Lines& lines) {
  const bool rising = a.*lines.along < b.*lines.along;
  const CPoint& low = rising ? a : b;
  const CPoint& high = rising ? b : a;
  const std::int64_t run = std::int64_t{high.*lines.across} - low.*lines.across;
  CPoint crossing;
  crossing.*lines.along = line;
  crossing.*lines.across = static_cast<std::int32_t>(
      low.*lines.across + RoundedQuotient(run * (line - low.*lines.along),
                                          std::int64_t{high.*lines.along} - low.*lines.along));
  return crossing;
}

Path SplitAt(const Path& path, const Lines& lines) {
  Path result;
  for (const CPoint& point : path) {
    if (!result.empty()) {
      const CPoint last = result.back();
      const std::int32_t from = last.*lines.along - lines.offset;
      const std::int32_t to = point.*lines.along - lines.offset;
      // Numbers of the lines strictly between the two points.
      const std::int32_t first = FloorQuotient(std::min(from, to), lines.step) + 1;
      const std::int32_t end = -FloorQuotient(-std::max(from, to), lines.step);
      for (std::int32_t i = first; i < end; ++i) {
        const std::int32_t line = from < to ? i : end - 1 - (i - first);
        result.push_back(CrossingAt(line * lines.step + lines.offset, last, point, lines));
      }
    }
    result.push_back(point);
  }
  result.erase(std::unique(result.begin(), result.end()), result.end());
  return result;
}

/// A segment on the unrolled globe.
struct Cell {
  std::int32_t column;
  std::int32_t row;

  std::uint16_t Number() const {
    const std::int32_t x = column + kSegmentsAcross / 2;
    const std::int32_t across = x - FloorQuotient(x, kSegmentsAcross) * kSegmentsAcross;
    return static_cast<std::uint16_t>((row + kSegmentsUp / 2) * kSegmentsAcross + across);
  }

  CPoint ToLocal(const CPoint& point) const {
    return {point.x - column * kSegmentSize - kSegmentSize / 2,
            point.y - row * kSegmentSize - kSegmentSize / 2};
  }

  FlatBox Box() const {
    return {{static_cast<double>(column * kSegmentSize), static_cast<double>(row * kSegmentSize)},
            {static_cast<double>((column + 1) * kSegmentSize),
             static_cast<double>((row + 1) * kSegmentSize)}};
  }

  bool operator==(const Cell&) const = default;
};

/// The cell of the middle of two points, which are at most one cell apart.
Cell CellBetween(const CPoint& a, const CPoint& b) {
  constexpr std::int32_t kTopRow = kSegmentsUp / 2 - 1;
  return {FloorQuotient(a.x + b.x, 2 * kSegmentSize),
          std::min(FloorQuotient(a.y + b.y, 2 * kSegmentSize), kTopRow)};
}

bool OnAntimeridian(const CPoint& point) { return (point.x - kHalfTurn) % kTurn == 0; }

bool IsBefore(const CPoint& a, const CPoint& b) { return std::tie(a.x, a.y) < std::tie(b.x, b.y); }

template <class Ring>
void AssignRing(Ring& ring, const Path& path) {
  ring.clear();
  for (const CPoint& point : path)
    ring.emplace_back(static_cast<double>(point.x), static_cast<double>(point.y));
}

template <class Ring>
Path PathOf(const Ring& ring) {
  Path path;
  for (const FlatPoint& point : ring)
    path.push_back({static_cast<std::int32_t>(std::lround(point.x())),
                    static_cast<std::int32_t>(std::lround(point.y()))});
  return path;
}

/// Where a ring begins is the clipping's choice; ours is the westernmost of its points.
Path StartedInWest(Path ring) {
  ring.pop_back();
  std::rotate(ring.begin(), std::ranges::min_element(ring, IsBefore), ring.end());
  ring.push_back(ring.front());
  return ring;
}

FlatPolygon SplitPolygonAt(const FlatPolygon& polygon, std::int32_t meridian) {
  const Lines line{&CPoint::x, &CPoint::y, kTurn, meridian};
  FlatPolygon split;
  AssignRing(split.outer(), SplitAt(PathOf(polygon.outer()), line));
  for (const auto& hole : polygon.inners())
    AssignRing(split.inners().emplace_back(), SplitAt(PathOf(hole), line));
  return split;
}

/// The part of the polygon in the box. The polygon has a point wherever it crosses an edge of the
/// box, so that clipping computes no new ones.
std::vector<FlatPolygon> Clip(const FlatPolygon& polygon, const FlatBox& box) {
  std::vector<FlatPolygon> parts;
  bg::intersection(polygon, box, parts);
  return parts;
}

/// The rings of the part of the polygon in the box.
std::vector<Path> RingsInBox(const FlatPolygon& polygon, const FlatBox& box) {
  std::vector<Path> rings;
  std::vector<FlatPolygon> parts = Clip(polygon, box);
  while (!parts.empty()) {
    const FlatPolygon part = std::move(parts.back());
    parts.pop_back();
    if (part.inners().empty()) {
      rings.push_back(StartedInWest(PathOf(part.outer())));
      continue;
    }
    const auto hole = bg::return_envelope<FlatBox>(part.inners().front());
    const double meridian = std::floor((hole.min_corner().x() + hole.max_corner().x()) / 2);
    const FlatPolygon split = SplitPolygonAt(part, static_cast<std::int32_t>(meridian));
    const FlatBox west{box.min_corner(), {meridian, box.max_corner().y()}};
    const FlatBox east{{meridian, box.min_corner().y()}, box.max_corner()};
    for (const FlatBox& side : {west, east})
      std::ranges::move(Clip(split, side), std::back_inserter(parts));
  }
  return rings;
}

}  // namespace

Path SplitAtMesh(const Path& path) { return SplitAt(SplitAt(path, kMeridians), kParallels); }

Piece PieceAt(CPoint point) {
  const Cell cell = CellBetween(point, point);
  return {cell.Number(), {cell.ToLocal(point)}};
}

std::vector<Piece> CutLine(const Path& line) {
  std::vector<Piece> pieces;
  const Path points = SplitAtMesh(line);
  Cell last{};
  bool joined = false;  // whether the last piece ends where the next stretch begins
  for (std::size_t i = 1; i < points.size(); ++i) {
    const CPoint& from = points[i - 1];
    const CPoint& to = points[i];
    if (OnAntimeridian(from) && OnAntimeridian(to)) {
      joined = false;
      continue;
    }
    const Cell cell = CellBetween(from, to);
    if (!joined || cell != last) pieces.push_back({cell.Number(), {cell.ToLocal(from)}});
    pieces.back().path.push_back(cell.ToLocal(to));
    last = cell;
    joined = true;
  }
  return pieces;
}

std::vector<Piece> CutPolygon(const Outline& outline) {
  FlatPolygon polygon;
  AssignRing(polygon.outer(), SplitAtMesh(outline.shell));
  for (const Path& hole : outline.holes)
    AssignRing(polygon.inners().emplace_back(), SplitAtMesh(hole));
  bg::correct(polygon);

  const auto [west, east] = std::ranges::minmax(outline.shell, {}, &CPoint::x);
  const auto [south, north] = std::ranges::minmax(outline.shell, {}, &CPoint::y);
  std::vector<Piece> pieces;
  for (Cell cell{0, FloorQuotient(south.y, kSegmentSize)}; cell.row * kSegmentSize < north.y;
       ++cell.row) {
    for (cell.column = FloorQuotient(west.x, kSegmentSize); cell.column * kSegmentSize < east.x;
         ++cell.column) {
      for (Path& ring : RingsInBox(polygon, cell.Box())) {
        std::ranges::transform(ring, ring.begin(),
                               [&cell](const CPoint& point) { return cell.ToLocal(point); });
        pieces.push_back({cell.Number(), std::move(ring)});
      }
    }
  }
  std::ranges::sort(pieces, [](const Piece& a, const Piece& b) {
    if (a.segment != b.segment) return a.segment < b.segment;
    return std::ranges::lexicographical_compare(a.path, b.path, IsBefore);
  });
  return pieces;
}

}  // namespace world
