// Outlines that cross themselves, against a search through all pairs, and how long it takes.

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <ctime>
#include <random>

#include "tests/support/placed_objects.h"

namespace {

using namespace qenzor;
using namespace qenzor::testing;

std::vector<Found> CrossingsOf(const Points& points) {
  CheckOptions options;
  options.Geometry = true;
  for (const FindingKind& kind : FindingKinds())
    if (kind.Name != "ring-crosses-itself") options.Skipped.insert(kind.Code);
  return FindingsOf(MapOf({{0, {PolyBytes(0, points)}}}), BinaryKind::kQen, options);
}

std::int64_t Cross(CPoint o, CPoint a, CPoint b) {
  return static_cast<std::int64_t>(a.x - o.x) * (b.y - o.y) -
         static_cast<std::int64_t>(a.y - o.y) * (b.x - o.x);
}
int Sign(std::int64_t value) { return value < 0 ? -1 : value > 0 ? 1 : 0; }

bool IsInside(CPoint place, CPoint a, CPoint b) {
  const std::int64_t along = static_cast<std::int64_t>(place.x - a.x) * (place.x - b.x) +
                             static_cast<std::int64_t>(place.y - a.y) * (place.y - b.y);
  return Cross(a, b, place) == 0 && along < 0;
}

/// By comparing everything with everything.
class Reference {
 public:
  explicit Reference(Points points) {
    for (const CPoint& point : points)
      if (m_points.empty() || point != m_points.back()) m_points.push_back(point);
    while (m_points.size() > 1 && m_points.front() == m_points.back()) m_points.pop_back();
  }

  bool IsFlawed() const {
    for (std::size_t i = 0; i < m_points.size(); ++i)
      for (std::size_t j = 0; j < i; ++j)
        if (Cross(i, j) || Overlap(i, j)) return true;
    return std::ranges::any_of(m_points, [this](CPoint place) { return IsPassage(place); });
  }

 private:
  using Way = std::pair<CPoint, CPoint>;

  CPoint At(std::size_t i) const { return m_points[i % m_points.size()]; }

  bool Cross(std::size_t i, std::size_t j) const {
    const auto side = [&](std::size_t edge, std::size_t point) {
      return Sign(::Cross(At(edge), At(edge + 1), At(point)));
    };
    return side(i, j) * side(i, j + 1) < 0 && side(j, i) * side(j, i + 1) < 0;
  }

  bool Overlap(std::size_t i, std::size_t j) const {
    if (::Cross(At(i), At(i + 1), At(j)) != 0 || ::Cross(At(i), At(i + 1), At(j + 1)) != 0)
      return false;
    const auto reaches_into = [&](std::size_t point, std::size_t edge) {
      return IsInside(At(point), At(edge), At(edge + 1));
    };
    const bool is_same =
        (At(i) == At(j) && At(i + 1) == At(j + 1)) || (At(i) == At(j + 1) && At(i + 1) == At(j));
    return is_same || reaches_into(i, j) || reaches_into(i + 1, j) || reaches_into(j, i) ||
           reaches_into(j + 1, i);
  }

  bool IsPassage(CPoint place) const {
    std::vector<Way> ways;
    for (std::size_t i = 0; i < m_points.size(); ++i) {
      if (At(i) == place) ways.emplace_back(At(i + m_points.size() - 1), At(i + 1));
      if (IsInside(place, At(i), At(i + 1))) ways.emplace_back(At(i), At(i + 1));
    }
    for (const Way& a : ways)
      for (const Way& b : ways)
        if (IsBetween(place, a, b.first) != IsBetween(place, a, b.second)) return true;
    return false;
  }

  /// Whether a direction is met on the way round from the one arm to the other.
  static bool IsBetween(CPoint place, const Way& way, CPoint to) {
    const auto angle = [&](CPoint point) {
      return std::atan2(point.y - place.y, point.x - place.x);
    };
    const auto from_first = [&](CPoint point) {
      const double turn = angle(point) - angle(way.first);
      return turn < 0 ? turn + 2 * std::acos(-1.0) : turn;
    };
    return to != way.first && to != way.second && from_first(to) < from_first(way.second);
  }

  Points m_points;
};

Points RandomRing(std::mt19937& random, int size, int most) {
  Points points(3 + random() % static_cast<unsigned>(most - 2));
  for (CPoint& point : points)
    point = {static_cast<int>(random() % static_cast<unsigned>(size)),
             static_cast<int>(random() % static_cast<unsigned>(size))};
  if (random() % 4 != 0) points.push_back(points.front());
  return points;
}

bool HasThreeDifferent(Points points) {
  const auto less = [](CPoint a, CPoint b) { return std::pair(a.x, a.y) < std::pair(b.x, b.y); };
  std::ranges::sort(points, less);
  points.erase(std::unique(points.begin(), points.end()), points.end());
  return points.size() >= 3;
}

TEST(Ring, CrossingsAreThoseThatAllPairsShow) {
  std::mt19937 random(13);
  int flawed = 0;
  int sound = 0;
  const int rings = std::getenv("QENZOR_LONG") == nullptr ? 20000 : 2000000;
  for (int i = 0; i < rings; ++i) {
    const Points points = RandomRing(random, 3 + i % 9, 4 + i % 5);
    if (!HasThreeDifferent(points)) continue;
    const bool expected = Reference(points).IsFlawed();
    (expected ? flawed : sound) += 1;
    ASSERT_EQ(!CrossingsOf(points).empty(), expected) << ::testing::PrintToString([&] {
      std::string text;
      for (const CPoint& point : points)
        text += '(' + std::to_string(point.x) + ',' + std::to_string(point.y) + ')';
      return text;
    }());
  }
  EXPECT_GT(flawed, rings / 10);
  EXPECT_GT(sound, rings / 10);
}

double SecondsOf(const Points& points, std::size_t expected) {
  const std::clock_t begin = std::clock();
  EXPECT_EQ(CrossingsOf(points).size(), expected);
  return static_cast<double>(std::clock() - begin) / CLOCKS_PER_SEC;
}

constexpr int kMostPoints = 32767;
/// Even unoptimised and under sanitizers; comparing all pairs takes minutes.
constexpr double kMostSeconds = 8;

TEST(Ring, ThatOfLongEdgesSideBySideTakesNoTimeToSpeakOf) {
  Points points;
  for (int i = 0; i < kMostPoints - 3; ++i)
    points.push_back(i % 2 == 0 ? CPoint{-32768 + i / 2, -30000} : CPoint{16000 + i / 2, 30000});
  points.push_back({32767, -32768});
  points.push_back({-32768, -32768});
  points.push_back(points.front());
  EXPECT_LT(SecondsOf(points, 0), kMostSeconds);
}

TEST(Ring, ThatOfManyLoopsThroughOnePointTakesNoTimeToSpeakOf) {
  Points points;
  for (int i = 0; i < kMostPoints / 3; ++i) {
    points.push_back({0, 0});
    points.push_back({30000, 20000 - 3 * i});
    points.push_back({30000, 20000 - 3 * i - 1});
  }
  points.push_back({0, 0});
  EXPECT_LT(SecondsOf(points, 0), kMostSeconds);
}

TEST(Ring, ThatRunsToAndFroOnOneLineTakesNoTimeToSpeakOf) {
  Points points;
  for (int i = 0; i < kMostPoints - 2; ++i) points.push_back({i % 2 == 0 ? i / 2 : 32767 - i, 0});
  points.push_back({0, 5});
  EXPECT_LT(SecondsOf(points, 1), kMostSeconds);
}

}  // namespace
