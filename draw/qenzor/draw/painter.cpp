#include <algorithm>
#include <cmath>

#include "qenzor/draw/painter_impl.h"
#include "qenzor/draw/stroke_impl.h"

namespace qenzor {

namespace {

/// Nearer points cannot be told apart.
constexpr double kClose = 1.0 / 64;
/// Points of one path, so that memory is bounded; hundreds of times those of a detailed map.
constexpr std::size_t kMaxPathPoints = 4'000'000;
/// Images over less than this are not seen, and could not be scaled.
constexpr double kLeastImageSide = 1.0 / 256;
constexpr double kAlphas = 255;
constexpr int kHatchSide = 8;

/// What a missing image is drawn with: thin grey lines to the upper right.
PatternHolder MakeHatch() {
  const SurfaceHolder surface(
      cairo_image_surface_create(CAIRO_FORMAT_ARGB32, kHatchSide, kHatchSide));
  const CairoHolder cairo(cairo_create(surface.get()));
  SetColor(cairo.get(), 0xFF808080);
  cairo_set_line_width(cairo.get(), 1);
  for (const int from : {-kHatchSide, 0, kHatchSide}) {
    cairo_move_to(cairo.get(), from, kHatchSide);
    cairo_line_to(cairo.get(), from + kHatchSide, 0);
  }
  cairo_stroke(cairo.get());
  PatternHolder hatch(cairo_pattern_create_for_surface(surface.get()));
  cairo_pattern_set_extend(hatch.get(), CAIRO_EXTEND_REPEAT);
  return hatch;
}

}  // namespace

CPainter::CPainter(cairo_t* cairo, const CPicture& picture, const RenderOptions& options,
                   double device_scale, const WarningSink& warn)
    : m_cairo(cairo),
      m_page(picture.GetPage()),
      m_visible{0, 0, m_page.GetWidth(), m_page.GetHeight()},
      m_images(options.Images, warn),
      m_hatch(MakeHatch()),
      m_labels(cairo, m_page, m_visible, options, device_scale, warn) {
  const MapBox rect = picture.GetFrame().GetRect();
  m_south_west = m_page.At({rect.West, rect.South});
  SetColor(m_cairo, options.Background);
  cairo_paint(m_cairo);
}

void CPainter::Draw(const DrawOrigin& origin, const DrawOp& op) {
  JoinGroup(origin, op);
  std::visit(
      [&](const auto& what) {
        using Op = std::decay_t<decltype(what)>;
        if constexpr (std::is_same_v<Op, MarkOp> || std::is_same_v<Op, TextOp>)
          m_labels.Add(origin, what);
        else
          Paint(what);
      },
      op);
}

void CPainter::Finish() {
  FillGroup();
  m_labels.Finish();
}

/// Begins a new path where the thing does not belong to the one at hand.
void CPainter::JoinGroup(const DrawOrigin& origin, const DrawOp& op) {
  if (m_group.has_value()) {
    const DrawOrigin& of = m_group->Origin;
    if (of.Layer == origin.Layer && of.Info == origin.Info && of.Pass == origin.Pass &&
        m_group->Op == op.index() && m_group->Points < kMaxPathPoints)
      return;
    FillGroup();
  }
  if (std::holds_alternative<ShadowOp>(op))
    m_group = Group{origin, op.index(), std::get<ShadowOp>(op).Color, {}, 0};
  else if (std::holds_alternative<FillOp>(op))
    m_group = Group{origin, op.index(), std::get<FillOp>(op).Color, {}, 0};
  else if (std::holds_alternative<PatternOp>(op))
    m_group = Group{origin, op.index(), 0, std::u16string(std::get<PatternOp>(op).Name), 0};
}

void CPainter::FillGroup() {
  if (!m_group.has_value()) return;
  if (m_group->Op == DrawOp(PatternOp()).index())
    SetPattern(m_group->Pattern);
  else
    SetColor(m_cairo, m_group->Color);
  cairo_set_fill_rule(m_cairo, CAIRO_FILL_RULE_WINDING);
  cairo_fill(m_cairo);
  m_group.reset();
}

void CPainter::ToPage(std::span<const MapPoint> points, double offset_x, double offset_y) {
  m_points.clear();
  for (const MapPoint& point : points) {
    const PagePoint at = m_page.At(point);
    m_points.push_back({at.x + offset_x, at.y - offset_y});
  }
  DropClosePoints(m_points, kClose);
}

/// All rings of a path turn the same way, so that where two overlap both are filled.
void CPainter::AddRing(std::span<const MapPoint> points, double offset_x, double offset_y) {
  ToPage(points, offset_x, offset_y);
  ClipRing(m_points, m_visible.Grown(2));
  if (m_points.size() < 3) return;
  if (SignedArea(m_points) < 0) std::reverse(m_points.begin(), m_points.end());
  cairo_move_to(m_cairo, m_points[0].x, m_points[0].y);
  for (std::size_t i = 1; i < m_points.size(); ++i)
    cairo_line_to(m_cairo, m_points[i].x, m_points[i].y);
  cairo_close_path(m_cairo);
  m_group->Points += m_points.size();
}

void CPainter::Paint(const ShadowOp& op) { AddRing(op.Points, op.OffsetX, op.OffsetY); }

void CPainter::Paint(const FillOp& op) { AddRing(op.Points, 0, 0); }

void CPainter::Paint(const PatternOp& op) { AddRing(op.Points, 0, 0); }

void CPainter::Paint(const StrokeOp& op) {
  ToPage(op.Points, 0, 0);
  StrokeLine(m_cairo, m_points, {op.Color, op.Width, op.Code, op.Aspect}, m_visible);
}

void CPainter::SetPattern(const std::u16string& name) {
  const CImages::Image* image = m_images.Find(name, std::nullopt);
  if (image == nullptr) return SetBrush(m_hatch.get(), kHatchSide, kHatchSide);
  const PatternHolder loaded(cairo_pattern_create_for_surface(image->Surface.get()));
  cairo_pattern_set_extend(loaded.get(), CAIRO_EXTEND_REPEAT);
  cairo_pattern_set_filter(loaded.get(), CAIRO_FILTER_NEAREST);
  SetBrush(loaded.get(), image->Width, image->Height);
}

/// The image's lower left corner stands at the map's, by whole pixels.
void CPainter::SetBrush(cairo_pattern_t* pattern, int width, int height) {
  cairo_matrix_t matrix;
  cairo_matrix_init_translate(&matrix, -std::fmod(std::round(m_south_west.x), width),
                              -std::fmod(std::round(m_south_west.y), height));
  cairo_pattern_set_matrix(pattern, &matrix);
  cairo_set_source(m_cairo, pattern);
}

void CPainter::FillHatched(const PageBox& box) {
  cairo_rectangle(m_cairo, box.Left, box.Top, box.Right - box.Left, box.Bottom - box.Top);
  SetBrush(m_hatch.get(), kHatchSide, kHatchSide);
  cairo_fill(m_cairo);
}

void CPainter::PaintImage(const CImages::Image& image, const PageBox& box, double alpha) {
  const PageBox seen{std::max(box.Left, m_visible.Left), std::max(box.Top, m_visible.Top),
                     std::min(box.Right, m_visible.Right), std::min(box.Bottom, m_visible.Bottom)};
  cairo_save(m_cairo);
  cairo_rectangle(m_cairo, seen.Left, seen.Top, seen.Right - seen.Left, seen.Bottom - seen.Top);
  cairo_clip(m_cairo);
  const PatternHolder pattern(cairo_pattern_create_for_surface(image.Surface.get()));
  cairo_pattern_set_extend(pattern.get(), CAIRO_EXTEND_PAD);
  cairo_matrix_t matrix;
  cairo_matrix_init_scale(&matrix, image.Width / (box.Right - box.Left),
                          image.Height / (box.Bottom - box.Top));
  cairo_matrix_translate(&matrix, -box.Left, -box.Top);
  cairo_pattern_set_matrix(pattern.get(), &matrix);
  cairo_set_source(m_cairo, pattern.get());
  cairo_paint_with_alpha(m_cairo, alpha);
  cairo_restore(m_cairo);
}

void CPainter::Paint(const ImageOp& op) {
  const CImages::Image* image = m_images.Find(op.Name, op.ColorKey);
  PageBox box;
  if (op.Rect.has_value()) {
    const PagePoint low = m_page.At({op.Rect->West, op.Rect->South});
    const PagePoint high = m_page.At({op.Rect->East, op.Rect->North});
    box = {low.x, high.y, high.x, low.y};
  } else {
    const PagePoint at = m_page.At(op.At);
    const double half_width = op.Width / 2;
    const double half_height =
        image == nullptr ? half_width : half_width * image->Height / image->Width;
    box = {at.x - half_width, at.y - half_height, at.x + half_width, at.y + half_height};
  }
  if (!box.Meets(m_visible) || box.Right - box.Left < kLeastImageSide ||
      box.Bottom - box.Top < kLeastImageSide)
    return;
  if (image == nullptr)
    FillHatched({std::max(box.Left, m_visible.Left), std::max(box.Top, m_visible.Top),
                 std::min(box.Right, m_visible.Right), std::min(box.Bottom, m_visible.Bottom)});
  else
    PaintImage(*image, box, op.Rect.has_value() ? op.Alpha / kAlphas : 1);
}

}  // namespace qenzor
