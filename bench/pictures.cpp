// What a picture costs beside a bare cairo loop over the same strokes, fills and texts, and what a
// filter by a box costs beside reading the map: pictures MAP.qen DRAW.zor

#include <pango/pangocairo.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <ctime>
#include <exception>
#include <functional>
#include <iostream>
#include <limits>
#include <memory>
#include <string>
#include <variant>
#include <vector>

#include "bench/documents.h"
#include "bench/scratch_folder.h"
#include "bench/suite.h"
#include "qenzor/draw/render.h"
#include "qenzor/platform/code_page.h"
#include "qenzor/view/walk.h"

namespace {

using namespace qenzor;
using bench::Require;

constexpr int kRounds = 7;

class CNothing : public CFile {
 public:
  void Write(const void* /*data*/, std::uint32_t /*size*/) override {}
};

cairo_status_t Forget(void* /*closure*/, const unsigned char* /*data*/, unsigned /*size*/) {
  return CAIRO_STATUS_SUCCESS;
}

/// The processor time of the fastest round, in milliseconds.
double BestTime(const std::function<void()>& run) {
  constexpr double kMillis = 1000;
  double best = std::numeric_limits<double>::max();
  for (int round = 0; round < kRounds; ++round) {
    const std::clock_t from = std::clock();
    run();
    best = std::min(best, kMillis * static_cast<double>(std::clock() - from) / CLOCKS_PER_SEC);
  }
  return best;
}

template <class T, auto Free>
struct FreeWith {
  void operator()(T* object) const { Free(object); }
};
using Surface = std::unique_ptr<cairo_surface_t, FreeWith<cairo_surface_t, &cairo_surface_destroy>>;
using Cairo = std::unique_ptr<cairo_t, FreeWith<cairo_t, &cairo_destroy>>;
using Layout = std::unique_ptr<PangoLayout, FreeWith<PangoLayout, &g_object_unref>>;

/// One call of cairo that draws, with all that it needs.
struct Step {
  std::uint32_t Color = 0;
  double Width = 0;  // of a stroke; 0 for an area
  std::vector<double> Dashes;
  std::vector<std::vector<PagePoint>> Lines;  // the rings of an area, or one line
  Layout Text;
  PagePoint At;
};

/// What a picture holds, ready for cairo.
class CBareSteps {
 public:
  explicit CBareSteps(const CPicture& picture)
      : m_page(picture.GetPage()),
        m_surface(NewSurface()),
        m_cairo(cairo_create(m_surface.get())),
        m_context(pango_cairo_create_context(m_cairo.get())) {
    picture.GetList().ForEach([&](const DrawOrigin& origin, const DrawOp& op) { Add(origin, op); });
  }
  ~CBareSteps() { g_object_unref(m_context); }
  CBareSteps(const CBareSteps&) = delete;
  CBareSteps& operator=(const CBareSteps&) = delete;

  void Draw() const {
    const Surface surface = NewSurface();
    const Cairo cairo(cairo_create(surface.get()));
    cairo_set_source_rgb(cairo.get(), 1, 1, 1);
    cairo_paint(cairo.get());
    for (const Step& step : m_steps) Draw(cairo.get(), step);
    cairo_surface_write_to_png_stream(surface.get(), &Forget, nullptr);
  }

 private:
  Surface NewSurface() const {
    return Surface(cairo_image_surface_create(CAIRO_FORMAT_ARGB32,
                                              static_cast<int>(m_page.GetPixelWidth()),
                                              static_cast<int>(m_page.GetPixelHeight())));
  }

  std::vector<PagePoint> ToPage(std::span<const MapPoint> points, double x, double y) const {
    std::vector<PagePoint> line;
    for (const MapPoint& point : points) {
      const PagePoint at = m_page.At(point);
      line.push_back({at.x + x, at.y - y});
    }
    return line;
  }

  Step& NewStep(std::uint32_t color) {
    m_steps.emplace_back().Color = color;
    return m_steps.back();
  }
  void AddArea(const DrawOrigin& origin, std::uint32_t color, std::span<const MapPoint> points,
               double x, double y) {
    const auto group = std::tuple(origin.Layer, origin.Info, origin.Pass);
    if (m_group != group) NewStep(color);
    m_group = group;
    m_steps.back().Lines.push_back(ToPage(points, x, y));
  }

