#pragma once

#include <cstdint>
#include <optional>

#include "qenzor/core/result.h"
#include "qenzor/platform/export.h"
#include "qenzor/view/frame.h"

namespace qenzor {

enum class Projection : std::uint8_t { kFlat, kMercator };

/// How large a picture is asked for; at most one of scale and size. With neither it is 1600 pixels
/// wide.
struct QENZOR_EXPORT PageOptions {
  struct Pixels {
    double Width = 0;
    double Height = 0;
  };
  std::optional<double> Denominator;  ///< the N of a scale 1:N, above 0
  std::optional<Pixels> Size;
  double Dpi = 96;
  Projection How = Projection::kFlat;
};

/// A place in a picture: in 1/96 inch from its upper left corner, y downwards.
struct PagePoint {
  double x = 0;
  double y = 0;
};

/// Where places of the map lie in a picture.
class QENZOR_EXPORT CPage {
 public:
  static constexpr double kMaxSide = 16384;   // pixels: what image formats and memory bear
  static constexpr double kMaxPixels = 64e6;  // 256 MB of them
  static constexpr double kUnitsPerInch = 96;
  static constexpr double kMetresPerDegree = 111319.490793;

  /// A picture that shows the box in its middle. A plain box counts in metres, any other in
  /// degrees. Fails for a box without extent, a scale or size of nothing, and what cannot be
  /// projected.
  static Result<CPage> Make(const MapBox& box, bool plain, const PageOptions& options);

  /// Fails for pictures that are too large to be made.
  Result<void> CheckSize() const;

  double GetDenominator() const { return m_denominator; }
  double GetPixelWidth() const { return m_pixels.Width; }
  double GetPixelHeight() const { return m_pixels.Height; }
  double GetDpi() const { return m_dpi; }
  /// In 1/96 inch.
  double GetWidth() const { return m_pixels.Width * kUnitsPerInch / m_dpi; }
  double GetHeight() const { return m_pixels.Height * kUnitsPerInch / m_dpi; }
  PagePoint At(const MapPoint& point) const {
    return {m_left + ToX(point.x) * m_units_per_metre, m_top - ToY(point.y) * m_units_per_metre};
  }

 private:
  CPage() = default;
  double ToX(double x) const { return x * m_metres_x; }
  double ToY(double y) const { return (m_mercator ? Mercator(y) : y) * m_metres_y; }
  static double Mercator(double latitude);

  bool m_mercator = false;
  double m_metres_x = 1;  // on the ground in the middle, per unit of the projection
  double m_metres_y = 1;
  double m_units_per_metre = 1;
  double m_left = 0;
  double m_top = 0;
  double m_denominator = 1;
  double m_dpi = kUnitsPerInch;
  PageOptions::Pixels m_pixels;
};

}  // namespace qenzor
