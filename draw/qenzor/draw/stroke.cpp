#include <algorithm>
#include <array>
#include <cmath>
#include <numeric>
#include <vector>

#include "qenzor/draw/stroke_impl.h"
#include "qenzor/view/style_book.h"

namespace qenzor {

namespace {

/// More dashes in one line than anybody can tell apart; beyond it the line is solid.
constexpr double kMaxDashes = 50'000;
/// Points of one path, so that a very wide line of very many takes bounded memory.
constexpr std::size_t kMaxPathPoints = 4096;
constexpr double kWide = 64;

double LengthOf(std::span<const PagePoint> line) {
  double length = 0;
  for (std::size_t i = 1; i < line.size(); ++i)
    length += std::hypot(line[i].x - line[i - 1].x, line[i].y - line[i - 1].y);
  return length;
}

void StrokePath(cairo_t* cairo, std::span<const PagePoint> run) {
  cairo_move_to(cairo, run.front().x, run.front().y);
  for (const PagePoint& point : run.subspan(1)) cairo_line_to(cairo, point.x, point.y);
  cairo_stroke(cairo);
}

}  // namespace

void StrokeLine(cairo_t* cairo, std::span<const PagePoint> line, const Pen& pen,
                const PageBox& visible) {
  const std::span<const double> lengths = StrokePattern(pen.Code);
  std::vector<double> pattern(lengths.begin(), lengths.end());
  for (double& length : pattern) length *= pen.Width * pen.Aspect;
  const double period = std::accumulate(pattern.begin(), pattern.end(), 0.0);

  SetColor(cairo, pen.Color);
  cairo_set_line_width(cairo, pen.Width);
  cairo_set_line_join(cairo, CAIRO_LINE_JOIN_ROUND);
  cairo_set_line_cap(cairo, CAIRO_LINE_CAP_BUTT);
  const std::size_t at_once = pen.Width > kWide ? kMaxPathPoints : line.size() + 2;
  ClipLine(line, visible.Grown(pen.Width), [&](std::span<const PagePoint> run, double before) {
    const double length = LengthOf(run);
    if (std::isfinite(period) && period > 0 && period < 1e6 && length / period < kMaxDashes)
      cairo_set_dash(cairo, pattern.data(), static_cast<int>(pattern.size()),
                     std::fmod(before, period));
    else
      cairo_set_dash(cairo, nullptr, 0, 0);
    for (std::size_t from = 0; from + 1 < run.size(); from += at_once - 1)
      StrokePath(cairo, run.subspan(from, std::min(at_once, run.size() - from)));
  });
  cairo_set_dash(cairo, nullptr, 0, 0);
}

}  // namespace qenzor