  void Add(const DrawOrigin& origin, const DrawOp& op) {
    if (const auto* shadow = std::get_if<ShadowOp>(&op))
      return AddArea(origin, shadow->Color, shadow->Points, shadow->OffsetX, shadow->OffsetY);
    if (const auto* fill = std::get_if<FillOp>(&op))
      return AddArea(origin, fill->Color, fill->Points, 0, 0);
    m_group.reset();
    if (const auto* stroke = std::get_if<StrokeOp>(&op)) {
      Step& step = NewStep(stroke->Color);
      step.Width = stroke->Width;
      for (const double length : StrokePattern(stroke->Code))
        step.Dashes.push_back(length * stroke->Width * stroke->Aspect);
      step.Lines.push_back(ToPage(stroke->Points, 0, 0));
    } else if (const auto* text = std::get_if<TextOp>(&op)) {
      Step& step = NewStep(text->Color);
      step.Text.reset(pango_layout_new(m_context));
      step.At = m_page.At(text->At);
      PangoFontDescription* font = pango_font_description_from_string("sans-serif");
      pango_font_description_set_absolute_size(font, text->Size * PANGO_SCALE);
      pango_layout_set_font_description(step.Text.get(), font);
      pango_font_description_free(font);
      pango_layout_set_text(step.Text.get(), EncodeText(text->Text, TextEncoding::kUtf8).c_str(),
                            -1);
      int width = 0;
      pango_layout_get_size(step.Text.get(), &width, nullptr);  // sets the glyphs
    }
  }

  static void Draw(cairo_t* cairo, const Step& step) {
    constexpr double kMost = 255;
    const auto part = [&](unsigned shift) { return ((step.Color >> shift) & 0xFFU) / kMost; };
    cairo_set_source_rgba(cairo, part(16), part(8), part(0), part(24));
    if (step.Text != nullptr) {
      cairo_move_to(cairo, step.At.x, step.At.y);
      return pango_cairo_show_layout(cairo, step.Text.get());
    }
    cairo_new_path(cairo);
    for (const auto& line : step.Lines) {
      cairo_new_sub_path(cairo);
      for (const PagePoint& point : line) cairo_line_to(cairo, point.x, point.y);
      if (step.Width == 0) cairo_close_path(cairo);
    }
    if (step.Width == 0) return cairo_fill(cairo);
    cairo_set_line_width(cairo, step.Width);
    cairo_set_line_join(cairo, CAIRO_LINE_JOIN_ROUND);
    cairo_set_dash(cairo, step.Dashes.data(), static_cast<int>(step.Dashes.size()), 0);
    cairo_stroke(cairo);
  }

  CPage m_page;
  Surface m_surface;
  Cairo m_cairo;
  PangoContext* m_context;
  std::optional<std::tuple<std::uint16_t, std::int64_t, std::uint32_t>> m_group;
  std::vector<Step> m_steps;
};

void TimePicture(const std::string& map_path, const std::string& drawing_path) {
  CQen map;
  CZor drawing;
  Require(map.Read(map_path), "reading " + map_path);
  Require(drawing.Read(drawing_path), "reading " + drawing_path);
  PictureContent content;
  content.Map = &map;
  content.Drawing = &drawing;
  RenderOptions options;
  options.AllLabels = true;
  const double render = BestTime([&] {
    const auto picture = CPicture::Plan(content, {});
    Require(static_cast<bool>(picture), "planning");
    CNothing file;
    Require(static_cast<bool>(RenderPicture(*picture, PictureFormat::kPng, options, file, {})),
            "drawing");
  });
  const auto picture = CPicture::Plan(content, {});
  const CBareSteps bare(*picture);
  const double loop = BestTime([&] { bare.Draw(); });
  std::printf("picture, 1600 pixels:  %7.1f ms, bare cairo %7.1f ms, %.2f times it (at most 3)\n",
              render, loop, render / loop);
}

void TimeBox() {
  constexpr std::size_t kBytes = 64 << 20;
  const bench::ScratchFolder folder;
  const std::string path = folder.Path() / "map.qen";
  bench::WriteMapFile(bench::MakeMap(kBytes), path);
  const double reading = BestTime([&] {
    CQen map;
    Require(map.Read(path), "reading");
  });
  CQen map;
  Require(map.Read(path), "reading");
  FrameOptions plain;
  plain.Plain = true;
  std::size_t passed = 0;
  const double filtering = BestTime([&] {
    const CFrame frame(map, plain);
    Filters filters;
    filters.Box = MapBox{-3277, -3277, 3276, 3276};  // a tenth of the range of coordinates a side
    passed = 0;
    ForEachObject(map, frame, filters, [&](const ObjectAt& /*at*/) { ++passed; });
  });
  std::printf(
      "box of 1 %% of 64 MiB: %7.1f ms, reading    %7.1f ms, %.1f %% of it (at most 10), %zu "
      "objects\n",
      filtering, reading, 100 * filtering / reading, passed);
}

}  // namespace

int main(int argc, char** argv) try {
  if (argc != 3) {
    std::cerr << "usage: pictures MAP.qen DRAW.zor\n";
    return 2;
  }
  TimePicture(argv[1], argv[2]);
  TimeBox();
  return 0;
} catch (const std::exception& error) {
  std::cerr << "pictures: " << error.what() << '\n';
  return 1;
}
