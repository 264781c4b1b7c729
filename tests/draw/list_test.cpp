// What is listed for pages of symbols, against a program that works it out anew, and line by line.

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>
#include <vector>

#include "qenzor/draw/list_json.h"
#include "qenzor/draw/picture.h"
#include "tests/draw/symbols.h"
#include "tests/support/temp_file.h"

namespace qenzor::testing {
namespace {

std::vector<std::string> ListOf(const CQen& map, const CZor* drawing, double denominator,
                                std::vector<std::string>* warnings = nullptr) {
  PictureContent content;
  content.Map = &map;
  content.Drawing = drawing;
  content.Page.Denominator = denominator;
  const auto picture = CPicture::Plan(content, [&](const std::string& what) {
    if (warnings != nullptr) warnings->push_back(what);
  });
  EXPECT_TRUE(picture) << picture.GetFailure().Reason;
  std::vector<std::string> lines;
  if (picture)
    picture->GetList().ForEach([&](const DrawOrigin& origin, const DrawOp& op) {
      AppendJsonLine(lines.emplace_back(), origin, op);
      lines.back().pop_back();
    });
  return lines;
}

using Lines = std::vector<std::string>;

TEST(List, HasOneLineForAThingWithItsKeysInOrder) {
  const auto map = MapOf({{0, 2, 7, {LineBytes({{0, 0}, {10, -5}})}}});
  const auto drawing =
      DrawingOf({Attribute(7, {0})}, {StrokeInfo(9, 0x80FF0102, 1, {StrokeRecord(200, 1, 3, 1)})});
  EXPECT_EQ(ListOf(*map, drawing.get(), 100),
            Lines{R"({"op":"stroke","layer":2,"segment":0,"z_id":7,"index":0,"info":0,)"
                  R"("color":"#80FF0102","size":6,"code":0,"points":[[0,0],[10,-5]]})"});
}

TEST(List, TellsALabelsMarkBeforeItsTextWithAllThatBelongsToIt) {
  // Anchor 5, vertical; angle -90; moved by 1.5 font sizes to the north.
  const Bytes label =
      Chunk(id::kCmbLblObj,
            Bytes().U16(0x15).F32(-90).I16(1).I16(2).F32(1.5F).F32(450).Text(u"a\"\n\xD800"));
  const auto map = MapOf({{0, 0, 7, {label}}});
  const Bytes info = InfoBytes(
      id::kCmbLblDrawInfo, Bytes().U16(3).U32(0).U8(0).U16(1).U8(9).U32(10).U32(11).U32(12),
      {Bytes().U32(200).U32(1).F32(1.5F).U16(8).U16(2).U16(1).I16(-3).F32(1)});
  const auto drawing = DrawingOf({Attribute(7, {0})}, {info}, {MarkBytes({}, {})});
  EXPECT_EQ(ListOf(*map, drawing.get(), 100),
            (Lines{R"({"op":"mark","layer":0,"segment":0,"z_id":7,"index":0,"info":0,)"
                   R"("color":null,"size":3,"at":[1,2],"mark":0})",
                   R"({"op":"text","layer":0,"segment":0,"z_id":7,"index":0,"info":0,)"
                   R"("color":"#0000000A","size":16,"offset":[0,24],"at":[1,2],)"
                   "\"text\":\"a\\\"\\n\xEF\xBF\xBD\","
                   R"("anchor":5,"angle":270,"vertical":true,)"
                   R"("frame":{"kind":1,"color":"#0000000B","width":2,"margin":4},)"
                   R"("shadow":{"color":"#0000000C","offset":-6}})"}));
}

TEST(List, PutsLayersKindsPassesAndPositionsInOrderAndLabelsLast) {
  const Bytes line = LineBytes({{0, 0}, {1, 1}});
  const Bytes label =
      Chunk(id::kCmbLblObj, Bytes().U16(0).F32(0).I16(0).I16(0).F32(0).F32(0).Text(u"x"));
  const Bytes area = PolyBytes(0, {{0, 0}, {0, 1}, {1, 1}});
  const auto map = MapOf(
      {{0, 5, 1, {line}}, {0, 3, 4, {label, area}}, {0, 3, 2, {line, line}}, {0, 3, 3, {line}}});
  const Bytes stroke = StrokeInfo(0, 0, 1, {StrokeRecord(0xFFFFFFFF, 0, 1, 0)});
  const Bytes fill = InfoBytes(id::kPolySolidBrushDrawInfo, Bytes().U32(5), {AnyScale()});
  const Bytes shadow =
      InfoBytes(id::kPolyShadowDrawInfo, Bytes().U32(5), {AnyScale().I16(1).I16(1).F32(0)});
  const Bytes text =
      InfoBytes(id::kCmbLblDrawInfo, Bytes().U16(1).U32(0).U8(0).U16(0).U8(0).U32(0).U32(0).U32(0),
                {AnyScale().F32(1).U16(8).U16(0).U16(0).I16(0).F32(0)});
  const auto drawing = DrawingOf(
      {Attribute(1, {0}), Attribute(2, {1, 0}), Attribute(3, {0}), Attribute(4, {2, 3, 4})},
      {stroke, stroke, fill, shadow, text});
  Lines short_lines;
  for (const std::string& found : ListOf(*map, drawing.get(), 100)) {
    const auto key = [&](const std::string& name) {
      const std::size_t at = found.find("\"" + name + "\":") + name.size() + 3;
      return found.substr(at, found.find(',', at) - at);
    };
    short_lines.push_back(key("op") + key("layer") + ' ' + key("z_id") + ' ' + key("index") + ' ' +
                          key("info"));
  }
  EXPECT_EQ(short_lines, (Lines{"\"shadow\"3 4 1 3", "\"fill\"3 4 1 2",
                                // first pass: draw info 0 before 1
                                "\"stroke\"3 3 0 0", "\"stroke\"3 2 0 1", "\"stroke\"3 2 1 1",
                                // second pass
                                "\"stroke\"3 2 0 0", "\"stroke\"3 2 1 0", "\"stroke\"5 1 0 0",
                                "\"text\"3 4 0 4"}));
}

TEST(List, LeavesOutWhatIsNotDrawn) {
  const auto map = MapOf({{0,
                           0,
                           1,
                           {LineBytes({{0, 0}}), PolyBytes(0, {{0, 0}, {1, 1}}),
                            RasLLBytes({5, 0, 5, 9}), RasLLBytes({0, 9, 5, 3}), LineBytes({})}}});
  EXPECT_EQ(ListOf(*map, nullptr, 100), Lines{});
}

TEST(List, WarnsOfMarksThatAreNotThereAndOfElementsOfOddKinds) {
  const SymbolPage page;
  std::vector<std::string> warnings;
  ListOf(*page.Map, page.Drawing.get(), 10000, &warnings);
  const auto told = [&](const std::string& what) {
    return std::count(warnings.begin(), warnings.end(), what);
  };
  EXPECT_EQ(told("mark 9 is not there"), 1);
  EXPECT_EQ(told("mark 0 has an element of kind 3, which is not drawn"), 1);
}

/// Lets the other program work the list out from the XML and compare.
void ExpectAgreement(const std::string& map, const std::string& drawing, double denominator) {
  const TempFile map_xml;
  const TempFile drawing_xml;
  const std::string tool = QENZOR_TOOL;
  const auto run = [](const std::string& command) {
    EXPECT_EQ(std::system(command.c_str()), 0) << command;
  };
  run(tool + " to-xml " + map + ' ' + map_xml.Path());
  run(tool + " to-xml " + drawing + ' ' + drawing_xml.Path());
  const std::string scale = std::to_string(denominator);
  run(tool + " render --list --scale " + scale + ' ' + map + ' ' + drawing +
      " 2>/dev/null | python3 " QENZOR_TEST_DATA "/../draw/list_reference.py " + map_xml.Path() +
      ' ' + drawing_xml.Path() + ' ' + scale + " >/dev/null");
}

TEST(List, OfTheSampleIsWhatTheConventionMakesOfIt) {
  for (const double denominator : {3e6, 2e7, 1.5e8})
    ExpectAgreement(QENZOR_SAMPLES "/world.qen", QENZOR_SAMPLES "/world.zor", denominator);
}

TEST(List, OfEverySymbolIsWhatTheConventionMakesOfIt) {
  const SymbolPage page;
  const TempFile map;
  const TempFile drawing;
  ASSERT_TRUE(page.Map->Write(map.Path()));
  ASSERT_TRUE(page.Drawing->Write(drawing.Path()));
  for (const double denominator : {500.0, 12345.75, 90000.0})
    ExpectAgreement(map.Path(), drawing.Path(), denominator);
}

}  // namespace
}  // namespace qenzor::testing
