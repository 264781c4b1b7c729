#pragma once

#include <cstdint>

/// What the sample map and its drawing agree on; samples/README.md shows the same table.
namespace world {

enum class Layer : std::uint16_t { kAreas, kCoasts, kBorders, kLabels, kRasters };

/// Areas stand under the number of their country, a numeric ISO code (below 1000) or one of ours.
constexpr std::uint64_t kFirstFreeId = 10'001;

constexpr std::uint64_t kCoastsId = 100'000;
constexpr std::uint64_t kBordersId = 200'000;
constexpr std::uint64_t kCountryNamesId = 300'000;
constexpr std::uint64_t kCapitalsId = 300'001;
constexpr std::uint64_t kAirportsId = 300'002;
constexpr std::uint64_t kImageId = 400'000;
constexpr std::uint64_t kPeakId = 400'001;

}  // namespace world
