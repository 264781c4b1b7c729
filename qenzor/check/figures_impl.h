#pragma once

#include <optional>
#include <span>
#include <vector>

#include "qenzor/check/content_impl.h"
#include "qenzor/check/cuts_impl.h"

namespace qenzor::check {

/// The edges of a segment on which a point can lie.
enum CellEdge : std::uint8_t { kWest = 1, kSouth = 2, kEast = 4, kNorth = 8 };

/// Where the objects of one segment lie by the frame.
class CCell {
 public:
  CCell(const CFrame& frame, std::uint16_t segment);

  /// Where a point lies on the map. What was rounded on to an edge lies on it.
  MapPoint At(const CPoint& point) const;
  /// Whether it lies in the segment, edges included, but for rounding.
  bool Holds(const CPoint& point) const;
  /// Whether it lies in the map.
  bool IsOnMap(const CPoint& point) const;
  /// On which edges it lies, of those that have a segment beyond.
  unsigned InnerEdgesAt(const CPoint& point) const;
  double GetEdge(CellEdge edge) const;

 private:
  unsigned EdgesAt(const MapPoint& place) const;
  bool IsInside(const MapBox& box, const MapPoint& place) const;

  CSegmentFrame m_frame;
  MapBox m_box;
  MapBox m_map;
  MapPoint m_slack;
  unsigned m_inner_edges = 0;
};

/// An object of a map, or what is known of it. What it points to is good until Take returns.
struct Figure {
  const PathNode& Node;
  std::span<const CPoint> Points;
  std::span<const std::uint64_t> Offsets;  ///< of the points, then of the object
  const CCell* Cell;                       ///< null where the frame has none
  std::uint64_t Layer;
  std::uint64_t ZId;

  bool IsArea() const;
  bool IsLine() const;
};

/// Hears a map's objects that consist of points.
class CFigureListener : public CContentListener {
 public:
  explicit CFigureListener(const FrameOptions& options) : m_options(options) {}

  bool WantsMore() const override { return true; }
  void Open(const PathNode& node, const ClassSchema& schema, std::uint64_t offset) override;
  void Close(const PathNode& node, const ClassSchema& schema, std::uint64_t kept) override;
  void Integer(const PathNode& node, const FieldSchema& field, std::uint64_t value,
               std::uint64_t offset) override;
  void Rect(const PathNode& node, const FieldSchema& field, const CRect& rect,
            std::uint64_t offset) override;
  void Point(const PathNode& node, const FieldSchema& field, const CPoint& point,
             std::uint64_t offset) override;

 protected:
  virtual void Take(const Figure& figure) = 0;

 private:
  void EnterSegment(std::uint64_t number);

  const FrameOptions& m_options;
  QenFileInfo m_info;
  std::optional<CFrame> m_frame;
  std::optional<CCell> m_cell;
  std::uint64_t m_layer = 0;
  std::uint64_t m_z_id = 0;
  std::uint64_t m_opened = 0;
  std::vector<CPoint> m_points;  ///< of the object at hand
  std::vector<std::uint64_t> m_offsets;
};

/// Calls f with each part of an area's outline that is cut at a segment's edge, and the number of
/// the point where it begins, or with each end of a line that is.
template <class OfArea, class OfLine>
void ForEachCut(const Figure& figure, OfArea&& of_area, OfLine&& of_line) {
  if (figure.Cell == nullptr || figure.Points.size() < 2) return;
  const CCell& cell = *figure.Cell;
  if (figure.IsLine()) {
    for (const std::size_t end : {std::size_t{0}, figure.Points.size() - 1})
      if (cell.InnerEdgesAt(figure.Points[end]) != 0)
        of_line(LineCut{figure.ZId, figure.Layer, cell.At(figure.Points[end])}, end);
  }
  if (!figure.IsArea()) return;
  for (std::size_t i = 0; i < figure.Points.size(); ++i) {
    const CPoint& from = figure.Points[i];
    const CPoint& to = figure.Points[i + 1 == figure.Points.size() ? 0 : i + 1];
    const unsigned edges = cell.InnerEdgesAt(from) & cell.InnerEdgesAt(to);
    if (edges == 0 || from == to) continue;
    for (const CellEdge edge : {kWest, kSouth, kEast, kNorth}) {
      if ((edges & edge) == 0) continue;
      const bool is_meridian = edge == kWest || edge == kEast;
      const MapPoint a = cell.At(from);
      const MapPoint b = cell.At(to);
      const auto [low, high] = is_meridian ? std::minmax(a.y, b.y) : std::minmax(a.x, b.x);
      of_area(AreaCut{figure.ZId, figure.Layer, cell.GetEdge(edge), is_meridian,
                      edge == kWest || edge == kSouth, low, high},
              i);
    }
  }
}

}  // namespace qenzor::check
