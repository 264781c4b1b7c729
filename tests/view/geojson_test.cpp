#include "qenzor/view/geojson.h"

#include <gtest/gtest.h>

#include <string>

#include "qenzor/view/walk.h"
#include "tests/support/placed.h"

namespace qenzor::testing {
namespace {

std::string NumberOf(double value, int decimals) {
  std::string out;
  AppendJsonNumber(out, value, decimals);
  return out;
}

std::string GeometryOf(const Bytes& object) {
  const auto map = MapOf({{0, 0, 1, {object}}});
  FrameOptions plain;
  plain.Plain = true;
  const CFrame frame(*map, plain);
  const Filters all;
  CObjectCursor cursor(*map, frame, all);
  const ObjectAt* at = cursor.Next();
  std::string out;
  if (at != nullptr) AppendGeometry(out, *at, cursor.GetSegmentFrame());
  return out;
}

TEST(Json, ShowsNumbersWithoutExponentsNeedlessZerosOrMinusZero) {
  EXPECT_EQ(NumberOf(1.5, 9), "1.5");
  EXPECT_EQ(NumberOf(-120, 9), "-120");
  EXPECT_EQ(NumberOf(0.1234567897, 9), "0.12345679");
  EXPECT_EQ(NumberOf(-1e-12, 9), "0");
  EXPECT_EQ(NumberOf(3.4e38, 0), "339999999999999996123846586046231871488");
  EXPECT_EQ(NumberOf(100, 0), "100");
}

TEST(Json, EscapesTextAndReplacesHalvesOfPairs) {
  std::string out;
  AppendJsonText(out, std::u16string_view(u"\"\\\n\t\x01<\u5730\xD83D\xDE00\xDC00"));
  EXPECT_EQ(out, "\"\\\"\\\\\\n\\t\\u0001<\xE5\x9C\xB0\xF0\x9F\x98\x80\xEF\xBF\xBD\"");
}

TEST(GeoJson, HasLinesOfTwoPointsAndMore) {
  EXPECT_EQ(GeometryOf(LineBytes({{0, 0}, {10, -5}})),
            R"({"type":"LineString","coordinates":[[0,0],[10,-5]]})");
  EXPECT_EQ(GeometryOf(LineBytes({{0, 0}})), "null");
}

TEST(GeoJson, ClosesRingsAndTurnsThemCounterClockwise) {
  const std::string square = R"({"type":"Polygon","coordinates":[[[0,0],[4,0],[4,4],[0,0]]]})";
  EXPECT_EQ(GeometryOf(PolyBytes(0, {{0, 0}, {4, 4}, {4, 0}})), square);
  EXPECT_EQ(GeometryOf(PolyBytes(0, {{0, 0}, {4, 0}, {4, 4}, {0, 0}})), square);
}

TEST(GeoJson, HasNoAreaOfFewerThanThreeDifferentPoints) {
  EXPECT_EQ(GeometryOf(PolyBytes(0, {{0, 0}, {4, 4}, {0, 0}, {4, 4}, {0, 0}})), "null");
  EXPECT_EQ(GeometryOf(PolyBytes(0, {})), "null");
}

TEST(GeoJson, HasRastersByTheirEdgesAsAreasAndOthersAsPoints) {
  EXPECT_EQ(GeometryOf(RasLLBytes({0, 1, 2, 3})),
            R"({"type":"Polygon","coordinates":[[[0,1],[2,1],[2,3],[0,3],[0,1]]]})");
  EXPECT_EQ(GeometryOf(RasMMBytes({7, -8})), R"({"type":"Point","coordinates":[7,-8]})");
}

}  // namespace
}  // namespace qenzor::testing
