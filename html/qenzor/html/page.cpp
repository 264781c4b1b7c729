#include "qenzor/html/page.h"

#include <algorithm>
#include <array>
#include <set>
#include <string>

#include "qenzor/html/assets_impl.h"
#include "qenzor/html/image_files_impl.h"
#include "qenzor/html/script_writer_impl.h"
#include "qenzor/html/style_layers_impl.h"
#include "qenzor/platform/code_page.h"
#include "qenzor/qen/url_info.h"
#include "qenzor/view/geojson.h"
#include "qenzor/view/label_placement.h"
#include "qenzor/view/walk.h"

namespace qenzor {

namespace {

constexpr std::size_t kMaxToldCauses = 1000;

/// Nothing from anywhere else, and no script but those that stand in the page.
constexpr std::string_view kHead = R"(<!DOCTYPE html>
<html lang="en" data-state="loading">
<head>
<meta charset="utf-8">
<meta http-equiv="Content-Security-Policy" content="default-src 'none'; script-src 'unsafe-inline'; style-src 'unsafe-inline'; img-src data: blob:; connect-src data: blob:; worker-src blob:; child-src blob:">
<meta name="viewport" content="width=device-width, initial-scale=1">
)";
constexpr std::string_view kBody = R"(<body>
<div id="map"></div>
<aside>
<h1></h1>
<input type="search" placeholder="Find a label" aria-label="Find a label">
<div id="layers"></div>
<div id="object" data-object hidden></div>
<details><summary>Drawn by MapLibre GL JS</summary><pre>
)";

Failure Refuse(std::string reason) {
  Failure failure;
  failure.Kind = FailureKind::kWrongUsage;
  failure.Reason = std::move(reason);
  return failure;
}

void AppendKey(std::string& out, std::string_view key) {
  if (out.back() != '{') out += ',';
  (out += '"').append(key) += "\":";
}

void AppendNumber(std::string& out, std::string_view key, std::uint64_t number) {
  AppendKey(out, key);
  out += std::to_string(number);
}

void AppendLinks(std::string& out, const ObjectAt& at) {
  const CAddedObjInfoSet* infos = at.Object->AddedObjInfoSet.get();
  bool is_first = true;
  for (std::uint32_t i = 0; infos != nullptr && i < infos->GetElemCount(); ++i) {
    const auto* link = class_cast<const CUrlInfo>(infos->GetElem(i));
    if (link == nullptr) continue;
    if (is_first) {
      AppendKey(out, "links");
      out += '[';
    } else {
      out += ',';
    }
    is_first = false;
    AppendJsonText(out, link->Text);
  }
  if (!is_first) out += ']';
}

/// What MapLibre needs to set a label.
void AppendLabel(std::string& out, const CCmbLblObj& label) {
  constexpr std::array<std::string_view, 10> kAnchors{
      "",          "bottom-left", "bottom",   "bottom-right", "right",
      "top-right", "top",         "top-left", "left",         "center"};
  constexpr std::array<std::string_view, 3> kJustify{"left", "center", "right"};
  constexpr double kMostEms = 1000;
  constexpr int kDecimals = 6;
  AppendKey(out, "text");
  AppendJsonText(out, label.Text);
  if (!label.IsRestrainShowLabel() && !label.Text.empty()) {
    AppendKey(out, "label");
    AppendJsonText(out, label.Text);
  }
  if (label.IsRestrainShowMark()) AppendNumber(out, "markless", 1);
  const LabelPlacement placement = PlacementOf(label);
  AppendKey(out, "anchor");
  AppendJsonText(out, kAnchors[placement.Anchor]);
  AppendKey(out, "justify");
  AppendJsonText(out, kJustify[static_cast<std::size_t>(placement.Align)]);
  AppendKey(out, "offset");
  out += '[';
  AppendJsonNumber(out, std::clamp(placement.OffsetX, -kMostEms, kMostEms), kDecimals);
  out += ',';
  AppendJsonNumber(out, std::clamp(-placement.OffsetY, -kMostEms, kMostEms), kDecimals);
  out += ']';
  AppendKey(out, "rotate");
  AppendJsonNumber(out, -placement.Angle, kDecimals);
}

/// Writes the data of a page and gathers what is known when all objects have gone by.
class CPageData {
 public:
  CPageData(const HtmlContent& content, const CFrame& frame, CScriptWriter& out,
            const WarningSink& warn)
      : m_content(content), m_frame(frame), m_out(out), m_warn(warn), m_style(content, warn) {}

  void Write() {
    m_out.PutRaw("{\"features\":[");
    CObjectCursor cursor(*m_content.Map, m_frame, m_content.Which);
    while (const ObjectAt* at = cursor.Next()) AddObject(*at, cursor.GetSegmentFrame());
    m_out.PutRaw("]");
    if (m_left_out > 0)
      m_warn(std::to_string(m_left_out) + " objects have no draw infos and are not on the page");
    // The layers come first: they say which marks and images there are.
    const Json layers = m_style.MakeLayers();
    Put("style", layers);
    Put("classes", m_style.GetClasses());
    Put("marks", m_style.GetMarks());
    Put("images", m_style.GetImageUses());
    Put("rasters", m_style.GetRasterSources());
    PutFiles();
    Put("layers", m_layers);
    if (m_extent.has_value())
      Put("extent", {m_extent->West, m_extent->South, m_extent->East, m_extent->North});
    std::string title;
    AppendJsonText(title, std::string_view(m_content.Title));
    m_out.PutRaw(",\"title\":");
    m_out.PutJson(title);
    m_out.PutRaw("}");
  }

