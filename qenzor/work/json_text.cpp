#include <algorithm>
#include <array>
#include <bit>

#include "qenzor/work/json_text_impl.h"

namespace qenzor::work {

namespace {

constexpr std::string_view kDigits = "0123456789ABCDEF";

void AppendHex(CString& out, std::uint32_t value, int digits) {
  for (int shift = 4 * (digits - 1); shift >= 0; shift -= 4)
    out += kDigits[(value >> static_cast<unsigned>(shift)) & 0xFU];
}

bool IsLead(char16_t unit) { return unit >= 0xD800 && unit < 0xDC00; }
bool IsTrail(char16_t unit) { return unit >= 0xDC00 && unit < 0xE000; }

bool HasLoneHalf(const CStringW& text) {
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (IsTrail(text[i])) return true;
    if (!IsLead(text[i])) continue;
    if (++i == text.size() || !IsTrail(text[i])) return true;
  }
  return false;
}

}  // namespace

void AppendJsonString(CString& out, std::string_view text) {
  out += '"';
  for (const char c : text) {
    const auto code = static_cast<unsigned char>(c);
    if (c == '"' || c == '\\') {
      out += '\\';
      out += c;
    } else if (c == '\n') {
      out += "\\n";
    } else if (code < 0x20 || code == 0x7F) {
      out += "\\u";
      AppendHex(out, code, 4);
    } else {
      out += c;
    }
  }
  out += '"';
}

void AppendJsonText(CString& out, const CStringW& text) {
  if (HasLoneHalf(text))
    AppendList(out, text, [&](char16_t unit) { AppendNumber(out, std::uint16_t{unit}); });
  else
    AppendJsonString(out, EncodeText(text, TextEncoding::kUtf8));
}

void AppendJsonFloat(CString& out, float value) {
  if (value == 0 && std::signbit(value)) {
    out += "-0.0";  // without a point it would be an integer, which has no sign at 0
    return;
  }
  if (std::isfinite(value)) return AppendNumber(out, value);
  if (std::isinf(value)) {
    out += value < 0 ? R"("-inf")" : R"("inf")";
    return;
  }
  out += "\"nan:";
  AppendHex(out, std::bit_cast<std::uint32_t>(value), 8);
  out += '"';
}

void AppendJsonIdent(CString& out, std::string_view ident) {
  if (std::all_of(ident.begin(), ident.end(),
                  [](char c) { return c != 0 && static_cast<unsigned char>(c) < 0x80; }))
    return AppendJsonString(out, ident);
  AppendList(out, ident, [&](char c) { AppendNumber(out, static_cast<unsigned char>(c)); });
}

void AppendJsonColor(CString& out, std::uint32_t color) {
  out += "\"#";
  AppendHex(out, color, 8);
  out += '"';
}

}  // namespace qenzor::work
