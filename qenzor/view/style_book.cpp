#include "qenzor/view/style_book.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <utility>

#include "qenzor/zor/cmb_lbl_draw_info.h"
#include "qenzor/zor/line_draw_info.h"
#include "qenzor/zor/poly_bmp_brush_draw_info.h"
#include "qenzor/zor/poly_shadow_draw_info.h"
#include "qenzor/zor/poly_solid_brush_draw_info.h"
#include "qenzor/zor/ras_ll_draw_info.h"
#include "qenzor/zor/ras_mm_draw_info.h"

namespace qenzor {

namespace {

constexpr double kMaxSize = 4096;
constexpr double kMinWidth = 0.1;
constexpr std::uint8_t kLastLineCode = 4;
constexpr std::uint8_t kLastFrameKind = 3;

float FiniteOr(float value, float otherwise) { return std::isfinite(value) ? value : otherwise; }

/// What a resolution knows beside the draw info: the scale, and whom to tell of odd values.
struct Scale {
  double Denominator;
  const WarningSink* Warn;
  std::int64_t Info;

  template <class Record>
  double Size(double stored, const Record& record) const {
    return SizeAt(stored, record.DenomMax, record.Sensitivity, Denominator);
  }
  template <class Record>
  double Width(double stored, const Record& record) const {
    return WidthAt(stored, record.DenomMax, record.Sensitivity, Denominator);
  }
  void Say(const std::string& what) const {
    if (*Warn) (*Warn)("draw info " + std::to_string(Info) + ' ' + what);
  }
};

// Which kind of object a draw info draws, and how it does with one of its records.

constexpr ObjectKind DrawnBy(const CLineDrawInfo* /*info*/) { return ObjectKind::kLine; }
constexpr ObjectKind DrawnBy(const CPolySolidBrushDrawInfo* /*info*/) {
  return ObjectKind::kPolygon;
}
constexpr ObjectKind DrawnBy(const CPolyBmpBrushDrawInfo* /*info*/) { return ObjectKind::kPolygon; }
constexpr ObjectKind DrawnBy(const CPolyShadowDrawInfo* /*info*/) { return ObjectKind::kPolygon; }
constexpr ObjectKind DrawnBy(const CCmbLblDrawInfo* /*info*/) { return ObjectKind::kLabel; }
constexpr ObjectKind DrawnBy(const CRasLLDrawInfo* /*info*/) { return ObjectKind::kRasterRect; }
constexpr ObjectKind DrawnBy(const CRasMMDrawInfo* /*info*/) { return ObjectKind::kRasterPoint; }

Style Resolve(const CLineDrawInfo& info, const LineDrawScale& record, const Scale& scale) {
  StrokeStyle style{info.Color, info.LineCode, info.Aspect,
                    scale.Width(record.DenomMaxWidth, record)};
  if (style.Code > kLastLineCode) {
    scale.Say("has line code " + std::to_string(style.Code) + ", which is drawn solid");
    style.Code = 0;
  }
  if (!std::isfinite(info.Aspect) || info.Aspect <= 0) style.Aspect = 1;
  return style;
}

Style Resolve(const CPolySolidBrushDrawInfo& info, const PolySolidBrushDrawScale& /*record*/,
              const Scale& /*scale*/) {
  return FillStyle{info.Color};
}

Style Resolve(const CPolyBmpBrushDrawInfo& info, const PolyBmpBrushDrawScale& /*record*/,
              const Scale& /*scale*/) {
  return PatternStyle{info.BrushFileName};
}

Style Resolve(const CPolyShadowDrawInfo& info, const PolyShadowDrawScale& record,
              const Scale& scale) {
  return ShadowStyle{info.ShadowColor, scale.Size(record.DenomMaxOffset.x, record),
                     scale.Size(record.DenomMaxOffset.y, record)};
}

Style Resolve(const CCmbLblDrawInfo& info, const CmbLblDrawScale& record, const Scale& scale) {
  LabelStyle style;
  style.ShowsText = info.IsShowLabel();
  style.ShowsMark = info.IsShowMark();
  style.Mark = info.MarkDataIdx;
  style.MarkScale = std::max(0.0, scale.Size(FiniteOr(record.DenomMaxMarkScale, 0), record));
  style.FontId = info.FontId;
  style.FontSize = scale.Size(record.DenomMaxFontSize, record);
  style.Color = info.FontColor;
  if (info.FrameCtrl > kLastFrameKind)
    scale.Say("has frame kind " + std::to_string(info.FrameCtrl) + ", which is drawn as 1");
  style.Frame = info.FrameCtrl > kLastFrameKind ? LabelStyle::FrameKind::kRectangle
                                                : LabelStyle::FrameKind{info.FrameCtrl};
  style.FrameColor = info.FrameColor;
  style.FrameWidth = scale.Width(record.DenomMaxFrameWidth, record);
  style.FrameMargin = scale.Size(record.DenomMaxFrameMgn, record);
  style.IsShaded = info.IsLabelShaded();
  style.ShadowColor = info.ShadowColor;
  style.ShadowOffset = scale.Size(record.DenomMaxShadowOffset, record);
  return style;
}

Style Resolve(const CRasLLDrawInfo& info, const RasLLDrawScale& record, const Scale& /*scale*/) {
  return RasterRectStyle{info.RasFileName, info.ColorKey, record.Alpha};
}

Style Resolve(const CRasMMDrawInfo& info, const RasMMDrawScale& record, const Scale& scale) {
  return RasterPointStyle{info.RasFileName, info.ColorKey,
                          scale.Size(record.DenomMaxRasWidth, record)};
}

/// True when the draw info is an Info; then with the kind that it draws and, if a record holds, the
/// style.
template <class Info>
bool TryInfo(CAbstractDrawInfo& any, const Scale& scale, std::optional<ObjectKind>& draws,
             std::optional<Style>& style) {
  const Info* info = class_cast<Info>(&any);
  if (info == nullptr) return false;
  draws = DrawnBy(info);
  for (const auto& record : info->ScData)
    if (record.DenomMin <= scale.Denominator && scale.Denominator <= record.DenomMax) {
      style = Resolve(*info, record, scale);
      break;
    }
  return true;
}

template <class... Infos>
void ResolveAny(CAbstractDrawInfo& any, const Scale& scale, std::optional<ObjectKind>& draws,
                std::optional<Style>& style) {
  static_cast<void>((TryInfo<Infos>(any, scale, draws, style) || ...));
}

Style DefaultStyle(ObjectKind kind) {
  constexpr std::uint32_t kBlack = 0xFF000000;
  constexpr std::uint32_t kLightGrey = 0xFFD3D3D3;
  constexpr double kFontSize = 10;
  constexpr double kRasterWidth = 32;
  switch (kind) {
    case ObjectKind::kLine:
      return StrokeStyle{kBlack, 0, 1, 1};
    case ObjectKind::kPolygon:
      return FillStyle{kLightGrey};
    case ObjectKind::kLabel: {
      LabelStyle style;
      style.Color = kBlack;
      style.FontSize = kFontSize;
      return style;
    }
    case ObjectKind::kRasterRect:
      return RasterRectStyle{};
    case ObjectKind::kRasterPoint:
      break;
  }
  return RasterPointStyle{u"", 0, kRasterWidth};
}

}  // namespace

double SizeAt(double stored, std::uint32_t denom_max, float sensitivity, double denominator) {
  if (stored == 0) return 0;
  const double factor = std::pow(denom_max / denominator, FiniteOr(sensitivity, 0));
  return std::clamp(stored * factor, -kMaxSize, kMaxSize);
}

double WidthAt(double stored, std::uint32_t denom_max, float sensitivity, double denominator) {
  return stored == 0 ? 0 : std::max(kMinWidth, SizeAt(stored, denom_max, sensitivity, denominator));
}

CStyleBook::CStyleBook(const CZor* drawing, bool default_style, WarningSink warn)
    : m_drawing(drawing),
      m_default_style(default_style || drawing == nullptr),
      m_warn(std::move(warn)) {}

const CStyleBook::Resolved& CStyleBook::Resolve(std::uint32_t index, double denominator) {
  const CDrawInfoSet& infos = *m_drawing->DrawData.DrawInfoSet;
  if (m_denominator != denominator) {
    m_denominator = denominator;
    m_resolved.assign(infos.GetElemCount(), {});
  }
  Resolved& resolved = m_resolved[index];
  if (!resolved.IsKnown) {
    resolved.IsKnown = true;
    ResolveAny<CLineDrawInfo, CPolySolidBrushDrawInfo, CPolyBmpBrushDrawInfo, CPolyShadowDrawInfo,
               CCmbLblDrawInfo, CRasLLDrawInfo, CRasMMDrawInfo>(
        *infos.GetElem(index), {denominator, &m_warn, index}, resolved.Draws, resolved.How);
  }
  return resolved;
}

std::vector<AppliedStyle> CStyleBook::Find(std::uint64_t z_id, ObjectKind kind,
                                           double denominator) {
  const CZorDrawData* data = m_drawing == nullptr ? nullptr : &m_drawing->DrawData;
  const CDrawAtter* atter = data == nullptr || data->DrawAtterSet == nullptr
                                ? nullptr
                                : data->DrawAtterSet->GetElem(z_id);
  std::vector<AppliedStyle> styles;
  if (atter == nullptr) {
    if (m_default_style) styles.push_back({kDefaultInfo, DefaultStyle(kind)});
    return styles;
  }
  if (atter->DrawInfoIdxSet == nullptr) return styles;
  const auto warn = [&](const std::string& what) {
    if (m_warn) m_warn("z-id " + std::to_string(z_id) + ": " + what);
  };
  const auto& indices = atter->DrawInfoIdxSet->DrawInfoIdx;
  const std::uint32_t infos = data->DrawInfoSet == nullptr ? 0 : data->DrawInfoSet->GetElemCount();
  if (indices.size() > kMaxInfos)
    warn("only the first " + std::to_string(kMaxInfos) + " draw infos are used");
  for (std::size_t i = 0; i < std::min<std::size_t>(indices.size(), kMaxInfos); ++i) {
    const std::uint32_t index = indices[i];
    if (index >= infos) {
      warn("draw info " + std::to_string(index) + " is not there");
      continue;
    }
    const Resolved& resolved = Resolve(index, denominator);
    if (resolved.Draws != kind)
      warn("draw info " + std::to_string(index) + " does not draw a " + std::string(NameOf(kind)));
    else if (resolved.How.has_value())
      styles.push_back({index, *resolved.How});
  }
  return styles;
}

const CMarkData* CStyleBook::GetMark(std::uint32_t position) const {
  const CMarkDataSet* marks =
      m_drawing == nullptr ? nullptr : m_drawing->DrawData.MarkDataSet.get();
  return marks == nullptr ? nullptr : marks->GetElem(position);
}

}  // namespace qenzor
