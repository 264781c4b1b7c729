#pragma once

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <random>

namespace fuzz {

/// The choices of one mutation, which its seed decides.
class Random {
 public:
  explicit Random(unsigned seed) : m_engine(seed) {}

  /// A number below most, which is above 0.
  std::size_t Below(std::size_t most) { return m_engine() % most; }
  bool OneIn(std::size_t cases) { return Below(cases) == 0; }
  template <class Container>
  auto& Of(Container& values) {
    return values[Below(std::size(values))];
  }
  template <class Container>
  const auto& Of(const Container& values) {
    return values[Below(std::size(values))];
  }
  /// Small numbers mostly, and the ends of all widths.
  std::uint64_t Number() {
    const std::uint64_t small = Below(9);
    switch (Below(4)) {
      case 0:
        return small;
      case 1:  // about 2^n
        return (std::uint64_t{1} << Below(64)) + small - 4;
      case 2:
        return std::uint64_t{0} - small;
      default:
        return m_engine() * std::uint64_t{2654435761U};
    }
  }

 private:
  std::mt19937_64 m_engine;
};

}  // namespace fuzz
