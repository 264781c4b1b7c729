#include <algorithm>
#include <cmath>
#include <limits>
#include <map>
#include <nlohmann/json.hpp>
#include <set>
#include <utility>

#include "qenzor/qen/line_obj.h"
#include "tests/samples/map_walk.h"
#include "tests/samples/samples.h"

namespace qenzor::samples {
namespace {

constexpr double kDegreesPerSecond = 1.0 / 3600;
constexpr std::int32_t kTurn = 360 * 3600;

/// A place on the globe in arc seconds, 0 to a turn east of 180 degrees west.
using GlobePoint = std::pair<std::int32_t, std::int32_t>;

/// From what the file info says alone: the corner of the map, the number of its segments and how
/// many units of the map's corner one unit of a segment is.
CPoint MiddleOf(const CQenEdit& map, std::uint16_t segment) {
  const std::int32_t width = (map.IncRect.right - map.IncRect.left) / map.SegmentNumX;
  const std::int32_t height = (map.IncRect.bottom - map.IncRect.top) / map.SegmentNumY;
  const std::int32_t column = segment % map.SegmentNumX;
  const std::int32_t row = segment / map.SegmentNumX;
  return {(map.IncRect.left + column * width + width / 2) / map.CompCoef,
          (map.IncRect.top + row * height + height / 2) / map.CompCoef};
}

GlobePoint OnGlobe(std::int32_t x, std::int32_t y) {
  return {((x + kTurn / 2) % kTurn + kTurn) % kTurn, y};
}

struct DegreePoint {
  double longitude;
  double latitude;
};

/// Every point of the arcs, as the data gives it.
std::vector<DegreePoint> DataPoints() {
  const auto root = nlohmann::json::parse(TextOf(PathOf("world/countries-110m.json")));
  const auto& scale = root["transform"]["scale"];
  const auto& translate = root["transform"]["translate"];
  std::vector<DegreePoint> points;
  for (const auto& arc : root["arcs"]) {
    int x = 0;
    int y = 0;
    std::vector<DegreePoint> path;
    for (const auto& step : arc) {
      x += step[0].get<int>();
      y += step[1].get<int>();
      path.push_back({x * scale[0].get<double>() + translate[0].get<double>(),
                      y * scale[1].get<double>() + translate[1].get<double>()});
    }
    // One arc of the data is a lone point, which bounds nothing.
    if (arc.size() > 2 || arc[1] != nlohmann::json{0, 0})
      points.insert(points.end(), path.begin(), path.end());
  }
  return points;
}

class WorldPrecision : public testing::Test {
 protected:
  void SetUp() override {
    CQen map;
    ASSERT_TRUE(map.Read(PathOf("world.qen")));
    CQenEdit edit;
    edit.QenDataToEditData(&map);
    ForEach<CLineObjEdit>(edit, [&](const ObjectPlace& place, const CLineObjEdit& line) {
      const CPoint middle = MiddleOf(edit, place.segment);
      for (const CPoint& point : line.Pt) {
        const bool on_edge = std::abs(point.x) == 27'000 || std::abs(point.y) == 27'000;
        m_stored[OnGlobe(middle.x + point.x, middle.y + point.y)] |= !on_edge;
      }
    });
  }

  /// How far, in degrees, the nearest stored point within an arc second is; infinite if none is.
  double DistanceToStored(const DegreePoint& point) const {
    double nearest = std::numeric_limits<double>::infinity();
    const double x = point.longitude * 3600;
    const double y = point.latitude * 3600;
    for (const double at_x : {std::floor(x), std::ceil(x)})
      for (const double at_y : {std::floor(y), std::ceil(y)})
        if (m_stored.contains(
                OnGlobe(static_cast<std::int32_t>(at_x), static_cast<std::int32_t>(at_y))))
          nearest = std::min(nearest, std::max(std::abs(at_x - x), std::abs(at_y - y)));
    return nearest * kDegreesPerSecond;
  }

  std::map<GlobePoint, bool> m_stored;  // and whether the point lies within a segment
};

TEST_F(WorldPrecision, EveryPointOfTheDataIsKeptToHalfAnArcSecond) {
  double largest = 0;
  const std::vector<DegreePoint> points = DataPoints();
  ASSERT_EQ(points.size(), 8244U);
  for (const DegreePoint& point : points) largest = std::max(largest, DistanceToStored(point));
  RecordProperty("largest_error_in_degrees", std::to_string(largest));
  EXPECT_LE(largest, kDegreesPerSecond / 2 + 1e-9);
}

TEST_F(WorldPrecision, OnlyTheEdgesOfSegmentsAddPoints) {
  std::set<GlobePoint> data;
  for (const DegreePoint& point : DataPoints())
    data.insert(OnGlobe(static_cast<std::int32_t>(std::lround(point.longitude * 3600)),
                        static_cast<std::int32_t>(std::lround(point.latitude * 3600))));
  for (const auto& [point, is_inside] : m_stored)
    EXPECT_TRUE(!is_inside || data.contains(point)) << point.first << ' ' << point.second;
}

}  // namespace
}  // namespace qenzor::samples
