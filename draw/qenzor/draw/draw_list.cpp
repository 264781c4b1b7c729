#include "qenzor/draw/draw_list.h"

#include <algorithm>
#include <memory>
#include <string>
#include <tuple>
#include <utility>

#include "qenzor/qen/cmb_lbl_obj.h"
#include "qenzor/qen/ras_ll_obj.h"
#include "qenzor/view/label_placement.h"
#include "qenzor/view/walk.h"

namespace qenzor {

namespace {

constexpr double kMaxOffset = 4096;
constexpr std::int16_t kLineElem = 1;
constexpr std::int16_t kAreaElem = 2;

bool ShowsText(const CCmbLblObj& label, const LabelStyle& style) {
  return style.ShowsText && !label.IsRestrainShowLabel() && !label.Text.empty() &&
         style.FontSize > 0;
}

bool ShowsMark(const CCmbLblObj& label, const LabelStyle& style) {
  return style.ShowsMark && !label.IsRestrainShowMark() && style.MarkScale > 0;
}

TextOp TextOf(const CCmbLblObj& label, const LabelStyle& style, const MapPoint& at) {
  TextOp op;
  op.Text = label.Text;
  op.Color = style.Color;
  op.FontId = style.FontId;
  op.Size = style.FontSize;
  op.At = at;
  const LabelPlacement placement = PlacementOf(label);
  op.OffsetX = std::clamp(placement.OffsetX * style.FontSize, -kMaxOffset, kMaxOffset);
  op.OffsetY = std::clamp(placement.OffsetY * style.FontSize, -kMaxOffset, kMaxOffset);
  op.Anchor = placement.Anchor;
  op.Align = static_cast<std::uint8_t>(placement.Align);
  op.Angle = placement.Angle;
  op.IsVertical = placement.IsVertical;
  if (style.Frame != LabelStyle::FrameKind::kNone && style.FrameWidth > 0)
    op.Frame = LabelFrame{static_cast<std::uint8_t>(style.Frame), style.FrameColor,
                          style.FrameWidth, style.FrameMargin};
  if (style.IsShaded) op.Shadow = TextShadow{style.ShadowColor, style.ShadowOffset};
  return op;
}

}  // namespace

/// Collects the things, in the order of the file.
class CDrawList::CBuilder {
 public:
  CBuilder(CDrawList& list, CStyleBook& styles, double denominator, const WarningSink& warn)
      : m_list(list), m_styles(styles), m_denominator(denominator), m_warn(warn) {}

  /// False when there are too many.
  bool Add(const ObjectAt& at) {
    std::array<std::uint16_t, static_cast<std::size_t>(DrawSort::kLabel) + 1> passes{};
    for (const Applied& applied : StylesOf(at)) {
      const Style& style = m_list.m_styles[applied.Style];
      const DrawSort sort = SortOf(style);
      const std::uint16_t pass = passes[static_cast<std::size_t>(sort)]++;
      if (!IsDrawn(at, style)) continue;
      if (m_list.m_things.size() == kMaxThings) return false;
      const auto sequence = static_cast<std::uint32_t>(m_list.m_things.size());
      m_list.m_things.push_back({at.Object, at.ZId, at.Index, applied.Style, applied.Info, sequence,
                                 pass, at.Layer, at.Segment, sort, at.Kind});
    }
    return true;
  }

 private:
  struct Applied {
    std::uint32_t Style;
    std::uint32_t Info;
  };

  /// Objects of one z-id mostly follow each other, but need not.
  const std::vector<Applied>& StylesOf(const ObjectAt& at) {
    constexpr std::size_t kMaxKept = 1'000'000;
    auto& by_id = m_by_kind[static_cast<std::size_t>(at.Kind)];
    if (const auto known = by_id.find(at.ZId); known != by_id.end()) return known->second;
    if (m_kept > kMaxKept) {
      for (auto& kind : m_by_kind) kind.clear();
      m_kept = 0;
    }
    std::vector<Applied> applied;
    for (AppliedStyle& style : m_styles.Find(at.ZId, at.Kind, m_denominator)) {
      const auto info = static_cast<std::uint32_t>(style.Info + 1);
      // A draw info is the same style wherever it is used; the default is one for each kind.
      const std::int64_t key =
          style.Info == kDefaultInfo ? -1 - static_cast<std::int64_t>(at.Kind) : style.Info;
      const auto [place, is_new] =
          m_style_of.try_emplace(key, static_cast<std::uint32_t>(m_list.m_styles.size()));
      if (is_new) m_list.m_styles.push_back(std::move(style.How));
      applied.push_back({place->second, info});
    }
    m_kept += applied.size() + 1;
    return by_id.emplace(at.ZId, std::move(applied)).first->second;
  }

  bool IsDrawn(const ObjectAt& at, const Style& style) {
    const std::size_t points = PointsOf(at.Kind, *at.Object).size();
    if (at.Kind == ObjectKind::kPolygon) return points >= 3;
    if (const auto* stroke = std::get_if<StrokeStyle>(&style))
      return points >= 2 && stroke->Width > 0;
    if (const auto* raster = std::get_if<RasterPointStyle>(&style)) return raster->Width > 0;
    if (at.Kind == ObjectKind::kRasterRect) {
      const CRect& rect = at.As<CRasLLObj>().Rect;
      return rect.left < rect.right && rect.top < rect.bottom;
    }
    const auto& label = at.As<CCmbLblObj>();
    const auto& how = std::get<LabelStyle>(style);
    const bool has_mark = ShowsMark(label, how) && FindMark(how.Mark) != nullptr;
    return has_mark || ShowsText(label, how);
  }

