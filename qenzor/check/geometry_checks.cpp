#include <algorithm>
#include <limits>

#include "qenzor/check/geometry_checks_impl.h"
#include "qenzor/check/ring_impl.h"
#include "qenzor/qen/cmb_lbl_obj.h"

namespace qenzor::check {

namespace {

using std::to_string;

/// Things of one kind in an object, which make one finding: how many, and where the first is.
struct Tally {
  std::uint64_t Count = 0;
  std::size_t First = 0;

  void Add(std::size_t position) {
    if (Count++ == 0) First = position;
  }
};

CString PointText(const Figure& figure, std::size_t position) {
  const CPoint& point = figure.Points[position];
  return "point " + to_string(position) + " (" + to_string(point.x) + ", " + to_string(point.y) +
         ')';
}

CString MoreText(const Tally& tally, const char* what) {
  return tally.Count == 1 ? CString() : ", " + to_string(tally.Count) + ' ' + what + " in all";
}

/// How many different points there are, counted no further than to the number given.
std::size_t CountDifferent(std::span<const CPoint> points, std::size_t most) {
  std::vector<CPoint> seen;
  for (const CPoint& point : points) {
    if (seen.size() == most) break;
    if (std::ranges::find(seen, point) == seen.end()) seen.push_back(point);
  }
  return seen.size();
}

/// Others have been reported as such.
bool Has16Bits(std::span<const CPoint> points) {
  const auto fits = [](std::int32_t value) { return value == static_cast<std::int16_t>(value); };
  return std::ranges::all_of(points,
                             [&](const CPoint& point) { return fits(point.x) && fits(point.y); });
}

}  // namespace

void CCutCollector::Take(const Figure& figure) {
  const auto add = [this](const auto& cut, std::size_t /*position*/) { m_cuts.Add(cut); };
  ForEachCut(figure, add, add);
}

void CGeometryChecks::Take(const Figure& figure) {
  const bool is_whole = (!figure.IsArea() && !figure.IsLine()) || HasEnoughPoints(figure);
  if (is_whole) CheckRepeatedPoints(figure);
  if (is_whole && figure.IsArea()) CheckRing(figure);
  CheckPlace(figure);
  if (m_cuts != nullptr) CheckCuts(figure);
}

bool CGeometryChecks::HasEnoughPoints(const Figure& figure) {
  const std::size_t least = figure.IsArea() ? 3 : 2;
  const std::size_t count = CountDifferent(figure.Points, least);
  if (count == least) return true;
  m_reporter.Report(Code::kTooFewPoints, figure.Offsets.back(), &figure.Node, [&] {
    return CString(figure.IsArea() ? "the area has " : "the line has ") +
           (count == 0   ? "no points"
            : count == 1 ? "one point"
                         : "two different points") +
           ", at least " + (least == 2 ? "two" : "three") + " are needed";
  });
  return false;
}

void CGeometryChecks::CheckRepeatedPoints(const Figure& figure) {
  Tally repeated;
  for (std::size_t i = 1; i < figure.Points.size(); ++i)
    if (figure.Points[i] == figure.Points[i - 1]) repeated.Add(i);
  if (repeated.Count == 0) return;
  m_reporter.Report(Code::kRepeatedPoint, figure.Offsets[repeated.First], &figure.Node, [&] {
    return PointText(figure, repeated.First) + " repeats the one before" +
           MoreText(repeated, "points do");
  });
}

void CGeometryChecks::CheckRing(const Figure& figure) {
  if (figure.Points.front() != figure.Points.back())
    m_reporter.Report(Code::kRingOpen, figure.Offsets[figure.Points.size() - 1], &figure.Node, [&] {
      return "the outline ends at " + PointText(figure, figure.Points.size() - 1) +
             " and begins at " + PointText(figure, 0);
    });
  if (!Has16Bits(figure.Points)) return;
  if (const auto flaw = FindRingFlaw(figure.Points); flaw.has_value())
    return m_reporter.Report(Code::kRingCrosses, figure.Offsets[flaw->First], &figure.Node, [&] {
      const CString first = PointText(figure, flaw->First);
      const CString second = PointText(figure, flaw->Second);
      if (flaw->Kind == RingFlaw::How::kPassage)
        return "the outline crosses itself between " + first + " and " + second;
      return "the edges that begin at " + first + " and at " + second +
             (flaw->Kind == RingFlaw::How::kCrossing ? " cross" : " run along each other");
    });
  if (IsCounterClockwise(figure.Points))
    m_reporter.Report(Code::kRingCounterClockwise, figure.Offsets.front(), &figure.Node,
                      [] { return "the outline runs counter-clockwise"; });
}

void CGeometryChecks::CheckPlace(const Figure& figure) {
  if (figure.Cell == nullptr) return;
  Tally outside;
  for (std::size_t i = 0; i < figure.Points.size(); ++i)
    if (!figure.Cell->Holds(figure.Points[i])) outside.Add(i);
  if (outside.Count == 0) return;
  if (figure.Node.Id == CCmbLblObj::kChunkId && !figure.Cell->IsOnMap(figure.Points[outside.First]))
    return m_reporter.Report(
        Code::kLabelOutsideMap, figure.Offsets[outside.First], &figure.Node, [&] {
          return "the label's " + PointText(figure, outside.First) + " lies outside the map";
        });
  m_reporter.Report(Code::kOutsideCell, figure.Offsets[outside.First], &figure.Node, [&] {
    return PointText(figure, outside.First) + " lies outside the segment" +
           MoreText(outside, "points do");
  });
}

void CGeometryChecks::CheckCuts(const Figure& figure) {
  Tally unmet;
  const auto ask = [&](const auto& cut, std::size_t position) {
    if (!m_cuts->IsMet(cut)) unmet.Add(position);
  };
  ForEachCut(figure, ask, ask);
  if (unmet.Count == 0) return;
  m_reporter.Report(Code::kCutNotMet, figure.Offsets[unmet.First], &figure.Node, [&] {
    if (figure.IsLine())
      return "the line ends at " + PointText(figure, unmet.First) +
             " on the segment's edge, and none of layer " + to_string(figure.Layer) + " and z-id " +
             to_string(figure.ZId) + " goes on there" + MoreText(unmet, "ends are so");
    return "the outline runs along the segment's edge from " + PointText(figure, unmet.First) +
           " on, and no area of layer " + to_string(figure.Layer) + " and z-id " +
           to_string(figure.ZId) + " lies against all of it beyond" +
           MoreText(unmet, "edges are so");
  });
}

}  // namespace qenzor::check
