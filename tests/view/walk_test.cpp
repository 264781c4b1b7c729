#include "qenzor/view/walk.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "qenzor/qen/line_obj.h"
#include "qenzor/qen/poly_obj.h"
#include "tests/support/placed.h"

namespace qenzor::testing {
namespace {

Bytes Label(const CPoint& at) {
  return Chunk(id::kCmbLblObj, Bytes().U16(0).F32(0).I16(at.x).I16(at.y).F32(0).F32(0).Text(u"x"));
}

/// The objects that pass, as "segment/layer/z-id/index kind".
std::vector<std::string> Walked(const CQen& map, const Filters& filters,
                                const FrameOptions& options = {}) {
  std::vector<std::string> objects;
  ForEachObject(map, CFrame(map, options), filters, [&](const ObjectAt& at) {
    objects.push_back(std::to_string(at.Segment) + '/' + std::to_string(at.Layer) + '/' +
                      std::to_string(at.ZId) + '/' + std::to_string(at.Index) + ' ' +
                      std::string(NameOf(at.Kind)));
  });
  return objects;
}

bool IsInBox(const Bytes& object, const MapBox& box) {
  Filters filters;
  filters.Box = box;
  return !Walked(*MapOf({{0, 0, 0, {object}}}), filters).empty();
}

std::unique_ptr<CQen> Mixed() {
  return MapOf({{1, 5, 9, {LineBytes({{0, 0}, {9, 9}}), Label({1, 1})}},
                {0, 5, 8, {PolyBytes(0, {{0, 0}, {0, 9}, {9, 9}})}},
                {1, 6, 9, {RasLLBytes({0, 0, 5, 5}), RasMMBytes({7, 7}), Label({2, 2})}}});
}

TEST(Walk, GivesAllObjectsInTheOrderOfTheFile) {
  EXPECT_EQ(
      Walked(*Mixed(), {}),
      (std::vector<std::string>{"1/5/9/0 line", "1/5/9/1 label", "0/5/8/0 polygon",
                                "1/6/9/0 raster_rect", "1/6/9/1 raster_point", "1/6/9/2 label"}));
}

TEST(Walk, PassesWhatEveryFilterAsksFor) {
  const auto map = Mixed();
  const auto filtered = [&](std::vector<std::pair<const char*, const char*>> words) {
    Filters filters;
    for (const auto& [name, text] : words) EXPECT_TRUE(filters.Add(name, text));
    return Walked(*map, filters);
  };
  using Names = std::vector<std::string>;
  EXPECT_EQ(filtered({{"layer", "5"}}),
            (Names{"1/5/9/0 line", "1/5/9/1 label", "0/5/8/0 polygon"}));
  EXPECT_EQ(filtered({{"segment", "0"}}), Names{"0/5/8/0 polygon"});
  EXPECT_EQ(filtered({{"zid", "8,7"}}), Names{"0/5/8/0 polygon"});
  EXPECT_EQ(filtered({{"objects", "label"}}), (Names{"1/5/9/1 label", "1/6/9/2 label"}));
  EXPECT_EQ(filtered({{"objects", "label"}, {"layer", "6"}, {"bbox", "2,2,3,3"}}),
            Names{"1/6/9/2 label"});
  EXPECT_EQ(filtered({{"layer", "7"}}), Names{});
}

TEST(Walk, IsEmptyForADocumentWithoutMapData) { EXPECT_TRUE(Walked(CQen(), {}).empty()); }

TEST(Walk, TakesTheBoxInTheFramesCoordinates) {
  const Mesh mesh{{0, 0, 7200000, 7200000}, 2, 2, 1000};
  const auto map = MapOf({{3, 0, 0, {Label({0, 0})}}}, mesh);  // at 1.5, 1.5 degrees
  Filters filters;
  filters.Box = MapBox{1.5, 1.5, 1.5, 1.5};
  EXPECT_EQ(Walked(*map, filters).size(), 1U);
  filters.Box = MapBox{1.6, 1.5, 2, 2};
  EXPECT_EQ(Walked(*map, filters).size(), 0U);
}

TEST(Box, HoldsLabelsAndRastersByTheirPointEdgesIncluded) {
  EXPECT_TRUE(IsInBox(Label({10, 20}), {10, 20, 30, 40}));
  EXPECT_TRUE(IsInBox(Label({30, 40}), {10, 20, 30, 40}));
  EXPECT_FALSE(IsInBox(Label({31, 40}), {10, 20, 30, 40}));
  EXPECT_TRUE(IsInBox(RasMMBytes({10, 40}), {10, 20, 30, 40}));
  EXPECT_FALSE(IsInBox(RasMMBytes({9, 40}), {10, 20, 30, 40}));
}

TEST(Box, HoldsRastersByTheRectangleBetweenTheirEdges) {
  EXPECT_TRUE(IsInBox(RasLLBytes({-50, -50, 50, 50}), {-1, -1, 1, 1}));
  EXPECT_TRUE(IsInBox(RasLLBytes({0, 0, 5, 5}), {5, 5, 9, 9}));
  EXPECT_FALSE(IsInBox(RasLLBytes({0, 0, 5, 5}), {6, 0, 9, 9}));
  EXPECT_TRUE(IsInBox(RasLLBytes({5, 5, 0, 0}), {1, 1, 2, 2}));
}

TEST(Box, HoldsALineThatPassesThroughWithoutAVertexInIt) {
  const Bytes line = LineBytes({{-100, -90}, {100, 110}});
  EXPECT_TRUE(IsInBox(line, {-1, 9, 1, 11}));
  EXPECT_FALSE(IsInBox(line, {5, -5, 20, 10}));
}

TEST(Box, HoldsALineThatOnlyTouchesACorner) {
  // x + y = 10 touches the corner at 3, 7.
  const Bytes line = LineBytes({{-20, 30}, {30, -20}});
  EXPECT_TRUE(IsInBox(line, {3, 7, 50, 50}));
  EXPECT_TRUE(IsInBox(line, {-50, -50, 3, 7}));
  EXPECT_FALSE(IsInBox(line, {3, 7.0000000000000009, 50, 50}));
  EXPECT_FALSE(IsInBox(line, {-50, -50, 3, 6.9999999999999991}));
}

TEST(Box, DoesNotHoldALineThatGoesAroundIt) {
  EXPECT_FALSE(
      IsInBox(LineBytes({{0, 0}, {0, 100}, {100, 100}, {100, 0}, {0, 0}}), {10, 10, 90, 90}));
}

TEST(Box, HoldsAnAreaThatLiesAroundIt) {
  const Points ring{{0, 0}, {0, 100}, {100, 100}, {100, 0}};
  EXPECT_TRUE(IsInBox(PolyBytes(0, ring), {10, 10, 90, 90}));
  EXPECT_TRUE(IsInBox(PolyBytes(0, ring), {100, 50, 200, 60}));
  EXPECT_FALSE(IsInBox(PolyBytes(0, ring), {101, 50, 200, 60}));
}

TEST(Box, DoesNotHoldAnAreaWhoseHoleItLiesIn) {
  // A square, walked round twice: the inner square is outside by the even-odd rule.
  const Bytes area = PolyBytes(0, {{0, 0},
                                   {0, 100},
                                   {100, 100},
                                   {100, 0},
                                   {0, 0},
                                   {20, 20},
                                   {20, 80},
                                   {80, 80},
                                   {80, 20},
                                   {20, 20}});
  EXPECT_FALSE(IsInBox(area, {30, 40, 70, 75}));
  EXPECT_TRUE(IsInBox(area, {10, 50, 15, 55}));
  EXPECT_TRUE(IsInBox(area, {30, 40, 80, 75}));
}

TEST(Box, HoldsAnAreaByTheEdgeThatClosesIt) {
  const Bytes open = PolyBytes(0, {{0, 0}, {0, 100}, {100, 100}});
  EXPECT_TRUE(IsInBox(open, {49, 49, 51, 50}));
  EXPECT_FALSE(IsInBox(open, {60, 10, 70, 50}));
}

TEST(Box, LooksAtTheLastPointOfARingThatDoesNotClose) {
  EXPECT_TRUE(IsInBox(PolyBytes(0, {{0, 0}, {1, 1}, {500, 500}}), {499, 499, 501, 501}));
}

TEST(Box, LooksAtPointsAsTheyAreNow) {
  const auto map = MapOf({{0, 0, 0, {LineBytes({{0, 0}, {1, 1}})}}});
  Filters filters;
  filters.Box = MapBox{100, 100, 200, 200};
  EXPECT_TRUE(Walked(*map, filters).empty());
  ForEachObject(*map, CFrame(*map), {}, [](const ObjectAt& at) {
    static_cast<CLineObj*>(at.Object)->Pt[1] = {150, 150};
  });
  EXPECT_EQ(Walked(*map, filters).size(), 1U);
}

TEST(Box, NeverHoldsWhatHasNoPoints) {
  EXPECT_FALSE(IsInBox(LineBytes({}), {-1, -1, 1, 1}));
  EXPECT_FALSE(IsInBox(PolyBytes(0, {}), {-1, -1, 1, 1}));
  EXPECT_TRUE(IsInBox(LineBytes({{0, 0}}), {-1, -1, 1, 1}));
}

}  // namespace
}  // namespace qenzor::testing
