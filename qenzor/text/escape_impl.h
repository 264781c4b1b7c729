#pragma once

#include <array>
#include <string_view>

namespace qenzor {

/// What a character of a value becomes in XML; empty when it stays as it is. A space and a line
/// feed get an escape of the format's own, whose ampersand or brackets XML escapes in turn.
constexpr std::string_view EscapeOf(char32_t unit) {
  switch (unit) {
    case ' ':
      return "&amp;nbsp;";
    case '&':
      return "&amp;";
    case '<':
      return "&lt;";
    case '>':
      return "&gt;";
    case '"':
      return "&quot;";
    case '\'':
      return "&apos;";
    case '\n':
      return "&lt;br /&gt;";
    default:
      return {};
  }
}
inline constexpr std::size_t kMaxEscapeLength = EscapeOf('\n').size();

}  // namespace qenzor
