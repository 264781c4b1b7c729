#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "qenzor/platform/export.h"

namespace qenzor {

/// Decimal text to numbers and back, the same in every locale and on every width of `long`.
///
/// Every parser skips leading white space (space, \t, \n, \v, \f, \r), takes one optional '+' or
/// '-', reads as much number as there is and ignores the rest. Text without digits gives 0.

/// A value out of range gives the nearest limit of the type.
QENZOR_EXPORT std::int32_t ParseInt32(std::string_view text) noexcept;

/// '-' negates modulo 2^32; digits beyond the range give the maximum, whatever the sign.
QENZOR_EXPORT std::uint32_t ParseUInt32(std::string_view text) noexcept;

/// '-' negates modulo 2^64; digits beyond the range give the maximum, whatever the sign.
QENZOR_EXPORT std::uint64_t ParseUInt64(std::string_view text) noexcept;

/// Digits with an optional '.' and an optional exponent, rounded once to the nearest single. Too
/// large gives infinity and too small zero, both with their sign. Names ("inf", "nan") and
/// hexadecimal forms are not numbers: the former give 0, "0x1p3" is a 0 followed by other text.
QENZOR_EXPORT float ParseFloat(std::string_view text) noexcept;

/// Room, in characters, that `out` must have for any value, whatever the value at hand needs: a
/// formatter may write scratch bytes behind the text.
inline constexpr std::size_t kInt32MaxLength = 11;   // -2147483648
inline constexpr std::size_t kUInt32MaxLength = 10;  // 4294967295
inline constexpr std::size_t kUInt64MaxLength = 20;  // 18446744073709551615
/// A sign, the 309 digits of the largest double, the point and ten decimals.
inline constexpr std::size_t kFixed10MaxLength = 321;

/// Each formatter writes the text at `out`, without a terminator, and returns its end.
QENZOR_EXPORT char* FormatInt32(char* out, std::int32_t value) noexcept;
QENZOR_EXPORT char* FormatUInt32(char* out, std::uint32_t value) noexcept;
QENZOR_EXPORT char* FormatUInt64(char* out, std::uint64_t value) noexcept;

/// As printf's "%.10f": exact, halves to even, "inf", "-inf", "nan" and "-nan" for the rest.
QENZOR_EXPORT char* FormatFixed10(char* out, double value) noexcept;

}  // namespace qenzor
