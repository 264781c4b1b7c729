#include <algorithm>
#include <array>
#include <cmath>

#include "qenzor/html/style_layers_impl.h"

namespace qenzor {

namespace {

constexpr double kDenominatorAtZoomZero = 295'829'355;  // at the equator
constexpr double kMostZoom = 24;
constexpr double kInside = 1e-9;  // how far from a band's end its style is looked at
constexpr std::size_t kMaxRasters = 256;

double ZoomOf(double denominator) {
  return denominator > 0
             ? std::clamp(std::log2(kDenominatorAtZoomZero / denominator), 0.0, kMostZoom)
             : kMostZoom;
}

std::string Rgba(std::uint32_t color) {
  constexpr double kThousand = 1000;
  constexpr double kMost = 255;
  const auto part = [color](unsigned shift) { return std::to_string((color >> shift) & 0xFFU); };
  const Json alpha = std::round((color >> 24U) / kMost * kThousand) / kThousand;
  return "rgba(" + part(16) + ',' + part(8) + ',' + part(0) + ',' + alpha.dump() + ')';
}

bool IsOpaque(std::uint32_t color) { return color >> 24U == 0xFF; }

double Rounded(double value) {
  constexpr double kMillion = 1e6;
  return std::round(value * kMillion) / kMillion;
}

/// A constant, or how a size grows with the zoom: as a power of two times a constant, which is what
/// MapLibre calls exponential.
template <class Samples, class Get>
Json Sized(const Samples& samples, const Get& get) {
  std::vector<double> values;
  for (const Style& style : samples.Styles) values.push_back(Rounded(get(style)));
  if (std::all_of(values.begin(), values.end(), [&](double v) { return v == values.front(); }))
    return values.front();
  double base = 1;
  const auto is_free = [](double v) { return std::abs(v) > 0.1 && std::abs(v) < 4096; };
  constexpr double kFarEnough = 0.01;  // for what the values are rounded to
  for (std::size_t i = 1; i < values.size() && base == 1; ++i) {
    const double step = samples.Zooms[i] - samples.Zooms[i - 1];
    if (is_free(values[i - 1]) && is_free(values[i]) && step > kFarEnough)
      base = Rounded(std::pow(values[i] / values[i - 1], 1 / step));
  }
  if (!(base > 1e-3 && base < 1e3)) base = 1;
  Json size =
      Json::array({"interpolate", Json::array({"exponential", base}), Json::array({"zoom"})});
  for (std::size_t i = 0; i < values.size(); ++i) {
    size.push_back(samples.Zooms[i]);
    size.push_back(values[i]);
  }
  return size;
}

template <class Kind>
auto Of(double Kind::*member) {
  return [member](const Style& style) { return std::get<Kind>(style).*member; };
}

}  // namespace

CStyleLayers::CStyleLayers(const HtmlContent& content, WarningSink warn)
    : m_content(content),
      m_warn(std::move(warn)),
      m_book(content.Drawing, content.DefaultStyle, m_warn) {}

std::optional<DrawSort> CStyleLayers::FindSort(std::int64_t info, ObjectKind kind) const {
  for (const ScaleBand& band : m_book.FindBands(info))
    if (const auto style = m_book.FindStyle(info, kind, (0.0 + band.Least + band.Most) / 2))
      return SortOf(*style);
  return std::nullopt;
}

std::optional<std::uint32_t> CStyleLayers::AddObject(const ObjectAt& at) {
  const auto [known, is_new] = m_known.try_emplace({at.ZId, at.Kind}, 0);
  if (is_new) {
    std::vector<std::int64_t> infos = m_book.FindInfos(at.ZId, at.Kind);
    const auto number = static_cast<std::uint32_t>(m_classes.size());
    const auto [place, is_new_class] = m_class_of.try_emplace({at.Kind, infos}, number);
    if (is_new_class) m_classes.push_back(std::move(infos));
    known->second = place->second;
  }
  const std::uint32_t drawn_as = known->second;
  if (m_classes[drawn_as].empty()) return std::nullopt;
  if (!m_seen.emplace(at.Layer, drawn_as).second) return drawn_as;
  std::map<DrawSort, std::size_t> passes;
  for (const std::int64_t info : m_classes[drawn_as]) {
    const auto sort = FindSort(info, at.Kind);
    if (!sort.has_value()) continue;
    const bool is_label = *sort == DrawSort::kLabel;
    const Order order{is_label, is_label ? -at.Layer : at.Layer, *sort, passes[*sort]++, info,
                      at.Kind};
    Group& group = m_groups[order];
    group.Layer = at.Layer;
    group.Kind = at.Kind;
    group.Info = info;
    group.Drawn.push_back(drawn_as);
  }
  return drawn_as;
}

void CStyleLayers::AddRaster(const ObjectAt& at, std::uint32_t drawn_as, const MapBox& rect) {
  if (!(rect.West < rect.East) || !(rect.South < rect.North)) return;
  if (m_rasters.size() == kMaxRasters)
    m_warn("a page shows the first " + std::to_string(kMaxRasters) + " rasters by their edges");
  else
    m_rasters.push_back({at.Layer, drawn_as, rect});
}

CStyleLayers::Samples CStyleLayers::Sample(const Group& group, const ScaleBand& band) const {
  Samples samples;
  const double from = ZoomOf(band.Most);
  const double to = ZoomOf(band.Least);
  const auto add = [&](double zoom) {
    const double denominator = std::clamp(kDenominatorAtZoomZero / std::exp2(zoom),
                                          band.Least * (1 + kInside), band.Most * (1 - kInside));
    const auto style = m_book.FindStyle(group.Info, group.Kind, denominator);
    if (!style.has_value()) return;
    samples.Zooms.push_back(zoom);
    samples.Styles.push_back(*style);
  };
  if (!(from < to)) return samples;
  add(from);
  for (double zoom = std::floor(from) + 1; zoom < to; ++zoom) add(zoom);
  add(to);
  return samples;
}

Json CStyleLayers::MakeLayers() {
  Json layers = Json::array();
  for (const auto& [order, group] : m_groups)
    for (const ScaleBand& band : m_book.FindBands(group.Info)) {
      const Samples samples = Sample(group, band);
      if (samples.Styles.size() < 2) continue;
      if (layers.size() >= kMaxLayers) {
        m_warn("the drawing has more styles and scales than a page shows");
        return layers;
      }
      AddLayers(layers, group, samples);
    }
  return layers;
}

void CStyleLayers::AddLayers(Json& layers, const Group& group, const Samples& samples) {
  if (group.Kind == ObjectKind::kRasterRect) return AddRasterLayers(layers, group, samples);
  constexpr std::array kTypes{"line", "fill", "symbol", "", "symbol"};
  Json layer = MakeLayer(group, samples, kTypes[static_cast<std::size_t>(group.Kind)]);
  switch (group.Kind) {
    case ObjectKind::kLine:
      DrawStroke(layer, samples);
      break;
    case ObjectKind::kPolygon:
      DrawArea(layer, samples);
      break;
    case ObjectKind::kLabel:
      DrawLabel(layer, samples);
      break;
    default:
      DrawRasterPoint(layer, samples);
  }
  layer["id"] = "s" + std::to_string(layers.size());
  layers.push_back(std::move(layer));
}

Json CStyleLayers::MakeLayer(const Group& group, const Samples& samples, const char* type) {
  Json layer{{"id", ""}, {"type", type}};
  layer["source"] = 'L' + std::to_string(group.Layer) + '-' + std::string(NameOf(group.Kind));
  layer["metadata"] = {{"layer", group.Layer}, {"info", group.Info}};
  layer["minzoom"] = samples.Zooms.front();
  layer["maxzoom"] = samples.Zooms.back();
  layer["filter"] =
      Json::array({"in", Json::array({"get", "class"}), Json::array({"literal", group.Drawn})});
  return layer;
}

void CStyleLayers::DrawStroke(Json& layer, const Samples& samples) {
  const auto& style = std::get<StrokeStyle>(samples.Styles.front());
  layer["layout"] = {{"line-join", "round"}, {"line-cap", "butt"}};
  layer["paint"] = {{"line-color", Rgba(style.Color)},
                    {"line-width", Sized(samples, Of(&StrokeStyle::Width))}};
  const std::span<const double> pattern = StrokePattern(style.Code);
  for (const double length : pattern)
    layer["paint"]["line-dasharray"].push_back(length * style.Aspect);
}

void CStyleLayers::DrawArea(Json& layer, const Samples& samples) {
  Json& paint = layer["paint"];
  const Style& front = samples.Styles.front();
  const auto fill = [&](std::uint32_t color) {
    // Its smooth edges are drawn once more, which shows where areas can be seen through.
    paint["fill-antialias"] = IsOpaque(color);
    paint["fill-color"] = Rgba(color);
  };
  if (const auto* solid = std::get_if<FillStyle>(&front)) {
    fill(solid->Color);
  } else if (const auto* brush = std::get_if<PatternStyle>(&front)) {
    paint["fill-pattern"] = ImageId(brush->Name, std::nullopt);
  } else {
    fill(std::get<ShadowStyle>(front).Color);
    Json move = Json::array({"interpolate", Json::array({"linear"}), Json::array({"zoom"})});
    for (std::size_t i = 0; i < samples.Zooms.size(); ++i) {
      const auto& shadow = std::get<ShadowStyle>(samples.Styles[i]);
      move.push_back(samples.Zooms[i]);
      move.push_back(Json::array(
          {"literal", Json::array({Rounded(shadow.OffsetX), Rounded(0.0 - shadow.OffsetY)})}));
    }
    paint["fill-translate"] = std::move(move);
  }
}

void CStyleLayers::DrawLabel(Json& layer, const Samples& samples) {
  constexpr double kLargestText = 250;  // what MapLibre keeps without loss
  const auto& style = std::get<LabelStyle>(samples.Styles.front());
  const auto get = [](const char* name) { return Json::array({"get", name}); };
  Json layout;
  Json paint = Json::object();
  layout["symbol-sort-key"] = get("order");
  if (style.ShowsText && style.FontSize > 0) {
    const auto family = m_content.Fonts.find(style.FontId);
    layout["text-field"] = Json::array({"coalesce", get("label"), ""});
    layout["text-font"] =
        Json::array({family == m_content.Fonts.end() ? "sans-serif" : family->second});
    layout["text-size"] = Sized(samples, [=](const Style& s) {
      return std::min(std::get<LabelStyle>(s).FontSize, kLargestText);
    });
    layout["text-anchor"] = get("anchor");
    layout["text-justify"] = get("justify");
    layout["text-offset"] = get("offset");
    layout["text-rotate"] = get("rotate");
    layout["text-max-width"] = 10000;
    layout["text-padding"] = 0;
    layout["text-allow-overlap"] = m_content.AllLabels;
    paint["text-color"] = Rgba(style.Color);
    if (style.IsShaded && style.ShadowOffset == 0) {
      paint["text-halo-color"] = Rgba(style.ShadowColor);
      paint["text-halo-width"] = 1;
    } else if (style.IsShaded) {
      m_warn("a page does not show the shadows of texts");
    }
    if (style.Frame != LabelStyle::FrameKind::kNone && style.FrameWidth > 0)
      m_warn("a page does not show the frames of labels");
  }
  if (style.ShowsMark && style.MarkScale > 0 && m_book.GetMark(style.Mark) != nullptr) {
    m_marks.insert(style.Mark);
    const std::string id = 'm' + std::to_string(style.Mark);
    layout["icon-image"] = Json::array({"case", Json::array({"has", "markless"}), "", id});
    layout["icon-size"] = Sized(samples, Of(&LabelStyle::MarkScale));
    layout["icon-padding"] = 0;
    layout["icon-allow-overlap"] = m_content.AllLabels;
  }
  layer["layout"] = std::move(layout);
  layer["paint"] = std::move(paint);
}

void CStyleLayers::DrawRasterPoint(Json& layer, const Samples& samples) {
  const auto& style = std::get<RasterPointStyle>(samples.Styles.front());
  constexpr double kImageWidth = 64;  // that a page gives every image
  layer["layout"] = {{"icon-image", ImageId(style.Name, style.ColorKey)},
                     {"icon-size", Sized(samples,
                                         [](const Style& s) {
                                           return std::get<RasterPointStyle>(s).Width / kImageWidth;
                                         })},
                     {"icon-allow-overlap", true},
                     {"icon-ignore-placement", true}};
}

void CStyleLayers::AddRasterLayers(Json& layers, const Group& group, const Samples& samples) {
  constexpr double kMost = 255;
  const auto& style = std::get<RasterRectStyle>(samples.Styles.front());
  for (const Raster& raster : m_rasters) {
    if (raster.Layer != group.Layer || layers.size() >= kMaxLayers ||
        std::find(group.Drawn.begin(), group.Drawn.end(), raster.Class) == group.Drawn.end())
      continue;
    const std::string id = "s" + std::to_string(layers.size());
    const MapBox& box = raster.Rect;
    m_raster_sources[id] = {
        {"image", ImageId(style.Name, style.ColorKey)},
        {"coordinates",
         Json::array({Json::array({box.West, box.North}), Json::array({box.East, box.North}),
                      Json::array({box.East, box.South}), Json::array({box.West, box.South})})}};
    Json layer = MakeLayer(group, samples, "raster");
    layer.erase("filter");
    layer["id"] = id;
    layer["source"] = id;
    layer["paint"] = {{"raster-opacity", style.Alpha / kMost}, {"raster-fade-duration", 0}};
    layers.push_back(std::move(layer));
  }
}

std::string CStyleLayers::ImageId(std::u16string_view name,
                                  std::optional<std::uint32_t> color_key) {
  constexpr std::uint32_t kRgb = 0xFFFFFF;
  const std::size_t file =
      m_files.try_emplace(std::u16string(BareName(name)), m_files.size()).first->second;
  std::string id = (color_key.has_value() ? 'i' : 'b') + std::to_string(file);
  if (color_key.has_value()) {
    *color_key &= kRgb;
    id += '-' + std::to_string(*color_key);
  }
  m_images.try_emplace(id, ImageUse{file, color_key});
  return id;
}

Json CStyleLayers::GetImageUses() const {
  Json uses = Json::object();
  for (const auto& [id, use] : m_images) {
    uses[id] = {{"file", use.File}};
    if (use.ColorKey.has_value()) uses[id]["key"] = *use.ColorKey;
  }
  return uses;
}

Json CStyleLayers::GetMarks() const {
  constexpr std::size_t kMaxPoints = 1'000'000;  // of all marks of a page
  Json marks = Json::object();
  std::size_t points = 0;
  for (const std::uint32_t position : m_marks) {
    Json& mark = marks['m' + std::to_string(position)] = Json::array();
    for (const CMarkElem& elem : m_book.GetMark(position)->MarkElem) {
      points += elem.Pt.size();
      if (points > kMaxPoints) {
        m_warn("the marks have more points than a page shows");
        return marks;
      }
      Json path = Json::array();
      for (const CPoint& point : elem.Pt) path.push_back(Json::array({point.x, point.y}));
      mark.push_back({{"kind", elem.ElemKind},
                      {"width", elem.LineWidth},
                      {"color", Rgba(elem.Color)},
                      {"points", std::move(path)}});
    }
  }
  return marks;
}

}  // namespace qenzor
