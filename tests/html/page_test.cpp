// What stands in a page, and what it refuses.

#include "qenzor/html/page.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include "tests/support/placed.h"
#include "tests/support/temp_file.h"

namespace qenzor::testing {
namespace {

const Mesh kWorld{{-648000000, -324000000, 648000000, 324000000}, 1, 1, 60000, 1};

struct Page {
  std::string Text;
  std::string Refusal;
  std::vector<std::string> Warnings;
};

Page PageOf(const CQen& map, const CZor* drawing, const std::string& title = "map") {
  HtmlContent content;
  content.Map = &map;
  content.Drawing = drawing;
  content.Title = title;
  Page page;
  CMemFile file;
  const auto written =
      WriteHtmlPage(content, file, [&](const std::string& what) { page.Warnings.push_back(what); });
  if (!written) page.Refusal = written.GetFailure().Reason;
  const auto& bytes = file.GetBytes();
  page.Text.assign(bytes.begin(), bytes.end());
  return page;
}

/// The data of a page, or the style of it, as the text of its JSON.
std::string Between(const std::string& text, const std::string& front, const std::string& back) {
  const std::size_t from = text.find(front);
  if (from == std::string::npos) return "nothing";
  const std::size_t begin = from + front.size();
  return text.substr(begin, text.find(back, begin) - begin);
}

Bytes Label(std::uint32_t flags, std::u16string_view text, const Bytes& added = {}) {
  return Chunk(id::kCmbLblObj,
               Bytes().U16(flags).F32(0).I16(10).I16(20).F32(0.5F).F32(90).Text(text).Add(added));
}

TEST(Page, HoldsObjectsAsGeoJson) {
  const auto map =
      MapOf({{0, 4, 18446744073709551615ULL, {LineBytes({{0, 0}, {60, -30}})}}}, kWorld);
  EXPECT_EQ(Between(PageOf(*map, nullptr).Text, "\"features\":[\n", "]"),
            R"({"type":"Feature","geometry":{"type":"LineString","coordinates":[[0,0)");
  EXPECT_EQ(Between(PageOf(*map, nullptr).Text, "\"properties\":", "}"),
            R"({"layer":4,"segment":0,"zid":"18446744073709551615","index":0,"kind":"line",)"
            R"("class":0,"order":0)");
}

TEST(Page, TurnsBandsOfScalesIntoZoomsAndSizesIntoPowersOfTwo) {
  // 1:295829355 is zoom 0, an eighth of that zoom 3; a width that grows with the map doubles.
  const auto map = MapOf({{0, 0, 1, {LineBytes({{0, 0}, {60, -30}})}}}, kWorld);
  const auto drawing =
      DrawingOf({Attribute(1, {0})},
                {StrokeInfo(1, 0x800000FF, 2, {StrokeRecord(295829355, 36978670, 1, 1)})});
  const std::string layer = Between(PageOf(*map, drawing.get()).Text, "\"style\":[", "}]");
  EXPECT_NE(layer.find(R"("type":"line","source":"L0-line")"), std::string::npos) << layer;
  EXPECT_NE(layer.find(R"("minzoom":0.0,"maxzoom":2.99999)"), std::string::npos) << layer;
  EXPECT_NE(layer.find(R"x("line-color":"rgba(0,0,255,0.502)")x"), std::string::npos) << layer;
  EXPECT_NE(layer.find(R"("line-dasharray":[8.0,4.0])"), std::string::npos) << layer;
  EXPECT_NE(layer.find(R"("line-width":["interpolate",["exponential",2)"), std::string::npos)
      << layer;
}

TEST(Page, KeepsTextsFromBeingMarkup) {
  const Bytes links = Chunk(id::kAddedObjInfoSet,
                            Bytes().U32(1).Add(Chunk(id::kUrlInfo, Bytes().Text(u"</script>"))));
  const auto map = MapOf({{0, 0, 1, {Label(1, u"</script><!--&\u2028", links)}}}, kWorld);
  const std::string page = PageOf(*map, nullptr, "</title><b>&").Text;
  EXPECT_EQ(Between(page, "\"text\":\"", "\""), "\\u003c/script\\u003e\\u003c!--\\u0026\\u2028");
  EXPECT_EQ(Between(page, "\"links\":[\"", "\""), "\\u003c/script\\u003e");
  EXPECT_EQ(Between(page, "<title>", "\n"), "&lt;/title>&lt;b>&amp;</title>");
}

TEST(Page, AllowsNothingFromElsewhere) {
  const auto map = MapOf({{0, 0, 1, {LineBytes({{0, 0}, {60, -30}})}}}, kWorld);
  const std::string page = PageOf(*map, nullptr).Text;
  EXPECT_EQ(Between(page, "Content-Security-Policy\" content=\"", "\""),
            "default-src 'none'; script-src 'unsafe-inline'; style-src 'unsafe-inline'; img-src "
            "data: blob:; connect-src data: blob:; worker-src blob:; child-src blob:");
  EXPECT_NE(page.find("Copyright (c) 2023, MapLibre contributors"), std::string::npos);
}

TEST(Page, TellsWhatItDoesNotShow) {
  const Bytes info =
      InfoBytes(id::kCmbLblDrawInfo, Bytes().U16(1).U32(0).U8(0).U16(1).U8(2).U32(0).U32(0).U32(0),
                {AnyScale().F32(0).U16(8).U16(0).U16(1).I16(2).F32(0)});
  const auto map = MapOf({{0, 0, 1, {Label(0x11, u"a")}}, {0, 0, 2, {Label(1, u"b")}}}, kWorld);
  const auto drawing = DrawingOf({Attribute(1, {0})}, {info});
  EXPECT_EQ(PageOf(*map, drawing.get()).Warnings,
            (std::vector<std::string>{"a page sets vertical texts horizontally",
                                      "1 objects have no draw infos and are not on the page",
                                      "a page does not show the shadows of texts",
                                      "a page does not show the frames of labels"}));
}

TEST(Page, RefusesMapsWithoutACrs) {
  Mesh mesh = kWorld;
  mesh.GeoCoodinate = 0;
  const auto map = MapOf({{0, 0, 1, {LineBytes({{0, 0}, {60, -30}})}}}, mesh);
  EXPECT_NE(PageOf(*map, nullptr).Refusal.find("no coordinate reference system"),
            std::string::npos);
  EXPECT_EQ(PageOf(*map, nullptr).Text, "");
  EXPECT_NE(PageOf(*MapOf({}), nullptr).Refusal, "");
}

TEST(Page, WorksInABrowserAndLetsNoLabelDoHarm) {
  const Bytes links =
      Chunk(id::kAddedObjInfoSet,
            Bytes()
                .U32(2)
                .Add(Chunk(id::kUrlInfo, Bytes().Text(u"javascript:window.harmed=1")))
                .Add(Chunk(id::kUrlInfo, Bytes().Text(u"mailto:a@example.org"))));
  const auto map = MapOf({{0, 0, 1, {Label(1, u"<script>window.harmed = 1</script>", links)}},
                          {0, 0, 2, {Label(1, u"</script><img src=x onerror=window.harmed=1>")}},
                          {0, 1, 3, {RasLLBytes({100, 100, 200, 200}), RasMMBytes({-100, 0})}}},
                         kWorld);
  const std::string name = "</title><script>window.harmed = 1</script>.qen";
  const TempFile hostile(PageOf(*map, nullptr, name).Text);
  const TempFile sample;
  const std::string pages[] = {sample.Path() + ".html", hostile.Path() + ".html"};
  std::filesystem::rename(hostile.Path(), pages[1]);
  const auto run = [](const std::string& command) {
    EXPECT_EQ(std::system(command.c_str()), 0) << command;
  };
  run(QENZOR_TOOL " to-html --quiet " QENZOR_SAMPLES "/world.qen " QENZOR_SAMPLES "/world.zor " +
      pages[0] + " 2>/dev/null");
  run("node " QENZOR_TEST_DATA "/../html/browser.js " QENZOR_PLAYWRIGHT " " + pages[0] + ' ' +
      pages[1]);
  for (const std::string& page : pages) std::filesystem::remove(page);
}

}  // namespace
}  // namespace qenzor::testing
