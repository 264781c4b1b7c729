#include "qenzor/view/style_book.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <span>
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
  std::uint32_t Info;  // its position

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

/// The classes that there are.
template <class... Infos>
struct InfoClasses {
  /// Calls visit with the draw info as what it is.
  template <class Visitor>
  static void Visit(CAbstractDrawInfo& any, const Visitor& visit) {
    const auto as = [&]<class Info>(const Info* info) {
      if (info != nullptr) visit(*info);
      return info != nullptr;
    };
    static_cast<void>((as(class_cast<Infos>(&any)) || ...));
  }
};
using AllInfos = InfoClasses<CLineDrawInfo, CPolySolidBrushDrawInfo, CPolyBmpBrushDrawInfo,
                             CPolyShadowDrawInfo, CCmbLblDrawInfo, CRasLLDrawInfo, CRasMMDrawInfo>;

std::optional<ObjectKind> KindDrawnBy(CAbstractDrawInfo& any) {
  std::optional<ObjectKind> kind;
  AllInfos::Visit(any, [&](const auto& info) { kind = DrawnBy(&info); });
  return kind;
}

std::optional<Style> StyleAt(CAbstractDrawInfo& any, const Scale& scale) {
  std::optional<Style> style;
  AllInfos::Visit(any, [&](const auto& info) {
    for (const auto& record : info.ScData)
      if (record.DenomMin <= scale.Denominator && scale.Denominator <= record.DenomMax) {
        style = Resolve(info, record, scale);
        break;
      }
  });
  return style;
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

std::span<const double> StrokePattern(std::uint8_t code) {
  constexpr double kDash = 4;
  constexpr double kDot = 1;
  constexpr double kGap = 2;
  static constexpr std::array kDashDotDot{kDash, kGap, kDot, kGap, kDot, kGap};
  static constexpr std::array kDotted{kDot, kGap};
  const std::span<const double> all(kDashDotDot);
  switch (code) {
    case 1:
      return all.first(2);
    case 2:
      return kDotted;
    case 3:
      return all.first(4);
    case 4:
      return all;
    default:
      return {};
  }
}

DrawSort SortOf(const Style& style) {
  constexpr std::array kSorts{DrawSort::kLine,   DrawSort::kArea,  DrawSort::kArea,
                              DrawSort::kShadow, DrawSort::kLabel, DrawSort::kImage,
                              DrawSort::kImage};
  static_assert(kSorts.size() == std::variant_size_v<Style>);
  return kSorts[style.index()];
}

std::u16string_view BareName(std::u16string_view name) {
  const std::size_t last = name.find_last_of(u"/\\:");
  return last == std::u16string_view::npos ? name : name.substr(last + 1);
}

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

const std::optional<Style>& CStyleBook::Resolve(std::uint32_t index, double denominator) {
  const CDrawInfoSet& infos = *m_drawing->DrawData.DrawInfoSet;
  if (m_denominator != denominator) {
    m_denominator = denominator;
    m_resolved.assign(infos.GetElemCount(), {});
  }
  auto& resolved = m_resolved[index];
  if (!resolved.has_value())
    resolved = StyleAt(*infos.GetElem(index), {denominator, &m_warn, index});
  return *resolved;
}

std::vector<std::int64_t> CStyleBook::FindInfos(std::uint64_t z_id, ObjectKind kind) {
  const CZorDrawData* data = m_drawing == nullptr ? nullptr : &m_drawing->DrawData;
  const CDrawAtter* atter = data == nullptr || data->DrawAtterSet == nullptr
                                ? nullptr
                                : data->DrawAtterSet->GetElem(z_id);
  std::vector<std::int64_t> found;
  if (atter == nullptr) {
    if (m_default_style) found.push_back(kDefaultInfo);
    return found;
  }
  if (atter->DrawInfoIdxSet == nullptr) return found;
  const auto warn = [&](const std::string& what) {
    if (m_warn) m_warn("z-id " + std::to_string(z_id) + ": " + what);
  };
  const auto& indices = atter->DrawInfoIdxSet->DrawInfoIdx;
  const std::uint32_t infos = data->DrawInfoSet == nullptr ? 0 : data->DrawInfoSet->GetElemCount();
  if (indices.size() > kMaxInfos)
    warn("only the first " + std::to_string(kMaxInfos) + " draw infos are used");
  for (std::size_t i = 0; i < std::min<std::size_t>(indices.size(), kMaxInfos); ++i) {
    const std::uint32_t index = indices[i];
    if (index >= infos)
      warn("draw info " + std::to_string(index) + " is not there");
    else if (KindDrawnBy(*data->DrawInfoSet->GetElem(index)) != kind)
      warn("draw info " + std::to_string(index) + " does not draw a " + std::string(NameOf(kind)));
    else
      found.push_back(index);
  }
  return found;
}

std::vector<AppliedStyle> CStyleBook::Find(std::uint64_t z_id, ObjectKind kind,
                                           double denominator) {
  std::vector<AppliedStyle> styles;
  for (const std::int64_t info : FindInfos(z_id, kind)) {
    if (info == kDefaultInfo)
      styles.push_back({info, DefaultStyle(kind)});
    else if (const auto& style = Resolve(static_cast<std::uint32_t>(info), denominator))
      styles.push_back({info, *style});
  }
  return styles;
}

std::optional<Style> CStyleBook::FindStyle(std::int64_t info, ObjectKind kind,
                                           double denominator) const {
  if (info == kDefaultInfo) return DefaultStyle(kind);
  const auto index = static_cast<std::uint32_t>(info);
  return StyleAt(*m_drawing->DrawData.DrawInfoSet->GetElem(index), {denominator, &m_warn, index});
}

std::vector<ScaleBand> CStyleBook::FindBands(std::int64_t info) const {
  if (info == kDefaultInfo) return {{0, std::numeric_limits<std::uint32_t>::max()}};
  std::vector<ScaleBand> bands;
  const auto index = static_cast<std::uint32_t>(info);
  AllInfos::Visit(*m_drawing->DrawData.DrawInfoSet->GetElem(index), [&](const auto& known) {
    const std::span records(known.ScData.begin(),
                            std::min<std::size_t>(known.ScData.size(), kMaxBandRecords));
    std::vector<std::uint32_t> ends;
    for (const auto& record : records) ends.insert(ends.end(), {record.DenomMin, record.DenomMax});
    std::sort(ends.begin(), ends.end());
    auto last = records.end();
    for (std::size_t i = 1; i < ends.size(); ++i) {
      if (ends[i - 1] == ends[i]) continue;
      const double middle = (static_cast<double>(ends[i - 1]) + ends[i]) / 2;
      const auto holds = std::find_if(records.begin(), records.end(), [&](const auto& record) {
        return record.DenomMin <= middle && middle <= record.DenomMax;
      });
      if (holds != records.end() && holds == last)
        bands.back().Most = ends[i];
      else if (holds != records.end())
        bands.push_back({ends[i - 1], ends[i]});
      last = holds;
    }
  });
  return bands;
}

const CMarkData* CStyleBook::GetMark(std::uint32_t position) const {
  const CMarkDataSet* marks =
      m_drawing == nullptr ? nullptr : m_drawing->DrawData.MarkDataSet.get();
  return marks == nullptr ? nullptr : marks->GetElem(position);
}

}  // namespace qenzor
