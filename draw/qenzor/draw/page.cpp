#include "qenzor/draw/page.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <numbers>
#include <string>

namespace qenzor {

namespace {

constexpr double kDefaultWidth = 1600;  // pixels
constexpr double kMetresPerInch = 0.0254;
constexpr double kMercatorEdge = 85.051128779806604;  // where the web's maps end
constexpr double kLeastCosine = 0.01;                 // at and beyond the poles
constexpr double kRadians = std::numbers::pi / 180;

Failure Refuse(FailureKind kind, std::string reason) {
  Failure failure;
  failure.Kind = kind;
  failure.Reason = std::move(reason);
  return failure;
}

}  // namespace

double CPage::Mercator(double latitude) {
  const double held = std::clamp(latitude, -kMercatorEdge, kMercatorEdge);
  return std::log(std::tan(std::numbers::pi / 4 + held * kRadians / 2)) / kRadians;
}

Result<CPage> CPage::Make(const MapBox& box, bool plain, const PageOptions& options) {
  if (!(box.West < box.East) || !(box.South < box.North))
    return Refuse(FailureKind::kWrongUsage, "the box is empty or upside down");
  if (options.Denominator.has_value() &&
      (!(*options.Denominator > 0) || !std::isfinite(*options.Denominator)))
    return Refuse(FailureKind::kWrongUsage, "the scale is a number above 0");
  if (options.Size.has_value() && (!(options.Size->Width >= 1) || !(options.Size->Height >= 1)))
    return Refuse(FailureKind::kWrongUsage, "the picture has no size");
  if (!(options.Dpi > 0) || !std::isfinite(options.Dpi))
    return Refuse(FailureKind::kWrongUsage, "the dpi are a number above 0");
  if (plain && options.How == Projection::kMercator)
    return Refuse(FailureKind::kWrongUsage, "a map without degrees has no Mercator projection");

  std::unique_ptr<CPage> page(new CPage);
  page->m_mercator = options.How == Projection::kMercator;
  page->m_dpi = options.Dpi;
  if (!plain) {
    const double middle = std::clamp((box.South + box.North) / 2, -90.0, 90.0);
    const double cosine = std::max(kLeastCosine, std::cos(middle * kRadians));
    page->m_metres_x = kMetresPerDegree * cosine;
    page->m_metres_y = page->m_mercator ? page->m_metres_x : kMetresPerDegree;
  }
  const double west = page->ToX(box.West);
  const double south = page->ToY(box.South);
  const double width = page->ToX(box.East) - west;
  const double height = page->ToY(box.North) - south;
  const double pixel = kMetresPerInch / options.Dpi;  // on paper
  double metres_per_pixel = width / kDefaultWidth;
  if (options.Denominator.has_value())
    metres_per_pixel = *options.Denominator * pixel;
  else if (options.Size.has_value())
    metres_per_pixel = std::max(width / options.Size->Width, height / options.Size->Height);
  page->m_denominator = options.Denominator.value_or(metres_per_pixel / pixel);
  page->m_pixels = options.Size.value_or(
      PageOptions::Pixels{std::max(1.0, std::round(width / metres_per_pixel)),
                          std::max(1.0, std::round(height / metres_per_pixel))});
  page->m_units_per_metre = kUnitsPerInch / (page->m_denominator * kMetresPerInch);
  page->m_left = page->GetWidth() / 2 - (west + width / 2) * page->m_units_per_metre;
  page->m_top = page->GetHeight() / 2 + (south + height / 2) * page->m_units_per_metre;
  if (!std::isfinite(page->m_left) || !std::isfinite(page->m_top) || !(height > 0) ||
      !(page->m_denominator > 0))
    return Refuse(FailureKind::kTooLarge, "the box cannot be projected at that scale");
  return page;
}

Result<void> CPage::CheckSize() const {
  const auto whole = [](double number) {
    return std::to_string(static_cast<std::int64_t>(number));
  };
  if (m_pixels.Width <= kMaxSide && m_pixels.Height <= kMaxSide &&
      m_pixels.Width * m_pixels.Height <= kMaxPixels)
    return {};
  const bool countable = m_pixels.Width < 1e15 && m_pixels.Height < 1e15;
  return Refuse(FailureKind::kTooLarge,
                (countable ? "a picture of " + whole(m_pixels.Width) + " by " +
                                 whole(m_pixels.Height) + " pixels is too large: "
                           : "the picture is too large: ") +
                    "a side has at most " + whole(kMaxSide) + ", the whole " + whole(kMaxPixels));
}

}  // namespace qenzor
