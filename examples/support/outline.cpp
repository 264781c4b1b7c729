#include "examples/support/outline.h"

#include <algorithm>

namespace world {
namespace {

using qenzor::CPoint;

constexpr std::size_t kSmallestRing = 4;  // a triangle and its closing point

/// The ring's points on the unrolled globe; its end lies whole turns from its start.
Path JoinArcs(const Topology& topology, const RingArcs& arcs) {
  Path ring;
  for (const ArcRef ref : arcs) {
    Path arc = topology.arcs.at(static_cast<std::size_t>(ref < 0 ? ~ref : ref));
    if (ref < 0) std::ranges::reverse(arc);
    ring.insert(ring.end(), arc.begin(), arc.end());
  }
  Unroll(ring);
  ring.erase(std::unique(ring.begin(), ring.end()), ring.end());
  return ring;
}

bool RunsAroundGlobe(const Path& ring) { return ring.front() != ring.back(); }

void CloseOverPole(Path& ring) {
  const std::int32_t pole = ring.front().y < 0 ? -kPole : kPole;
  ring.push_back({ring.back().x, pole});
  ring.push_back({ring.front().x, pole});
  ring.push_back(ring.front());
}

std::int32_t WestEnd(const Path& path) { return std::ranges::min(path, {}, &CPoint::x).x; }

/// Moves a hole to the turn on which its shell lies.
void MoveIntoShell(Path& hole, const Path& shell) {
  const std::int64_t gap = WestEnd(hole) - WestEnd(shell);
  const std::int64_t turns = gap / kTurn - (gap % kTurn < 0 ? 1 : 0);
  for (CPoint& point : hole) point.x -= static_cast<std::int32_t>(turns * kTurn);
}

/// Where a parallel crosses the ring, from west to east.
std::vector<std::int64_t> Crossings(const Path& ring, std::int32_t y) {
  std::vector<std::int64_t> crossings;
  for (std::size_t i = 1; i < ring.size(); ++i) {
    const CPoint& low = ring[i - 1].y < ring[i].y ? ring[i - 1] : ring[i];
    const CPoint& high = ring[i - 1].y < ring[i].y ? ring[i] : ring[i - 1];
    if (low.y > y || high.y <= y) continue;
    const std::int64_t run = std::int64_t{high.x} - low.x;
    crossings.push_back(low.x + RoundedQuotient(run * (y - low.y), high.y - low.y));
  }
  std::ranges::sort(crossings);
  return crossings;
}

}  // namespace

void Unroll(Path& path) {
  for (std::size_t i = 1; i < path.size(); ++i) {
    const std::int64_t gap = std::int64_t{path[i].x} - path[i - 1].x;
    path[i].x -= static_cast<std::int32_t>(RoundedQuotient(gap, kTurn) * kTurn);
  }
}

std::optional<Outline> OutlineOf(const Topology& topology, const PolygonArcs& polygon) {
  Outline outline;
  for (const RingArcs& arcs : polygon) {
    Path ring = JoinArcs(topology, arcs);
    if (outline.shell.empty()) {
      if (ring.size() < kSmallestRing) return std::nullopt;
      if (RunsAroundGlobe(ring)) CloseOverPole(ring);
      outline.shell = std::move(ring);
    } else if (ring.size() >= kSmallestRing && !RunsAroundGlobe(ring)) {
      MoveIntoShell(ring, outline.shell);
      outline.holes.push_back(std::move(ring));
    }
  }
  if (outline.shell.empty()) return std::nullopt;
  return outline;
}

std::int64_t TwiceArea(const Path& ring) {
  std::int64_t sum = 0;
  for (std::size_t i = 1; i < ring.size(); ++i)
    sum += std::int64_t{ring[i - 1].x} * ring[i].y - std::int64_t{ring[i].x} * ring[i - 1].y;
  return sum;
}

CPoint LabelPoint(const Path& ring) {
  constexpr int kParallels = 16;
  const auto [south, north] = std::ranges::minmax(ring, {}, &CPoint::y);
  CPoint best = ring.front();
  std::int64_t widest = -1;
  for (int i = 1; i < kParallels; ++i) {
    const std::int32_t y = south.y + (north.y - south.y) / kParallels * i;
    const std::vector<std::int64_t> crossings = Crossings(ring, y);
    for (std::size_t at = 1; at < crossings.size(); at += 2) {
      const std::int64_t width = crossings[at] - crossings[at - 1];
      if (width <= widest) continue;
      widest = width;
      best = {static_cast<std::int32_t>(crossings[at - 1] + width / 2), y};
    }
  }
  return best;
}

}  // namespace world
