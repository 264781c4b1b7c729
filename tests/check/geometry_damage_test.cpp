// What shape objects have and where they lie: each damage by hand, beside its undamaged twin.

#include <gtest/gtest.h>

#include "tests/support/placed_objects.h"

namespace {

using namespace qenzor;
using namespace qenzor::testing;

using AllFound = std::vector<Found>;

const Points kSquare{{0, 0}, {0, 10}, {10, 10}, {10, 0}, {0, 0}};

AllFound OfArea(const Points& points) { return GeometryOf(MapOf({{0, {PolyBytes(0, points)}}})); }
AllFound OfLine(const Points& points) { return GeometryOf(MapOf({{0, {LineBytes(points)}}})); }

/// What is found in the only area, at one of its points.
AllFound InArea(const char* code, std::uint64_t point) {
  return {{code, kFirstOfArea + 4 * point, PathTo("PolyObj[0]")}};
}

TEST(GeometryDamage, NothingIsFoundInSoundObjectsOrUnasked) {
  const Bytes map = MapOf({{0,
                            {PolyBytes(0, kSquare), LineBytes({{0, 0}, {5, 5}}), LabelBytes(u"a"),
                             RasMMBytes({500, -500}), RasLLBytes({-900, -900, 900, 900})}}});
  EXPECT_EQ(GeometryOf(map), AllFound{});
  const Bytes damaged = MapOf({{0, {PolyBytes(0, {{900, 0}})}}});
  EXPECT_EQ(FindingsOf(damaged, BinaryKind::kQen), AllFound{});
  EXPECT_EQ(GeometryOf(damaged).size(), 2U);
}

TEST(GeometryDamage, AreasAndLinesHaveEnoughDifferentPoints) {
  const AllFound area{{"Q1100", kFirstObject, PathTo("PolyObj[0]")}};
  EXPECT_EQ(OfArea({}), area);
  EXPECT_EQ(OfArea({{1, 1}, {1, 1}, {1, 1}, {1, 1}}), area);
  EXPECT_EQ(OfArea({{0, 0}, {0, 10}, {0, 0}, {0, 10}, {0, 0}}), area);
  EXPECT_EQ(OfArea({{0, 0}, {0, 10}, {10, 0}, {0, 0}}), AllFound{});
  const AllFound line{{"Q1100", kFirstObject, PathTo("LineObj[0]")}};
  EXPECT_EQ(OfLine({{3, 3}}), line);
  EXPECT_EQ(OfLine({{3, 3}, {3, 3}}), line);
  EXPECT_EQ(OfLine({{3, 3}, {3, 4}}), AllFound{});
}

TEST(GeometryDamage, OutlinesAreClosed) {
  EXPECT_EQ(OfArea(kSquare), AllFound{});
  EXPECT_EQ(OfArea({{0, 0}, {0, 10}, {10, 10}, {10, 0}}), InArea("Q1101", 3));
  EXPECT_EQ(OfArea({{0, 0}, {0, 10}, {10, 10}, {10, 0}, {1, 0}}), InArea("Q1101", 4));
}

TEST(GeometryDamage, OutlinesThatCrossThemselvesAreFoundWhereTheyDo) {
  // Two edges cross inside both.
  EXPECT_EQ(OfArea({{0, 0}, {10, 10}, {10, 0}, {0, 10}, {0, 0}}), InArea("Q1102", 0));
  // The outline passes through one of its own points, or through an edge at a point.
  EXPECT_EQ(OfArea({{0, 0}, {5, 5}, {10, 10}, {10, 0}, {5, 5}, {0, 10}, {0, 0}}),
            InArea("Q1102", 1));
  EXPECT_EQ(OfArea({{0, 0}, {0, 10}, {10, 10}, {10, 0}, {5, 0}, {5, 15}, {-5, 15}, {0, 0}}).size(),
            1U);
  // It runs along itself: a spike, and a bridge to a hole.
  EXPECT_EQ(OfArea({{0, 0}, {0, 10}, {0, 20}, {0, 10}, {10, 10}, {10, 0}, {0, 0}}),
            InArea("Q1102", 1));
  EXPECT_EQ(OfArea({{0, 0},
                    {0, 30},
                    {30, 30},
                    {30, 0},
                    {0, 0},
                    {10, 10},
                    {20, 10},
                    {20, 20},
                    {10, 10},
                    {0, 0}}),
            InArea("Q1102", 4));
  // Touching itself is not crossing: a point on a point, a point on an edge.
  EXPECT_EQ(OfArea({{0, 0}, {0, 10}, {5, 5}, {10, 10}, {10, 0}, {5, 5}, {0, 0}}), AllFound{});
  EXPECT_EQ(OfArea({{0, 0}, {0, 10}, {10, 10}, {10, 0}, {8, 0}, {5, 10}, {4, 0}, {0, 0}}),
            AllFound{});
}

TEST(GeometryDamage, OutlinesRunClockwise) {
  EXPECT_EQ(OfArea({{0, 0}, {10, 0}, {10, 10}, {0, 10}, {0, 0}}), InArea("Q1103", 0));
  // Where an outline crosses itself it has no one direction.
  EXPECT_EQ(OfArea({{0, 10}, {10, 0}, {10, 10}, {0, 0}, {0, 10}}), InArea("Q1102", 0));
}

TEST(GeometryDamage, PointsThatStandTwiceInARowAreFoundOnceAnObject) {
  EXPECT_EQ(OfArea({{0, 0}, {0, 10}, {0, 10}, {10, 10}, {10, 0}, {10, 0}, {0, 0}}),
            InArea("Q1104", 2));
  EXPECT_EQ(OfLine({{0, 0}, {1, 1}, {1, 1}}),
            (AllFound{{"Q1104", kFirstOfLine + 8, PathTo("LineObj[0]")}}));
  EXPECT_EQ(OfLine({{0, 0}, {1, 1}, {0, 0}, {1, 1}}), AllFound{});
}

TEST(GeometryDamage, PointsLieInTheirSegment) {
  EXPECT_EQ(OfLine({{-500, -500}, {-500, 500}}), AllFound{});
  EXPECT_EQ(OfLine({{-500, -500}, {0, 501}, {501, 0}}),
            (AllFound{{"Q1105", kFirstOfLine + 4, PathTo("LineObj[0]")}}));
  const Bytes raster = MapOf({{0, {RasMMBytes({501, 0})}}});
  EXPECT_EQ(GeometryOf(raster), (AllFound{{"Q1105", kFirstObject + 8, PathTo("RasMMObj[0]")}}));
}

TEST(GeometryDamage, TheFrameTellsWhereSegmentsEnd) {
  const Bytes map = MapOf({{0, {LineBytes({{0, 0}, {900, 900}})}}});
  const auto found_with = [&map](const char* words) {
    return GeometryOf(map, *FrameOptions::Parse(words)).size();
  };
  EXPECT_EQ(found_with("plain=off"), 1U);
  EXPECT_EQ(found_with("origin=south-west"), 0U);
  EXPECT_EQ(found_with("coef=0.5"), 0U);
  EXPECT_EQ(found_with("coef=2,origin=south-west"), 1U);
  EXPECT_EQ(found_with("plain=on"), 0U);
}

TEST(GeometryDamage, WhatIsRoundedOnToAnEdgeIsNotOutside) {
  // A segment of 999 by 999 units: its edges lie half a unit off whole coordinates.
  Bytes info = GoodQenInfo();
  info[28] = 999 % 256;
  info[29] = 999 / 256;
  info[32] = 999 % 256;
  info[33] = 999 / 256;
  info[36] = 1;
  const auto with = [&info](std::int32_t x) {
    return GeometryOf(MapOf({{0, {RasMMBytes({x, x})}}}, info)).size();
  };
  EXPECT_EQ(with(500), 0U);
  EXPECT_EQ(with(-500), 0U);
  EXPECT_EQ(with(501), 1U);
  EXPECT_EQ(with(-501), 1U);
}

Bytes LabelAt(std::int32_t x, std::int32_t y) {
  return Chunk(id::kCmbLblObj, Bytes().U16(0x0019).F32(0).I16(x).I16(y).F32(0).F32(0).Text(u"a"));
}

TEST(GeometryDamage, LabelsLieOnTheMap) {
  const auto label_at = [](std::int32_t x, std::int32_t y) {
    return GeometryOf(MapOf({{0, {LabelAt(x, y)}}}));
  };
  constexpr std::uint64_t kPoint = kFirstObject + 8 + 2 + 4;
  EXPECT_EQ(label_at(-500, 500), AllFound{});
  EXPECT_EQ(label_at(-501, 0), (AllFound{{"Q1106", kPoint, PathTo("CmbLblObj[0]")}}));
  EXPECT_EQ(label_at(0, 501), (AllFound{{"Q1106", kPoint, PathTo("CmbLblObj[0]")}}));
  // In the neighbour it is on the map, and out of place.
  EXPECT_EQ(label_at(501, 0), (AllFound{{"Q1105", kPoint, PathTo("CmbLblObj[0]")}}));
}

TEST(GeometryDamage, AreasThatAreCutGoOnBeyondTheEdge) {
  const Bytes west = PolyBytes(0, {{400, 0}, {400, 100}, {500, 100}, {500, 0}, {400, 0}});
  const auto east_to = [](std::int32_t north) {
    return PolyBytes(0, {{-500, 0}, {-500, north}, {-400, 100}, {-400, 0}, {-500, 0}});
  };
  const Found in_west{"Q1107", kFirstOfArea + 4 * 2, PathTo("PolyObj[0]")};
  EXPECT_EQ(GeometryOf(MapOf({{0, {west}}, {1, {east_to(100)}}})), AllFound{});
  EXPECT_EQ(GeometryOf(MapOf({{0, {west}}})), AllFound{in_west});
  EXPECT_EQ(GeometryOf(MapOf({{0, {west}}, {1, {east_to(99)}}})), AllFound{in_west});
  // The larger part is the one that is not met.
  const AllFound in_east = GeometryOf(MapOf({{0, {west}}, {1, {east_to(101)}}}));
  ASSERT_EQ(in_east.size(), 1U);
  EXPECT_EQ(in_east[0].Path, PathTo("PolyObj[0]", 1));
  // Another z-id or layer does not count, several areas together do.
  EXPECT_EQ(GeometryOf(MapOf({{0, {west}}, {1, {east_to(100)}, 8}})).size(), 2U);
  EXPECT_EQ(GeometryOf(MapOf({{0, {west}}, {1, {east_to(100)}, 7, 3}})).size(), 2U);
  const Bytes upper = PolyBytes(0, {{-500, 40}, {-500, 100}, {-400, 100}, {-400, 40}, {-500, 40}});
  EXPECT_EQ(GeometryOf(MapOf({{0, {west}}, {1, {upper, east_to(40)}}})), AllFound{});
  EXPECT_EQ(GeometryOf(MapOf({{0, {west}}, {1, {upper, east_to(39)}}})), AllFound{in_west});
}

TEST(GeometryDamage, NothingGoesOnBeyondTheMap) {
  const Points west_border{{-500, 0}, {-500, 100}, {-400, 100}, {-400, 0}, {-500, 0}};
  EXPECT_EQ(OfArea(west_border), AllFound{});
  EXPECT_EQ(OfLine({{0, 0}, {-500, 0}}), AllFound{});
  EXPECT_EQ(OfLine({{0, 0}, {0, 500}}), AllFound{});
}

TEST(GeometryDamage, LinesThatAreCutGoOnBeyondTheEdge) {
  const Bytes west = LineBytes({{0, 0}, {500, 20}});
  const auto from = [](std::int32_t y) { return LineBytes({{-500, y}, {0, 0}}); };
  const Found in_west{"Q1107", kFirstOfLine + 4, PathTo("LineObj[0]")};
  EXPECT_EQ(GeometryOf(MapOf({{0, {west}}, {1, {from(20)}}})), AllFound{});
  EXPECT_EQ(GeometryOf(MapOf({{0, {west}}})), AllFound{in_west});
  EXPECT_EQ(GeometryOf(MapOf({{0, {west}}, {1, {from(21)}}})),
            (AllFound{in_west,
                      {"Q1107", kFirstOfLine + 8 + (kFirstOfLine - 62), PathTo("LineObj[0]", 1)}}));
  EXPECT_EQ(GeometryOf(MapOf({{0, {west}}, {1, {from(20)}, 8}})).size(), 2U);
}

TEST(GeometryDamage, LinesGoOnAcrossTheCornerOfFourSegments) {
  Bytes info = GoodQenInfo();
  info[33] = 2000 / 256;  // north
  info[32] = 2000 % 256;
  info[38] = 2;  // rows
  const Bytes to_corner = LineBytes({{0, 0}, {500, 500}});
  const auto with = [&](std::int32_t x) {
    return GeometryOf(MapOf({{0, {to_corner}}, {3, {LineBytes({{x, -500}, {0, 0}})}}}, info))
        .size();
  };
  EXPECT_EQ(with(-500), 0U);
  EXPECT_EQ(with(-499), 2U);
}

TEST(GeometryDamage, CutsOfADocumentThatBreaksOffAreNotCompared) {
  const Bytes map =
      MapOf({{0, {LineBytes({{0, 0}, {500, 0}})}}, {1, {LineBytes({{-500, 0}, {0, 0}})}}});
  const AllFound found = GeometryOf(map.Front(map.size() - 1));
  ASSERT_EQ(found.size(), 1U);
  EXPECT_EQ(found[0].Code, "Q1010");
}

TEST(GeometryDamage, OfEachKindAThousandAreTold) {
  const std::vector<Bytes> objects(1100, PolyBytes(0, {}));
  const Bytes map = MapOf({{0, objects}});
  CheckOptions options;
  options.Geometry = true;
  FoundSink sink;
  const CCheckCounts counts =
      CheckBinary({map.data(), map.size()}, BinaryKind::kQen, options, sink);
  EXPECT_EQ(sink.All.size(), 1000U);
  EXPECT_EQ(counts.Of(*FindFindingKind("too-few-points")), 1100U);
}

}  // namespace
