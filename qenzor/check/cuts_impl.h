#pragma once

#include <cstdint>
#include <vector>

#include "qenzor/view/frame.h"

namespace qenzor::check {

/// Part of an area's outline that runs along an edge of the segment that holds it.
struct AreaCut {
  std::uint64_t ZId = 0;
  std::uint64_t Layer = 0;
  double Edge = 0;          ///< where the segment's edge lies, in coordinates of the map
  bool IsMeridian = false;  ///< the edge runs from south to north
  bool IsBeyond = false;    ///< the segment lies to the east of it, or to the north
  double Low = 0;           ///< where the part begins and ends, in the other direction
  double High = 0;
};

/// An end of a line on an edge of the segment that holds it.
struct LineCut {
  std::uint64_t ZId = 0;
  std::uint64_t Layer = 0;
  MapPoint Place;
};

/// All that a map's segments cut, to be asked whether it goes on beyond.
class CCuts {
 public:
  void Add(const AreaCut& cut);
  void Add(const LineCut& cut) { m_lines.push_back(cut); }
  /// To be called when all have been added, and before anything is asked.
  void Sort();

  /// Whether areas on the other side of the edge run along all of the part.
  bool IsMet(AreaCut cut) const;
  /// Whether another line ends there.
  bool IsMet(const LineCut& cut) const;

 private:
  std::vector<AreaCut> m_areas;
  std::vector<LineCut> m_lines;
};

}  // namespace qenzor::check
