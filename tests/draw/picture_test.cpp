// Pictures as they come out: colours at places, and what stands in the files.

#include <cairo.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <limits>
#include <memory>
#include <string>
#include <vector>

#include "qenzor/draw/render.h"
#include "tests/draw/symbols.h"
#include "tests/support/temp_file.h"

namespace qenzor::testing {
namespace {

/// The fonts of the tests, whatever the machine has.
const bool kFontsAreSet = ::setenv("FONTCONFIG_FILE", QENZOR_TEST_DATA "/draw/fonts.conf", 1) == 0;

struct Picture {
  std::vector<std::uint8_t> Bytes;
  std::size_t LabelsLeftOut = 0;
  std::vector<std::string> Warnings;
};

/// Draws the box from 0, 0 to 100, 100 in as many pixels, one a metre.
Picture Draw(const CQen& map, const CZor* drawing, PictureFormat format = PictureFormat::kPng,
             const RenderOptions& options = {}) {
  EXPECT_TRUE(kFontsAreSet);
  PictureContent content;
  content.Map = &map;
  content.Drawing = drawing;
  content.Frame.Plain = true;
  content.Which.Box = MapBox{0, 0, 100, 100};
  content.Page.Denominator = 96 / 0.0254;
  Picture picture;
  const WarningSink warn = [&](const std::string& what) { picture.Warnings.push_back(what); };
  const auto plan = CPicture::Plan(content, warn);
  EXPECT_TRUE(plan) << plan.GetFailure().Reason;
  CMemFile file;
  const auto report = RenderPicture(*plan, format, options, file, warn);
  EXPECT_TRUE(report) << report.GetFailure().Reason;
  if (report) picture.LabelsLeftOut = report->LabelsLeftOut;
  picture.Bytes.resize(static_cast<std::size_t>(file.GetLength()));
  file.Seek(0, CFile::begin);
  file.Read(picture.Bytes.data(), static_cast<std::uint32_t>(picture.Bytes.size()));
  return picture;
}

/// The pixels of a PNG.
class Pixels {
 public:
  explicit Pixels(const Picture& picture) {
    const TempFile file(Bytes(picture.Bytes));
    m_surface.reset(cairo_image_surface_create_from_png(file.Path().c_str()));
    EXPECT_EQ(cairo_image_surface_get_width(m_surface.get()), 100);
    EXPECT_EQ(cairo_image_surface_get_height(m_surface.get()), 100);
  }
  /// The pixel whose lower left corner is that place of the map.
  std::uint32_t At(int x, int y) const {
    const auto* row = cairo_image_surface_get_data(m_surface.get()) +
                      std::ptrdiff_t{99 - y} * cairo_image_surface_get_stride(m_surface.get());
    return reinterpret_cast<const std::uint32_t*>(row)[x] | 0xFF000000;
  }

