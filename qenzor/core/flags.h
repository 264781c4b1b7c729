#pragma once

#include <concepts>

#include "qenzor/platform/standard.h"

namespace qenzor {

/// Whether the bit is set; bit 0 is the lowest.
template <std::unsigned_integral T>
constexpr bool HasFlag(T flags, unsigned bit) noexcept {
  return (flags >> bit & 1U) != 0;
}

template <std::unsigned_integral T>
constexpr void SetFlag(T& flags, unsigned bit, bool on) noexcept {
  const auto mask = static_cast<T>(T{1} << bit);
  flags = static_cast<T>(on ? flags | mask : flags & ~mask);
}

}  // namespace qenzor