  const CMarkData* FindMark(std::uint32_t position) {
    const auto [place, is_new] = m_list.m_marks.try_emplace(position, nullptr);
    if (!is_new) return place->second;
    const CMarkData* mark = m_styles.GetMark(position);
    place->second = mark;
    if (mark == nullptr) {
      m_warn("mark " + std::to_string(position) + " is not there");
      return nullptr;
    }
    for (const CMarkElem& elem : mark->MarkElem)
      if (elem.ElemKind != kLineElem && elem.ElemKind != kAreaElem) {
        m_warn("mark " + std::to_string(position) + " has an element of kind " +
               std::to_string(elem.ElemKind) + ", which is not drawn");
        break;
      }
    return mark;
  }

  CDrawList& m_list;
  CStyleBook& m_styles;
  double m_denominator;
  const WarningSink& m_warn;
  std::unordered_map<std::int64_t, std::uint32_t> m_style_of;
  std::array<std::unordered_map<std::uint64_t, std::vector<Applied>>, kObjectKinds> m_by_kind;
  std::size_t m_kept = 0;
};

Result<CDrawList> CDrawList::Make(const CQen& map, const CFrame& frame, const Filters& filters,
                                  CStyleBook& styles, double denominator, const WarningSink& warn) {
  std::unique_ptr<CDrawList> list(new CDrawList(frame));
  CBuilder builder(*list, styles, denominator, warn);
  CObjectCursor cursor(map, frame, filters);
  while (const ObjectAt* at = cursor.Next())
    if (!builder.Add(*at)) {
      Failure failure;
      failure.Kind = FailureKind::kTooLarge;
      failure.Reason =
          "more than " + std::to_string(kMaxThings) + " things would be drawn: take a smaller box";
      return failure;
    }
  std::sort(list->m_things.begin(), list->m_things.end(), &IsBefore);
  return list;
}

bool CDrawList::IsBefore(const Thing& a, const Thing& b) {
  const auto key = [](const Thing& t) {
    return t.What == DrawSort::kLabel
               ? std::tuple(true, std::uint16_t{0}, t.What, std::uint16_t{0}, 0U, t.Sequence)
               : std::tuple(false, t.Layer, t.What, t.Pass, t.Info, t.Sequence);
  };
  return key(a) < key(b);
}

void CDrawList::ForEach(const DrawSink& sink) const {
  std::vector<MapPoint> points;
  CSegmentFrame frame;
  const Thing* last = nullptr;
  for (const Thing& thing : m_things) {
    if (last == nullptr || last->Segment != thing.Segment)
      frame = m_frame.ForSegment(thing.Segment);
    last = &thing;
    Hand(thing, frame, points, sink);
  }
}

void CDrawList::Hand(const Thing& thing, const CSegmentFrame& frame, std::vector<MapPoint>& points,
                     const DrawSink& sink) const {
  points.clear();
  for (const CPoint& point : PointsOf(thing.Kind, *thing.Object)) points.push_back(frame.At(point));
  const DrawOrigin origin{
      thing.Layer, thing.Segment, thing.ZId, thing.Index, std::int64_t{thing.Info} - 1,
      thing.Pass,  thing.Sequence};
  const auto hand = [&](const auto& style) {
    using S = std::decay_t<decltype(style)>;
    if constexpr (std::is_same_v<S, ShadowStyle>) {
      sink(origin, ShadowOp{style.Color, style.OffsetX, style.OffsetY, points});
    } else if constexpr (std::is_same_v<S, FillStyle>) {
      sink(origin, FillOp{style.Color, points});
    } else if constexpr (std::is_same_v<S, PatternStyle>) {
      sink(origin, PatternOp{BareName(style.Name), points});
    } else if constexpr (std::is_same_v<S, StrokeStyle>) {
      sink(origin, StrokeOp{style.Color, style.Width, style.Code, style.Aspect, points});
    } else if constexpr (std::is_same_v<S, RasterRectStyle>) {
      const CRect& rect = static_cast<const CRasLLObj*>(thing.Object)->Rect;
      sink(origin,
           ImageOp{BareName(style.Name), style.ColorKey, frame.At(rect), style.Alpha, {}, 0});
    } else if constexpr (std::is_same_v<S, RasterPointStyle>) {
      sink(origin, ImageOp{BareName(style.Name), style.ColorKey, {}, 255, points[0], style.Width});
    } else {
      const auto& label = *static_cast<const CCmbLblObj*>(thing.Object);
      if (ShowsMark(label, style))
        if (const CMarkData* mark = m_marks.at(style.Mark))
          sink(origin, MarkOp{style.Mark, mark, style.MarkScale, points[0]});
      if (ShowsText(label, style)) sink(origin, TextOf(label, style, points[0]));
    }
  };
  std::visit(hand, m_styles[thing.Style]);
}

}  // namespace qenzor
