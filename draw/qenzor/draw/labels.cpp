#include <algorithm>
#include <cmath>
#include <numbers>
#include <utility>

#include "qenzor/draw/labels_impl.h"
#include "qenzor/draw/stroke_impl.h"

namespace qenzor {

namespace {

constexpr std::int16_t kLineElem = 1;
constexpr std::int16_t kAreaElem = 2;
constexpr double kMinLineWidth = 0.1;
constexpr double kMaxLineWidth = 4096;
/// Points of all marks of one picture: a bound for drawings that are nothing but marks.
constexpr std::size_t kMaxMarkPoints = 50'000'000;

constexpr double ToRadians(double degrees) { return degrees * std::numbers::pi / 180; }

PagePoint Turned(const PagePoint& point, double angle) {
  const double cosine = std::cos(ToRadians(angle));
  const double sine = std::sin(ToRadians(angle));
  return {point.x * cosine + point.y * sine, point.y * cosine - point.x * sine};
}

/// By how much a frame stands around its text, its line not counted.
std::pair<double, double> FrameRoom(const LabelFrame& frame, const PageBox& text) {
  if (frame.Kind != 3) return {frame.Margin, frame.Margin};
  // An ellipse through the corners of the rectangle.
  const double more = (std::numbers::sqrt2 - 1) / 2;
  return {frame.Margin + (text.Right - text.Left + 2 * frame.Margin) * more,
          frame.Margin + (text.Bottom - text.Top + 2 * frame.Margin) * more};
}

PageBox FrameBox(const LabelFrame& frame, const PageBox& text) {
  const auto [x, y] = FrameRoom(frame, text);
  return {text.Left - x, text.Top - y, text.Right + x, text.Bottom + y};
}

}  // namespace

CLabels::CLabels(cairo_t* cairo, const CPage& page, const PageBox& visible,
                 const RenderOptions& options, double device_scale, WarningSink warn)
    : m_cairo(cairo),
      m_page(page),
      m_visible(visible),
      m_all(options.AllLabels),
      m_device_scale(device_scale),
      m_warn(warn),
      m_setter(options.Fonts, std::move(warn)) {}

bool CLabels::TakePlace(const std::vector<PageBox>& parts) {
  if (std::none_of(parts.begin(), parts.end(),
                   [&](const PageBox& part) { return part.Meets(m_visible); }))
    return false;
  if (m_all || m_taken.Take(parts)) return true;
  ++m_left_out;
  return false;
}

const PageBox& CLabels::ExtentOf(const MarkOp& op) {
  const auto [place, is_new] = m_extents.try_emplace(op.Mark);
  if (!is_new) return place->second;
  PageBox extent = BoundsOfPoints({});
  for (const CMarkElem& elem : op.Content->MarkElem) {
    const double half = elem.ElemKind == kLineElem ? std::max<double>(elem.LineWidth, 0) / 2 : 0;
    if (elem.ElemKind != kLineElem && elem.ElemKind != kAreaElem) continue;
    for (const CPoint& point : elem.Pt) {
      extent.Add({point.x - half, -point.y - half});
      extent.Add({point.x + half, -point.y + half});
    }
  }
  return place->second = extent;
}

PageBox CLabels::BoxOf(const MarkOp& op) {
  const PageBox& extent = ExtentOf(op);
  const PagePoint at = m_page.At(op.At);
  return {at.x + extent.Left * op.Scale, at.y + extent.Top * op.Scale,
          at.x + extent.Right * op.Scale, at.y + extent.Bottom * op.Scale};
}

void CLabels::Draw(const MarkOp& op) {
  const PagePoint at = m_page.At(op.At);
  std::vector<PagePoint> points;
  for (const CMarkElem& elem : op.Content->MarkElem) {
    m_mark_points += elem.Pt.size();
    if (m_mark_points > kMaxMarkPoints) {
      m_warn("the marks have more points than are drawn; the rest is left out");
      return;
    }
    points.clear();
    for (const CPoint& point : elem.Pt)
      points.push_back({at.x + point.x * op.Scale, at.y - point.y * op.Scale});
    if (elem.ElemKind == kLineElem && elem.LineWidth > 0) {
      StrokeLine(m_cairo, points,
                 {elem.Color, std::clamp(elem.LineWidth * op.Scale, kMinLineWidth, kMaxLineWidth)},
                 m_visible);
    } else if (elem.ElemKind == kAreaElem) {
      ClipRing(points, m_visible.Grown(1));
      for (const PagePoint& point : points) cairo_line_to(m_cairo, point.x, point.y);
      SetColor(m_cairo, elem.Color);
      cairo_fill(m_cairo);
    }
  }
}

void CLabels::Add(const DrawOrigin& origin, const MarkOp& op) {
  Finish();
  m_mark = PendingMark{origin.Sequence, op};
}

void CLabels::Finish() {
  if (!m_mark.has_value()) return;
  if (TakePlace({BoxOf(m_mark->Op)})) Draw(m_mark->Op);
  m_mark.reset();
}

void CLabels::Add(const DrawOrigin& origin, const TextOp& op) {
  if (m_mark.has_value() && m_mark->Sequence != origin.Sequence) Finish();
  const SetText text = m_setter.Set(op);
  const PageBox whole =
      op.Frame.has_value() ? FrameBox(*op.Frame, text.Box).Grown(op.Frame->Width / 2) : text.Box;
  const PagePoint at = m_page.At(op.At);
  const PagePoint anchor{at.x + op.OffsetX, at.y - op.OffsetY};
  PageBox around = BoundsOfPoints({});
  for (const PagePoint& corner : {PagePoint{whole.Left, whole.Top},
                                  {whole.Right, whole.Top},
                                  {whole.Right, whole.Bottom},
                                  {whole.Left, whole.Bottom}}) {
    const PagePoint turned = Turned(corner, op.Angle);
    around.Add({anchor.x + turned.x, anchor.y + turned.y});
  }
  std::vector<PageBox> parts{around};
  if (m_mark.has_value()) parts.push_back(BoxOf(m_mark->Op));
  if (TakePlace(parts)) {
    if (m_mark.has_value()) Draw(m_mark->Op);
    cairo_save(m_cairo);
    cairo_translate(m_cairo, anchor.x, anchor.y);
    cairo_rotate(m_cairo, -ToRadians(op.Angle));
    if (op.Frame.has_value()) DrawFrame(*op.Frame, text.Box);
    m_setter.Draw(m_cairo, op, text, m_device_scale);
    cairo_restore(m_cairo);
  }
  m_mark.reset();
}

void CLabels::DrawFrame(const LabelFrame& frame, const PageBox& text) const {
  const PageBox box = FrameBox(frame, text);
  const double width = box.Right - box.Left;
  const double height = box.Bottom - box.Top;
  if (!(width > 0) || !(height > 0)) return;
  cairo_new_path(m_cairo);
  if (frame.Kind == 1) {
    cairo_rectangle(m_cairo, box.Left, box.Top, width, height);
  } else if (frame.Kind == 2) {
    const double radius = std::min(width, height) / 4;
    const double quarter = std::numbers::pi / 2;
    cairo_arc(m_cairo, box.Right - radius, box.Top + radius, radius, -quarter, 0);
    cairo_arc(m_cairo, box.Right - radius, box.Bottom - radius, radius, 0, quarter);
    cairo_arc(m_cairo, box.Left + radius, box.Bottom - radius, radius, quarter, 2 * quarter);
    cairo_arc(m_cairo, box.Left + radius, box.Top + radius, radius, 2 * quarter, 3 * quarter);
    cairo_close_path(m_cairo);
  } else {
    cairo_save(m_cairo);
    cairo_translate(m_cairo, box.Left + width / 2, box.Top + height / 2);
    cairo_scale(m_cairo, width / 2, height / 2);
    cairo_arc(m_cairo, 0, 0, 1, 0, 2 * std::numbers::pi);
    cairo_restore(m_cairo);
  }
  SetColor(m_cairo, frame.Color);
  cairo_set_line_width(m_cairo, frame.Width);
  cairo_stroke(m_cairo);
}

}  // namespace qenzor