 private:
  void Put(const char* key, const Json& value) {
    m_out.PutRaw(",\"" + std::string(key) + "\":");
    m_out.PutJson(value.dump(-1, ' ', false, Json::error_handler_t::replace));
  }

  void PutFiles() {
    const CImageFiles files(m_content.Images, m_warn);
    std::vector<std::u16string_view> names(m_style.GetFiles().size());
    for (const auto& [name, number] : m_style.GetFiles()) names[number] = name;
    m_out.PutRaw(",\"files\":[");
    for (std::size_t i = 0; i < names.size(); ++i) {
      if (i > 0) m_out.PutRaw(",");
      m_out.PutJson(files.MakeDataUrl(names[i]));
    }
    m_out.PutRaw("]");
  }

  void AddObject(const ObjectAt& at, const CSegmentFrame& frame) {
    const auto bounds = FindBounds(at.Kind, *at.Object);
    if (!bounds.has_value()) return;
    const auto drawn_as = m_style.AddObject(at);
    if (!drawn_as.has_value()) {
      ++m_left_out;
      return;
    }
    const MapBox box = frame.At(*bounds);
    if (m_extent.has_value())
      m_extent->Add(box);
    else
      m_extent = box;
    m_layers.insert(at.Layer);
    if (at.Kind == ObjectKind::kRasterRect) m_style.AddRaster(at, *drawn_as, box);
    if (at.Kind == ObjectKind::kLabel && at.As<CCmbLblObj>().IsFontVirtical())
      m_warn("a page sets vertical texts horizontally");

    m_line.assign(m_written == 0 ? "\n" : ",\n");
    m_line += R"({"type":"Feature","geometry":)";
    AppendGeometry(m_line, at, frame);
    m_line += R"(,"properties":{)";
    AppendNumber(m_line, "layer", at.Layer);
    AppendNumber(m_line, "segment", at.Segment);
    AppendKey(m_line, "zid");
    AppendJsonText(m_line, std::string_view(std::to_string(at.ZId)));
    AppendNumber(m_line, "index", at.Index);
    AppendKey(m_line, "kind");
    AppendJsonText(m_line, NameOf(at.Kind));
    AppendNumber(m_line, "class", *drawn_as);
    AppendNumber(m_line, "order", m_written++);
    if (at.Kind == ObjectKind::kLabel) AppendLabel(m_line, at.As<CCmbLblObj>());
    AppendLinks(m_line, at);
    m_line += "}}";
    m_out.PutJson(m_line);
  }

  const HtmlContent& m_content;
  const CFrame& m_frame;
  CScriptWriter& m_out;
  const WarningSink& m_warn;
  CStyleLayers m_style;
  std::optional<MapBox> m_extent;
  std::set<std::uint16_t> m_layers;
  std::string m_line;
  std::size_t m_written = 0;
  std::size_t m_left_out = 0;
};

void PutScript(CScriptWriter& out, std::string_view script) {
  out.PutRaw("<script>\n");
  out.PutRaw(script);
  out.PutRaw("\n</script>\n");
}

}  // namespace

Result<void> WriteHtmlPage(const HtmlContent& content, CFile& file, const WarningSink& warn) {
  std::set<std::string> told;
  const WarningSink warn_once = [&](const std::string& what) {
    if (told.size() < kMaxToldCauses && told.insert(what).second && warn) warn(what);
  };
  const CFrame frame(*content.Map, content.Frame);
  if (frame.IsPlain() || frame.GetCrs().empty())
    return Refuse(
        "the map has no coordinate reference system, and a page lays it over the world's (--frame "
        "crs=EPSG:4326 says that its coordinates are degrees)");
  frame.Warn(*content.Map, warn_once);
  try {
    CScriptWriter out(file);
    out.PutRaw(kHead);
    out.PutRaw("<title>");
    out.PutText(content.Title);
    out.PutRaw("</title>\n<style>\n");
    out.PutRaw(kMaplibreGlCss);
    out.PutRaw(kPageCss);
    out.PutRaw("</style>\n</head>\n");
    out.PutRaw(kBody);
    out.PutText(kLicenseTxt);
    out.PutRaw("</pre></details>\n</aside>\n<script type=\"application/json\" id=\"data\">\n");
    CPageData(content, frame, out, warn_once).Write();
    out.PutRaw("\n</script>\n");
    PutScript(out, kMaplibreGlJs);
    PutScript(out, kPageJs);
    out.PutRaw("</body>\n</html>\n");
    out.Flush();
  } catch (const CFileException&) {
    Failure failure;
    failure.Kind = FailureKind::kCannotWrite;
    failure.Reason = "the page cannot be written";
    return failure;
  }
  return {};
}

}  // namespace qenzor
