#include <cstdint>

#include "qenzor/platform/code_page.h"

namespace qenzor {

namespace {

constexpr char32_t kNoCharacter = 0xFFFD;
constexpr char32_t kFirstHigh = 0xD800;
constexpr char32_t kFirstLow = 0xDC00;
constexpr char32_t kSurrogatesEnd = 0xE000;
constexpr char32_t kBasicEnd = 0x10000;

void AppendUtf8(CString& out, char32_t c) {
  const auto put = [&out](char32_t byte) { out.push_back(static_cast<char>(byte)); };
  if (c < 0x80) return put(c);
  if (c < 0x800) {
    put(0xC0 | c >> 6);
  } else {
    if (c < kBasicEnd) {
      put(0xE0 | c >> 12);
    } else {
      put(0xF0 | c >> 18);
      put(0x80 | (c >> 12 & 0x3F));
    }
    put(0x80 | (c >> 6 & 0x3F));
  }
  put(0x80 | (c & 0x3F));
}

/// Takes one character off the front: U+FFFD and one byte where none stands there.
char32_t TakeUtf8(std::string_view& bytes) {
  const auto at = [&bytes](std::size_t i) { return static_cast<unsigned char>(bytes[i]); };
  const unsigned char first = at(0);
  const std::size_t length = first < 0x80 ? 1 : first < 0xE0 ? 2 : first < 0xF0 ? 3 : 4;
  char32_t c = length == 1 ? first : first & (0x7FU >> length);
  bool is_character = length == 1 || (first >= 0xC2 && first <= 0xF4 && bytes.size() >= length);
  for (std::size_t i = 1; is_character && i < length; ++i) {
    is_character = (at(i) & 0xC0U) == 0x80;
    c = c << 6 | (at(i) & 0x3FU);
  }
  // Longer than need be, half a pair, or beyond the last.
  is_character = is_character && (length != 3 || c >= 0x800) && (length != 4 || c >= kBasicEnd) &&
                 c < 0x110000 && (c < kFirstHigh || c >= kSurrogatesEnd);
  bytes.remove_prefix(is_character ? length : 1);
  return is_character ? c : kNoCharacter;
}

}  // namespace

CString EncodeText(std::u16string_view wide, TextEncoding encoding) {
  if (encoding == TextEncoding::kCodePage) return NarrowText(wide);
  CString bytes;
  bytes.reserve(wide.size());
  for (std::size_t i = 0; i < wide.size(); ++i) {
    char32_t c = wide[i];
    const bool is_high = c >= kFirstHigh && c < kFirstLow;
    if (is_high && i + 1 < wide.size() && wide[i + 1] >= kFirstLow && wide[i + 1] < kSurrogatesEnd)
      c = kBasicEnd + ((c - kFirstHigh) << 10) + (wide[++i] - kFirstLow);
    else if (c >= kFirstHigh && c < kSurrogatesEnd)
      c = kNoCharacter;
    AppendUtf8(bytes, c);
  }
  return bytes;
}

CStringW DecodeText(std::string_view bytes, TextEncoding encoding) {
  if (encoding == TextEncoding::kCodePage) return WidenText(bytes);
  CStringW wide;
  wide.reserve(bytes.size());
  while (!bytes.empty()) {
    const char32_t c = TakeUtf8(bytes);
    if (c < kBasicEnd) {
      wide.push_back(static_cast<char16_t>(c));
    } else {
      wide.push_back(static_cast<char16_t>(kFirstHigh + ((c - kBasicEnd) >> 10)));
      wide.push_back(static_cast<char16_t>(kFirstLow + (c & 0x3FF)));
    }
  }
  return wide;
}

}  // namespace qenzor
