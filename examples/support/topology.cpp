#include "examples/support/topology.h"

#include <algorithm>
#include <cmath>
#include <istream>
#include <nlohmann/json.hpp>
#include <stdexcept>

#include "examples/support/world_ids.h"

namespace world {
namespace {

using nlohmann::json;

/// One axis of the quantised grid. Its numbers are whole multiples of 1e-12 arc seconds.
class Axis {
 public:
  Axis(double degrees_per_step, double degrees_at_zero)
      : m_reach(kMaxDegrees / degrees_per_step),
        m_step(std::llround(degrees_per_step * kUnitsPerDegree)),
        m_origin(std::llround(degrees_at_zero * kUnitsPerDegree)) {
    if (!(degrees_per_step > 0 && std::abs(degrees_at_zero) <= kMaxDegrees))
      throw std::runtime_error("the grid of the topology does not fit the globe");
  }

  std::int32_t ArcSecondsAt(std::int64_t steps) const {
    if (!(std::abs(static_cast<double>(steps)) <= m_reach))
      throw std::runtime_error("an arc leaves the globe");
    return static_cast<std::int32_t>(RoundedQuotient(m_origin + steps * m_step, kUnitsPerSecond));
  }

 private:
  static constexpr double kMaxDegrees = 720;  // keeps all sums within 64 bits
  static constexpr std::int64_t kUnitsPerSecond = 1'000'000'000'000;
  static constexpr double kUnitsPerDegree = 3600e12;

  double m_reach;
  std::int64_t m_step;
  std::int64_t m_origin;
};

Path ReadArc(const json& steps, const Axis& x_axis, const Axis& y_axis) {
  Path path;
  std::int64_t x = 0;
  std::int64_t y = 0;
  for (const json& step : steps) {
    x += step.at(0).get<std::int32_t>();
    y += step.at(1).get<std::int32_t>();
    path.push_back({x_axis.ArcSecondsAt(x), y_axis.ArcSecondsAt(y)});
  }
  return path;
}

std::vector<PolygonArcs> ReadPolygons(const json& geometry) {
  const json& arcs = geometry.at("arcs");
  if (geometry.at("type") == "Polygon") return {arcs.get<PolygonArcs>()};
  if (geometry.at("type") == "MultiPolygon") return arcs.get<std::vector<PolygonArcs>>();
  throw std::runtime_error("a country is neither a Polygon nor a MultiPolygon");
}

void NumberCountriesWithoutId(std::vector<Country>& countries) {
  std::ranges::sort(countries, {}, &Country::name);
  std::uint64_t free_id = kFirstFreeId;
  for (Country& country : countries)
    if (country.id == 0) country.id = free_id++;
}

}  // namespace

std::int64_t RoundedQuotient(std::int64_t numerator, std::int64_t denominator) {
  const std::int64_t twice = 2 * numerator + denominator;
  const std::int64_t divisor = 2 * denominator;
  return twice / divisor - (twice % divisor < 0 ? 1 : 0);
}

Topology ReadTopology(std::istream& in) {
  const json root = json::parse(in);
  const json& scale = root.at("transform").at("scale");
  const json& translate = root.at("transform").at("translate");
  const Axis x_axis(scale.at(0).get<double>(), translate.at(0).get<double>());
  const Axis y_axis(scale.at(1).get<double>(), translate.at(1).get<double>());

  Topology topology;
  for (const json& arc : root.at("arcs")) topology.arcs.push_back(ReadArc(arc, x_axis, y_axis));
  for (const json& geometry : root.at("objects").at("countries").at("geometries")) {
    Country country;
    country.id = std::stoull(geometry.value("id", "0"));
    country.name = geometry.at("properties").at("name").get<std::string>();
    country.polygons = ReadPolygons(geometry);
    topology.countries.push_back(std::move(country));
  }
  NumberCountriesWithoutId(topology.countries);
  std::ranges::stable_sort(topology.countries, {}, &Country::id);
  return topology;
}

}  // namespace world
