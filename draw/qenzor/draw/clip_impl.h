#pragma once

#include <cstddef>
#include <functional>
#include <span>
#include <vector>

#include "qenzor/draw/page.h"

namespace qenzor {

/// A rectangle in a picture.
struct PageBox {
  double Left = 0;
  double Top = 0;
  double Right = 0;
  double Bottom = 0;

  bool Holds(const PagePoint& p) const {
    return Left <= p.x && p.x <= Right && Top <= p.y && p.y <= Bottom;
  }
  bool Meets(const PageBox& other) const {
    return Left < other.Right && other.Left < Right && Top < other.Bottom && other.Top < Bottom;
  }
  void Add(const PagePoint& p);
  PageBox Grown(double by) const { return {Left - by, Top - by, Right + by, Bottom + by}; }
};

/// The smallest box around points; of none, one that meets nothing.
PageBox BoundsOfPoints(std::span<const PagePoint> points);

// What lies far outside a picture would exceed the numbers of the library that draws, and cost time
// and memory for nothing. Both functions keep what lies in the box as it is.

/// Cuts a ring at the box; what lies outside runs along its edges.
void ClipRing(std::vector<PagePoint>& ring, const PageBox& box);

/// Calls take(run, before) for each part of the line in the box, before being the length of the
/// line in front of it.
void ClipLine(std::span<const PagePoint> line, const PageBox& box,
              const std::function<void(std::span<const PagePoint>, double)>& take);

/// Twice the area inside a ring, positive for one that runs clockwise as the picture is seen.
double SignedArea(std::span<const PagePoint> ring);

/// Leaves out points that lie nearer to the one before than what can be seen.
void DropClosePoints(std::vector<PagePoint>& points, double distance);

}  // namespace qenzor
