#pragma once

#include <charconv>
#include <cmath>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>
#include <type_traits>

#include "qenzor/core/result.h"

namespace qenzor {

/// Calls take(word) for each word between separators, empty ones too, until it gives false. True
/// when it never did.
template <class Take>
bool ForEachWord(std::string_view words, char separator, Take&& take) {
  while (true) {
    const std::size_t end = words.find(separator);
    if (!take(words.substr(0, end))) return false;
    if (end == std::string_view::npos) return true;
    words.remove_prefix(end + 1);
  }
}

/// The number that all of the text is, or nothing.
template <class Number>
std::optional<Number> ParseWhole(std::string_view text) {
  Number number{};
  const char* end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, number);
  if (error != std::errc() || stop != end) return std::nullopt;
  if constexpr (std::is_floating_point_v<Number>)
    if (!std::isfinite(number)) return std::nullopt;
  return number;
}

/// A refusal of what a caller asked for.
inline Failure WrongUsage(std::string reason) {
  Failure failure;
  failure.Kind = FailureKind::kWrongUsage;
  failure.Reason = std::move(reason);
  return failure;
}

/// A word as a message shows it.
inline std::string Quoted(std::string_view word) { return '"' + std::string(word) + '"'; }

}  // namespace qenzor
