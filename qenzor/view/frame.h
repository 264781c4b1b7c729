#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "qenzor/core/result.h"
#include "qenzor/platform/export.h"
#include "qenzor/platform/geometry.h"
#include "qenzor/qen/qen.h"

namespace qenzor {

/// A place in the coordinates that a frame gives: degrees, or plain numbers. x to the east, y to
/// the north.
struct MapPoint {
  double x = 0;
  double y = 0;

  bool operator==(const MapPoint&) const = default;
};

/// A rectangle in the coordinates that a frame gives.
struct QENZOR_EXPORT MapBox {
  double West = 0;
  double South = 0;
  double East = 0;
  double North = 0;

  bool operator==(const MapBox&) const = default;

  /// The edges are part of a box.
  bool Holds(const MapPoint& point) const {
    return West <= point.x && point.x <= East && South <= point.y && point.y <= North;
  }
  bool Holds(const MapBox& other) const {
    return West <= other.West && other.East <= East && South <= other.South && other.North <= North;
  }
  bool Meets(const MapBox& other) const {
    return West <= other.East && other.West <= East && South <= other.North && other.South <= North;
  }
  void Add(const MapBox& other);
};

/// Is told, in one sentence without a full stop, what was odd and has been passed over.
using WarningSink = std::function<void(const std::string&)>;

/// How the numbers of a map project are to be understood. docs/drawing.md tells what each means.
struct QENZOR_EXPORT FrameOptions {
  std::optional<double> Unit;  ///< degrees per unit of IncRect
  bool FromCentre = true;      ///< else from the segment's south-west corner
  bool RowsNorth = true;       ///< else rows of segments run south from the north-west corner
  std::optional<double> Coef;  ///< units of IncRect per unit of an object's coordinates
  std::optional<CString> Crs;  ///< as "EPSG:4326", or "none"
  bool Plain = false;

  bool operator==(const FrameOptions&) const = default;

  /// Options from words as "unit=1/3600000,rows=south". A failure says which word is wrong.
  static Result<FrameOptions> Parse(std::string_view words);
};

/// One key of the words that FrameOptions::Parse takes.
struct FrameKey {
  std::string_view Name;
  std::string_view Values;
  std::string_view Help;
};

QENZOR_EXPORT extern const std::array<FrameKey, 6> kFrameKeys;

/// Where the objects of one segment lie.
class CSegmentFrame {
 public:
  /// Does not decrease in x when x grows, nor in y when y grows.
  MapPoint At(const CPoint& point) const {
    return {ToFrame(m_x + point.x * m_coef), ToFrame(m_y + point.y * m_coef)};
  }
  /// The box of a bounding rectangle.
  MapBox At(const CRect& rect) const {
    const MapPoint low = At(CPoint{rect.left, rect.top});
    const MapPoint high = At(CPoint{rect.right, rect.bottom});
    return {low.x, low.y, high.x, high.y};
  }

 private:
  friend class CFrame;
  double ToFrame(double units) const { return units / m_divisor * m_factor; }

  double m_x = 0;  // of the origin, in units of IncRect
  double m_y = 0;
  double m_coef = 1;
  double m_divisor = 1;  // one of the two is 1
  double m_factor = 1;
};

/// Turns the coordinates of objects into those of the map, and back.
class QENZOR_EXPORT CFrame {
 public:
  /// The CRS of maps with GeoCoodinate 1.
  static constexpr std::string_view kGeographicCrs = "EPSG:4326";

  explicit CFrame(const QenFileInfo& info, const FrameOptions& options = {});

  /// Coordinates are taken as they stand: asked for, or because the file info gives no mesh.
  bool IsPlain() const { return m_plain; }
  /// The file info gives no mesh, and that was not asked to be overlooked.
  bool IsDegenerate() const { return m_degenerate; }
  /// As "EPSG:4326"; empty for coordinates without a CRS.
  const CString& GetCrs() const { return m_crs; }
  /// The map's own rectangle; all 0 in a plain frame.
  MapBox GetRect() const;
  /// Whether the mesh has a segment of this number. What lies in another is placed all the same, as
  /// if the mesh went on; a plain frame has them all.
  bool HasSegment(std::uint16_t segment) const;
  CSegmentFrame ForSegment(std::uint16_t segment) const;
  /// The segment's part of the map; all 0 in a plain frame. Neighbours have their common edge at
  /// exactly the same place.
  MapBox GetCell(std::uint16_t segment) const;
  MapPoint At(std::uint16_t segment, const CPoint& point) const {
    return ForSegment(segment).At(point);
  }

  /// The segment whose west and south edge the point does not lie before; the map's east and north
  /// border belong to the last ones. 0 in a plain frame. Nothing for a point outside the map, and
  /// where the segment's number would exceed 65,535.
  std::optional<std::uint16_t> FindSegment(const MapPoint& point) const;
  /// The coordinates in the segment nearest to the point, halves away from zero; nothing where they
  /// do not fit into 16 bits.
  std::optional<CPoint> ToSegment(std::uint16_t segment, const MapPoint& point) const;

  /// Tells what is odd about the frame, and of the map's segments how many lie outside the mesh.
  void Warn(const CQen& map, const WarningSink& warn) const;

 private:
  double ColumnOrigin(std::int64_t column, std::int64_t halves) const;
  double RowOrigin(std::int64_t row, std::int64_t halves) const;
  double ToFrame(double units) const { return units / m_divisor * m_factor; }

  CRect m_rect;
  std::int64_t m_columns = 1;
  std::int64_t m_rows = 1;
  std::int64_t m_half = 1;
  bool m_rows_north = true;
  bool m_plain = false;
  bool m_degenerate = false;
  double m_coef = 1;
  double m_divisor = 1;
  double m_factor = 1;
  CString m_crs;
};

}  // namespace qenzor
