#pragma once

#include <cstdint>

#include "qenzor/platform/standard.h"

namespace qenzor {

/// A point of the map's own coordinate space; 16 bits a value in a file, 32 bits in memory.
struct CPoint {
  std::int32_t x = 0;
  std::int32_t y = 0;

  bool operator==(const CPoint&) const = default;
};

/// A displacement that has 16 bits a value in memory too.
struct CPoint16 {
  std::int16_t x = 0;
  std::int16_t y = 0;

  bool operator==(const CPoint16&) const = default;
};

/// A rectangle. As a bounding rectangle: minimum x, minimum y, maximum x, maximum y;
/// as a geographic one: west, south, east, north. No order of the edges is enforced.
struct CRect {
  std::int32_t left = 0;
  std::int32_t top = 0;
  std::int32_t right = 0;
  std::int32_t bottom = 0;

  bool operator==(const CRect&) const = default;
};

}  // namespace qenzor
