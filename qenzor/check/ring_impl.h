#pragma once

#include <cstddef>
#include <optional>
#include <span>

#include "qenzor/platform/geometry.h"

namespace qenzor::check {

/// Where a ring goes wrong: two of its points, by their positions, from each of which an edge runs
/// to the next; of a passage, the two points where the ring comes through one place.
struct RingFlaw {
  enum class How : std::uint8_t {
    kCrossing,  ///< two edges cross inside both
    kPassage,   ///< at a point of the ring, one part of it passes through another
    kOverlap,   ///< two edges run along each other
  };
  How Kind;
  std::size_t First;
  std::size_t Second;
};

/// The first place, from the west, where a ring crosses itself or runs along itself. Touching
/// itself at a point is not crossing. An open ring is taken as if closed; repeated points count
/// once. Coordinates have 16 bits. Takes n log n steps, whatever the ring.
std::optional<RingFlaw> FindRingFlaw(std::span<const CPoint> points);

/// Whether a ring that does not cross itself has its inside on the left; not so of one without an
/// inside.
bool IsCounterClockwise(std::span<const CPoint> points);

}  // namespace qenzor::check
