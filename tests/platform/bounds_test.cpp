#include "qenzor/platform/bounds.h"

#include <gtest/gtest.h>

#include <limits>
#include <random>
#include <vector>

namespace qenzor {
namespace {

constexpr std::int32_t kMin = std::numeric_limits<std::int32_t>::min();
constexpr std::int32_t kMax = std::numeric_limits<std::int32_t>::max();

TEST(BoundRect, OfNoPointsIsZero) { EXPECT_EQ(BoundRectOf({}), CRect{}); }

TEST(BoundRect, OfOnePointIsThatPoint) {
  const std::vector<CPoint> points{{-3, 7}};
  EXPECT_EQ(BoundRectOf(points), (CRect{-3, 7, -3, 7}));
}

TEST(BoundRect, TakesTheExtremesWhereverTheyStand) {
  EXPECT_EQ(BoundRectOf(std::vector<CPoint>{{1, 2}, {-1, 5}}), (CRect{-1, 2, 1, 5}));
  EXPECT_EQ(BoundRectOf(std::vector<CPoint>{{1, 2}, {-1, 5}, {0, -9}}), (CRect{-1, -9, 1, 5}));
  EXPECT_EQ(BoundRectOf(std::vector<CPoint>{{kMin, 0}, {0, kMax}, {kMax, 0}, {0, kMin}}),
            (CRect{kMin, kMin, kMax, kMax}));
}

TEST(BoundRect, IsWhatEachPointStretches) {
  std::mt19937 random(1);
  std::uniform_int_distribution<std::int32_t> number(-40000, 40000);
  for (std::size_t count = 1; count < 70; ++count) {
    std::vector<CPoint> points(count);
    CRect expected{kMax, kMax, kMin, kMin};
    for (CPoint& point : points) {
      point = {number(random), number(random)};
      if (point.x < expected.left) expected.left = point.x;
      if (point.y < expected.top) expected.top = point.y;
      if (point.x > expected.right) expected.right = point.x;
      if (point.y > expected.bottom) expected.bottom = point.y;
    }
    EXPECT_EQ(BoundRectOf(points), expected) << count;
  }
}

}  // namespace
}  // namespace qenzor
