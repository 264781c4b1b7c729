#include "qenzor/view/objects.h"

#include <gtest/gtest.h>

#include <array>
#include <vector>

#include "qenzor/qen/all.h"

namespace {

using namespace qenzor;

TEST(PointsOf, FindsOutWhatTheObjectIs) {
  CLineObj line;
  const std::vector<CPoint> points{{1, 2}, {3, 4}};
  ASSERT_TRUE(line.Pt.Assign(points));
  EXPECT_EQ(PointsOf(line).size(), 2U);
  EXPECT_EQ(PointsOf(line)[1], (CPoint{3, 4}));
  CCmbLblObj label;
  label.Pt = {5, 6};
  ASSERT_EQ(PointsOf(label).size(), 1U);
  EXPECT_EQ(PointsOf(label)[0], (CPoint{5, 6}));
  EXPECT_TRUE(PointsOf(CRasLLObj()).empty());
}

TEST(LengthOf, AddsUpTheStepsFromPointToPoint) {
  EXPECT_EQ(LengthOf({}), 0);
  EXPECT_EQ(LengthOf(std::array{CPoint{7, 7}}), 0);
  EXPECT_EQ(LengthOf(std::array{CPoint{0, 0}, CPoint{3, 4}, CPoint{3, -6}}), 15);
  constexpr std::int32_t kMost = 2'147'483'647;
  EXPECT_EQ(LengthOf(std::array{CPoint{-kMost, 0}, CPoint{kMost, 0}}), 2.0 * kMost);
}

}  // namespace