 private:
  struct Free {
    void operator()(cairo_surface_t* surface) const { cairo_surface_destroy(surface); }
  };
  std::unique_ptr<cairo_surface_t, Free> m_surface;
};

Bytes Fill(std::uint32_t color) {
  return InfoBytes(id::kPolySolidBrushDrawInfo, Bytes().U32(color), {AnyScale()});
}
Bytes Square(std::int32_t x, std::int32_t y, std::int32_t side) {
  return PolyBytes(0, {{x, y}, {x, y + side}, {x + side, y + side}, {x + side, y}, {x, y}});
}
constexpr std::uint32_t kWhite = 0xFFFFFFFF;

TEST(Picture, FillsAreasAndStrokesLinesWhereTheyLie) {
  const auto map =
      MapOf({{0, 0, 1, {Square(10, 10, 30)}}, {0, 0, 2, {LineBytes({{60, 0}, {60, 99}})}}});
  const auto drawing = DrawingOf(
      {Attribute(1, {0}), Attribute(2, {1})},
      {Fill(0xFF0000FF), StrokeInfo(0, 0xFFFF0000, 1, {StrokeRecord(0xFFFFFFFF, 0, 4, 0)})});
  const Pixels pixels(Draw(*map, drawing.get()));
  EXPECT_EQ(pixels.At(12, 12), 0xFF0000FF);
  EXPECT_EQ(pixels.At(39, 39), 0xFF0000FF);
  EXPECT_EQ(pixels.At(41, 20), kWhite);
  EXPECT_EQ(pixels.At(58, 50), 0xFFFF0000);
  EXPECT_EQ(pixels.At(61, 50), 0xFFFF0000);
  EXPECT_EQ(pixels.At(63, 50), kWhite);
}

TEST(Picture, ShowsNoSeamAndNoDoubledAlphaWhereAreasMeetOrOverlap) {
  // Two halves that meet between two pixels, turned both ways, and one that overlaps both.
  const Bytes left = PolyBytes(0, {{0, 0}, {0, 60}, {30, 60}, {30, 0}});
  const Bytes right = PolyBytes(0, {{30, 0}, {60, 0}, {60, 60}, {30, 60}});
  const auto map = MapOf({{0, 0, 1, {left, right}}, {1, 0, 1, {Square(20, 20, 20)}}});
  const auto drawing = DrawingOf({Attribute(1, {0})}, {Fill(0x800000FF)});
  const Pixels pixels(Draw(*map, drawing.get()));
  const std::uint32_t blue = pixels.At(5, 5);
  EXPECT_EQ(blue, 0xFF7F7FFFU);
  for (int x = 1; x < 59; ++x) EXPECT_EQ(pixels.At(x, 30), blue) << x;
}

TEST(Picture, MovesShadowsAndDrawsThemBeneath) {
  const auto map = MapOf({{0, 0, 1, {Square(20, 40, 20)}}});
  const auto drawing =
      DrawingOf({Attribute(1, {0, 1})},
                {Fill(0xFF00FF00), InfoBytes(id::kPolyShadowDrawInfo, Bytes().U32(0xFF000000),
                                             {AnyScale().I16(10).I16(-10).F32(0)})});
  const Pixels pixels(Draw(*map, drawing.get()));
  EXPECT_EQ(pixels.At(25, 45), 0xFF00FF00);
  EXPECT_EQ(pixels.At(38, 42), 0xFF00FF00);
  EXPECT_EQ(pixels.At(45, 35), 0xFF000000);
  EXPECT_EQ(pixels.At(45, 55), kWhite);
}

TEST(Picture, BreaksLinesByTheirCode) {
  const auto map = MapOf({{0, 0, 1, {LineBytes({{0, 50}, {100, 50}})}}});
  const auto drawing = DrawingOf(
      {Attribute(1, {0})}, {StrokeInfo(1, 0xFF000000, 2, {StrokeRecord(0xFFFFFFFF, 0, 2, 0)})});
  const Pixels pixels(Draw(*map, drawing.get()));
  // Dashes of 4 widths and gaps of 2, twice as long: 16 and 8 pixels.
  EXPECT_EQ(pixels.At(8, 50), 0xFF000000);
  EXPECT_EQ(pixels.At(20, 50), kWhite);
  EXPECT_EQ(pixels.At(30, 50), 0xFF000000);
  EXPECT_EQ(pixels.At(44, 50), kWhite);
}

TEST(Picture, DrawsMarksWithNorthUp) {
  const auto map = MapOf({{0, 0, 1, {LabelAt({50, 50}, 1, u"")}}});
  const auto drawing = DrawingOf(
      {Attribute(1, {0})},
      {InfoBytes(id::kCmbLblDrawInfo, Bytes().U16(2).U32(0).U8(0).U16(0).U8(0).U32(0).U32(0).U32(0),
                 {AnyScale().F32(2).U16(0).U16(0).U16(0).I16(0).F32(0)})},
      {MarkBytes({}, {MarkElemBytes(2, 0, 0xFFFF0000, {{0, 0}, {0, 10}, {10, 10}, {10, 0}})})});
  const Pixels pixels(Draw(*map, drawing.get()));
  EXPECT_EQ(pixels.At(52, 52), 0xFFFF0000);
  EXPECT_EQ(pixels.At(68, 68), 0xFFFF0000);
  EXPECT_EQ(pixels.At(48, 52), kWhite);
  EXPECT_EQ(pixels.At(52, 48), kWhite);
}

Bytes TextInfo(std::uint32_t frame = 0) {
  return InfoBytes(
      id::kCmbLblDrawInfo,
      Bytes().U16(1).U32(0).U8(0).U16(0).U8(frame).U32(0xFF000000).U32(0xFF00FF00).U32(0),
      {AnyScale().F32(0).U16(20).U16(2).U16(2).I16(0).F32(0)});
}

TEST(Picture, LeavesOutLabelsThatWouldCoverOthersUnlessAllAreAskedFor) {
  const auto map = MapOf({{0,
                           0,
                           1,
                           {LabelAt({10, 10}, 1, u"one"), LabelAt({12, 12}, 1, u"two"),
                            LabelAt({10, 60}, 1, u"three")}}});
  const auto drawing = DrawingOf({Attribute(1, {0})}, {TextInfo()});
  EXPECT_EQ(Draw(*map, drawing.get()).LabelsLeftOut, 1U);
  RenderOptions all;
  all.AllLabels = true;
  EXPECT_EQ(Draw(*map, drawing.get(), PictureFormat::kPng, all).LabelsLeftOut, 0U);
}

TEST(Picture, PutsTextOnTheSideOfItsAnchorThatItsKindSays) {
  // Full blocks: the anchor at the lower left (1) and at the upper right (5).
  const auto ink = [](std::uint32_t kind, int x, int y) {
    const auto map = MapOf({{0, 0, 1, {LabelAt({50, 50}, kind, u"\u2588\u2588")}}});
    const auto drawing = DrawingOf({Attribute(1, {0})}, {TextInfo()});
    return Pixels(Draw(*map, drawing.get())).At(x, y) == 0xFF000000;
  };
  EXPECT_TRUE(ink(1, 56, 60));
  EXPECT_FALSE(ink(1, 44, 40));
  EXPECT_TRUE(ink(5, 44, 40));
  EXPECT_FALSE(ink(5, 56, 60));
}

TEST(Picture, HatchesMissingImagesAndWarnsOnceOfEach) {
  const auto map = MapOf({{0, 0, 1, {RasLLBytes({10, 10, 90, 40}), RasLLBytes({10, 60, 90, 90})}}});
  const auto drawing = DrawingOf(
      {Attribute(1, {0})},
      {InfoBytes(id::kRasLLDrawInfo, Bytes().Text(u"x/none.png").U32(0), {AnyScale().U8(255)})});
  const Picture picture = Draw(*map, drawing.get());
  EXPECT_EQ(picture.Warnings, std::vector<std::string>{"image \"none.png\" is missing"});
  const Pixels pixels(picture);
  int drawn = 0;
  for (int x = 10; x < 90; ++x) drawn += pixels.At(x, 25) != kWhite ? 1 : 0;
  EXPECT_GT(drawn, 10);
  EXPECT_LT(drawn, 70);
}

TEST(Picture, StretchesImagesAndMakesTheirColourKeyTransparent) {
  const std::string folder = ::testing::TempDir() + "qenzor-images";
  std::filesystem::create_directories(folder);
  cairo_surface_t* image = cairo_image_surface_create(CAIRO_FORMAT_ARGB32, 2, 1);
  auto* row = reinterpret_cast<std::uint32_t*>(cairo_image_surface_get_data(image));
  row[0] = 0xFFFF0000;
  row[1] = 0xFF123456;
  cairo_surface_mark_dirty(image);
  cairo_surface_write_to_png(image, (folder + "/two.png").c_str());
  cairo_surface_destroy(image);
  const auto map = MapOf({{0, 0, 1, {RasLLBytes({0, 0, 100, 50})}}});
  const auto drawing = DrawingOf(
      {Attribute(1, {0})}, {InfoBytes(id::kRasLLDrawInfo, Bytes().Text(u"two.png").U32(0x00123456),
                                      {AnyScale().U8(255)})});
  RenderOptions options;
  options.Images = folder;
  const Pixels pixels(Draw(*map, drawing.get(), PictureFormat::kPng, options));
  EXPECT_EQ(pixels.At(10, 25), 0xFFFF0000);
  EXPECT_EQ(pixels.At(90, 25), kWhite);
  EXPECT_EQ(pixels.At(10, 75), kWhite);
  std::filesystem::remove_all(folder);
}

TEST(Picture, ComesOutTheSameEveryTime) {
  const SymbolPage page;
  for (const PictureFormat format : {PictureFormat::kPng, PictureFormat::kPdf})
    EXPECT_EQ(Draw(*page.Map, page.Drawing.get(), format).Bytes,
              Draw(*page.Map, page.Drawing.get(), format).Bytes);
}

TEST(Picture, BoundsWhatIsAbsurd) {
  constexpr float kNan = std::numeric_limits<float>::quiet_NaN();
  std::vector<CPoint> zigzag;
  for (int i = 0; i < 65535; ++i) zigzag.push_back({i % 2 == 0 ? -32768 : 32767, i % 32768});
  const auto map =
      MapOf({{0, 0, 1, {PolyBytes(0, Points(65535, CPoint{50, 50})), PolyBytes(0, zigzag)}},
             {0,
              0,
              2,
              {LineBytes(Points(65535, CPoint{50, 50})), LineBytes({{-32768, 50}, {32767, 51}})}},
             {0, 0, 3, {LabelAt({50, 50}, 0x19, u"text", kNan, kNan, kNan)}}});
  const auto drawing = DrawingOf(
      {Attribute(1, {0}), Attribute(2, {1}), Attribute(3, {2})},
      {Fill(0x80FF0000),
       StrokeInfo(2, 0xFF000000, 1e-30F, {StrokeRecord(0xFFFFFFFF, 0, 65535, 3e38F)}),
       InfoBytes(id::kCmbLblDrawInfo,
                 Bytes().U16(3).U32(0).U8(0).U16(1).U8(3).U32(0xFF000000).U32(1).U32(2),
                 {AnyScale().F32(3e38F).U16(65535).U16(65535).U16(65535).I16(-32768).F32(3e38F)})},
      {MarkBytes({}, {MarkElemBytes(1, 32767, 0xFF000000, {{-32768, -32768}, {32767, 32767}})})});
  for (const PictureFormat format : {PictureFormat::kPng, PictureFormat::kSvg, PictureFormat::kPdf})
    EXPECT_FALSE(Draw(*map, drawing.get(), format).Bytes.empty());
}

TEST(Picture, KeepsTextAsTextInPdf) {
  const auto map = MapOf({{0, 0, 1, {LabelAt({10, 50}, 1, u"Oslo")}}});
  const auto drawing = DrawingOf({Attribute(1, {0})}, {TextInfo()});
  const TempFile file(Bytes(Draw(*map, drawing.get(), PictureFormat::kPdf).Bytes));
  const TempFile text;
  ASSERT_EQ(std::system(("pdftotext " + file.Path() + ' ' + text.Path()).c_str()), 0);
  EXPECT_NE(text.Text().find("Oslo"), std::string::npos);
}

}  // namespace
}  // namespace qenzor::testing
