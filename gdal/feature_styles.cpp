#include "gdal/feature_styles.h"

#include <array>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <string_view>
#include <type_traits>
#include <variant>

#include "qenzor/platform/code_page.h"
#include "qenzor/qen/cmb_lbl_obj.h"

namespace qenzor::gdal {

namespace {

/// As #RRGGBBAA from 0xAARRGGBB.
std::string ColorOf(std::uint32_t color) {
  std::array<char, 16> text{};
  std::snprintf(text.data(), text.size(), "#%06X%02X", color & 0xFFFFFF, color >> 24);
  return text.data();
}

std::string Pixels(double size) {
  std::array<char, 32> text{};
  const auto [end, error] = std::to_chars(text.data(), text.data() + text.size(), size);
  static_cast<void>(error);
  return {text.data(), end};
}

/// A text between quotes, which it may not hold itself.
std::string QuotedText(std::u16string_view text) {
  std::string quoted = "\"";
  for (const char c : EncodeText(text, TextEncoding::kUtf8)) {
    if (c == '"' || c == '\\') quoted += '\\';
    quoted += c;
  }
  return quoted + '"';
}

std::string PatternOf(const StrokeStyle& stroke) {
  std::string pattern;
  for (const double step : StrokePattern(stroke.Code))
    pattern += (pattern.empty() ? "" : " ") + Pixels(step * stroke.Width * stroke.Aspect) + "px";
  return pattern.empty() ? "" : ",p:\"" + pattern + '"';
}

std::string ToolOf(const StrokeStyle& how) {
  if (how.Width == 0) return {};
  return "PEN(c:" + ColorOf(how.Color) + ",w:" + Pixels(how.Width) + "px" + PatternOf(how) +
         ",cap:b,j:r)";
}

std::string ToolOf(const FillStyle& how) { return "BRUSH(fc:" + ColorOf(how.Color) + ')'; }

std::string ToolOf(const PatternStyle& how) {
  return "BRUSH(id:" + QuotedText(BareName(how.Name)) + ')';
}

// Where its shadow falls no feature style can say: only that it lies beneath.
std::string ToolOf(const ShadowStyle& how) { return "BRUSH(fc:" + ColorOf(how.Color) + ",l:0)"; }

std::string TextTool(const LabelStyle& how, const CCmbLblObj& label) {
  // The anchors of feature styles by origin position kind; kinds without a name are as the first.
  constexpr std::array<int, 16> kAnchors{10, 10, 11, 12, 6, 9, 8, 7, 4, 5, 10, 10, 10, 10, 10, 10};
  constexpr double kDegree = 0.017453292519943295;
  std::string tool = "LABEL(t:" + QuotedText(label.Text) + ",s:" + Pixels(how.FontSize) +
                     "px,c:" + ColorOf(how.Color) +
                     ",p:" + std::to_string(kAnchors[label.CtrlFlgs & 0xF]);
  if (std::isfinite(label.Angle) && label.Angle != 0)
    tool += ",a:" + Pixels(std::fmod(label.Angle, 360));
  const double distance = label.LblOffsetFontRate * how.FontSize;
  const double direction = std::fmod(label.LblOffsetAngle, 360) * kDegree;
  if (std::isfinite(distance) && std::isfinite(direction) && distance != 0)
    tool += ",dx:" + Pixels(distance * std::cos(direction)) +
            "px,dy:" + Pixels(distance * std::sin(direction)) + "px";
  if (how.Frame != LabelStyle::FrameKind::kNone) tool += ",b:" + ColorOf(how.FrameColor);
  if (how.IsShaded) tool += (how.ShadowOffset == 0 ? ",o:" : ",h:") + ColorOf(how.ShadowColor);
  return tool + ')';
}

std::string ToolOf(const LabelStyle& how, const CCmbLblObj& label) {
  std::string tools;
  if (how.ShowsMark && how.MarkScale > 0 && !label.IsRestrainShowMark())
    tools = "SYMBOL(id:\"qenzor-mark-" + std::to_string(how.Mark) +
            ",ogr-sym-3\",s:" + Pixels(how.MarkScale) + ')';
  if (how.ShowsText && how.FontSize > 0 && !label.IsRestrainShowLabel() && !label.Text.empty())
    tools += (tools.empty() ? "" : ";") + TextTool(how, label);
  return tools;
}

std::string ToolOf(const RasterRectStyle& how) {
  return "BRUSH(id:" + QuotedText(BareName(how.Name)) + ')';
}

std::string ToolOf(const RasterPointStyle& how) {
  if (how.Width == 0) return {};
  return "SYMBOL(id:" + QuotedText(BareName(how.Name)) + ",s:" + Pixels(how.Width) + "px)";
}

}  // namespace

CFeatureStyles::CFeatureStyles(const CZor& drawing, std::optional<double> denominator)
    : m_book(&drawing), m_denominator(denominator) {}

std::vector<AppliedStyle> CFeatureStyles::FindLargest(std::uint64_t z_id, ObjectKind kind) {
  std::vector<AppliedStyle> styles;
  for (const std::int64_t info : m_book.FindInfos(z_id, kind)) {
    const std::vector<ScaleBand> bands = m_book.FindBands(info);
    if (bands.empty()) continue;
    if (auto style = m_book.FindStyle(info, kind, bands.back().Most))
      styles.push_back({info, std::move(*style)});
  }
  return styles;
}

std::string CFeatureStyles::Find(const ObjectAt& at) {
  const std::pair key(at.ZId, at.Kind);
  if (m_key == key && at.Kind != ObjectKind::kLabel) return m_style;
  if (m_key != key) {
    m_found = m_denominator.has_value() ? m_book.Find(at.ZId, at.Kind, *m_denominator)
                                        : FindLargest(at.ZId, at.Kind);
    m_key = key;
  }
  m_style.clear();
  for (const AppliedStyle& style : m_found) {
    const std::string tool = std::visit(
        [&](const auto& how) {
          if constexpr (std::is_same_v<decltype(how), const LabelStyle&>)
            return ToolOf(how, at.As<CCmbLblObj>());
          else
            return ToolOf(how);
        },
        style.How);
    if (!tool.empty()) m_style += (m_style.empty() ? "" : ";") + tool;
  }
  return m_style;
}

}  // namespace qenzor::gdal
