#include "qenzor/platform/numbers.h"

#include <algorithm>
#include <array>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>
#include <optional>
#include <string_view>
#include <system_error>

#include "qenzor/platform/digits_impl.h"

namespace qenzor {
namespace {

constexpr bool IsSpace(char c) noexcept { return c == ' ' || (c >= '\t' && c <= '\r'); }
constexpr bool IsDigit(char c) noexcept { return c >= '0' && c <= '9'; }

/// Text behind its white space and sign.
struct SignedText {
  bool Negative;
  const char* Begin;
  const char* End;
};

SignedText TakeSign(std::string_view text) noexcept {
  const char* at = text.data();
  const char* const end = at + text.size();
  while (at != end && IsSpace(*at)) {
    ++at;
  }
  const bool negative = at != end && *at == '-';
  if (negative || (at != end && *at == '+')) {
    ++at;
  }
  return {negative, at, end};
}

template <class Number>
struct Magnitude {
  Number Value;
  bool TooLarge;
};

template <class Number>
Magnitude<Number> ParseDigits(const SignedText& text) noexcept {
  Number value = 0;
  const auto result = std::from_chars(text.Begin, text.End, value);
  if (result.ec == std::errc::result_out_of_range) {
    return {std::numeric_limits<Number>::max(), true};
  }
  return {value, false};
}

template <class Number>
Number ParseUnsigned(std::string_view text) noexcept {
  const SignedText digits = TakeSign(text);
  const auto [value, too_large] = ParseDigits<Number>(digits);
  return digits.Negative && !too_large ? static_cast<Number>(0 - value) : value;
}

/// Whether a number that no single can hold is too large for one, rather than too small.
bool IsHuge(const char* at, const char* end) noexcept {
  // The value lies between 10^(power-1) and 10^power; singles end near 10^38 and 10^-46, so the
  // sign of the power tells.
  std::int64_t power = 0;
  bool significant = false;
  bool point = false;
  for (; at != end && (IsDigit(*at) || *at == '.'); ++at) {
    if (*at == '.') {
      point = true;
      continue;
    }
    significant = significant || *at != '0';
    if (significant != point) {
      power += point ? -1 : 1;
    }
  }
  if (at == end) {
    return power > 0;
  }
  ++at;  // the exponent's letter
  at += *at == '+' ? 1 : 0;
  std::int64_t exponent = 0;
  const auto result = std::from_chars(at, end, exponent);
  if (result.ec == std::errc::result_out_of_range) {
    return *at != '-';
  }
  return power + exponent > 0;
}

char* PutFourDigits(char* out, std::uint32_t value) noexcept {
  std::memcpy(out, kFourDigits[value].data(), 4);
  return out + 4;
}

template <class Number>
char* PutUnsigned(char* out, Number value, std::size_t room) noexcept {
  if (value < kFewDigitsEnd) {
    return PutFewDigits(out, static_cast<std::uint32_t>(value));
  }
  return std::to_chars(out, out + room, value).ptr;
}

constexpr std::uint64_t kScale = 10000000000;  // ten decimals: 2^10 * 5^10
constexpr std::uint64_t kScaleFives = 9765625;
constexpr int kScaleTwos = 10;

/// What lets a value of sixteen bits and a fraction be printed in 9 ns where std::to_chars takes
/// 52: |value| * 10^10 rounded to an integer, halves to even. Nothing if that takes more than
/// 64-bit integers, which for a single means 2^64 / 10^10, some 1.8 thousand million, or more.
std::optional<std::uint64_t> ScaleExactly(double value) noexcept {
  constexpr unsigned kFractionBits = std::numeric_limits<double>::digits - 1;
  constexpr std::uint64_t kImplicitBit = std::uint64_t{1} << kFractionBits;
  constexpr int kBias = std::numeric_limits<double>::max_exponent - 1;
  constexpr unsigned kMaxFactorBits = 39;  // times 5^10 still less than half of 2^64
  const auto bits = std::bit_cast<std::uint64_t>(value);
  const int biased = static_cast<int>(bits >> kFractionBits & 0x7FFU);
  if (biased == 0) {
    return 0;  // zero, or far below the last decimal
  }
  // |value| is factor * 2^power, the factor odd.
  std::uint64_t factor = kImplicitBit | (bits & (kImplicitBit - 1));
  const int zeros = std::countr_zero(factor);
  factor >>= static_cast<unsigned>(zeros);
  const int power = biased - kBias - static_cast<int>(kFractionBits) + zeros + kScaleTwos;
  if (factor >> kMaxFactorBits != 0) {
    return std::nullopt;
  }
  const std::uint64_t product = factor * kScaleFives;
  if (power >= 0) {
    if (power > std::countl_zero(product)) {
      return std::nullopt;
    }
    return product << static_cast<unsigned>(power);
  }
  const auto shift = static_cast<unsigned>(-power);
  if (shift >= std::numeric_limits<std::uint64_t>::digits) {
    return 0;
  }
  const std::uint64_t whole = product >> shift;
  const std::uint64_t rest = product - (whole << shift);
  const std::uint64_t half = std::uint64_t{1} << (shift - 1);
  const bool up = rest > half || (rest == half && (whole & 1U) != 0);
  return whole + (up ? 1 : 0);
}

}  // namespace

std::int32_t ParseInt32(std::string_view text) noexcept {
  using Limits = std::numeric_limits<std::int32_t>;
  const SignedText digits = TakeSign(text);
  const std::int64_t magnitude = ParseDigits<std::uint32_t>(digits).Value;
  const std::int64_t value = digits.Negative ? -magnitude : magnitude;
  return static_cast<std::int32_t>(std::clamp<std::int64_t>(value, Limits::min(), Limits::max()));
}

std::uint32_t ParseUInt32(std::string_view text) noexcept {
  return ParseUnsigned<std::uint32_t>(text);
}

std::uint64_t ParseUInt64(std::string_view text) noexcept {
  return ParseUnsigned<std::uint64_t>(text);
}

float ParseFloat(std::string_view text) noexcept {
  const auto [negative, begin, end] = TakeSign(text);
  // What is left may still begin with a second sign or a name, which from_chars would take.
  if (begin == end || (!IsDigit(*begin) && *begin != '.')) {
    return 0;
  }
  float value = 0;
  const auto result = std::from_chars(begin, end, value);
  if (result.ec == std::errc::invalid_argument) {
    return 0;
  }
  if (result.ec == std::errc::result_out_of_range) {
    value = IsHuge(begin, result.ptr) ? std::numeric_limits<float>::infinity() : 0.0F;
  }
  return negative ? -value : value;
}

char* FormatInt32(char* out, std::int32_t value) noexcept {
  const auto bits = static_cast<std::uint32_t>(value);
  *out = '-';
  out += value < 0 ? 1 : 0;
  return PutUnsigned(out, value < 0 ? 0 - bits : bits, kUInt32MaxLength);
}

char* FormatUInt32(char* out, std::uint32_t value) noexcept {
  return PutUnsigned(out, value, kUInt32MaxLength);
}

char* FormatUInt64(char* out, std::uint64_t value) noexcept {
  return PutUnsigned(out, value, kUInt64MaxLength);
}

char* FormatFixed10(char* out, double value) noexcept {
  const std::optional<std::uint64_t> scaled = ScaleExactly(value);
  if (!scaled) {
    return std::to_chars(out, out + kFixed10MaxLength, value, std::chars_format::fixed, 10).ptr;
  }
  *out = '-';
  out += std::signbit(value) ? 1 : 0;
  out = FormatUInt32(out, static_cast<std::uint32_t>(*scaled / kScale));
  const std::uint64_t decimals = *scaled % kScale;
  *out++ = '.';
  constexpr std::uint64_t kLastEight = std::uint64_t{kFourDigitsEnd} * kFourDigitsEnd;
  const auto last = static_cast<std::uint32_t>(decimals % kLastEight);
  std::memcpy(out, kFourDigits[decimals / kLastEight].data() + 2, 2);
  out = PutFourDigits(out + 2, last / kFourDigitsEnd);
  return PutFourDigits(out, last % kFourDigitsEnd);
}

}  // namespace qenzor
