#include "qenzor/platform/code_page.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <type_traits>

#include "qenzor/platform/code_page_rows_impl.h"

namespace qenzor {
namespace {

constexpr std::uint32_t kAsciiEnd = 0x80;
constexpr char16_t kReplacement = 0xFFFD;

struct Pair {
  std::uint32_t Code;
  char16_t Unit;
};
/// Bytes without a meaning pass through, and back.
constexpr std::array<Pair, 5> kUnassignedBytes{
    {{0x80, 0x0080}, {0xA0, 0xF8F0}, {0xFD, 0xF8F1}, {0xFE, 0xF8F2}, {0xFF, 0xF8F3}}};

std::uint32_t ByteValue(char byte) noexcept { return static_cast<unsigned char>(byte); }

/// The code page both ways. A code is one byte, or the lead byte times 256 plus the trail byte; 0
/// stands for nothing, as ASCII is not looked up here.
class CCodePage {
 public:
  constexpr CCodePage() {
    for (const auto& [code, unit] : kUnassignedBytes) Add(code, unit);
    for (std::uint32_t code = 0xA1; code < 0xE0; ++code)
      Add(code, static_cast<char16_t>(0xFF61 + code - 0xA1));
    for (const auto& [lead, units] : kCodePageRows) {
      std::uint32_t trail = kFirstTrail;
      for (const char16_t unit : units) {
        if (unit != u' ') Add(std::uint32_t{lead} << 8U | trail, unit);
        trail = Next(trail);
      }
    }
    char16_t unit = 0xE000;
    for (std::uint32_t lead = 0xF0; lead < 0xFA; ++lead)
      for (std::uint32_t trail = kFirstTrail; trail <= 0xFC; trail = Next(trail))
        Add(lead << 8U | trail, unit++);
  }

  constexpr std::uint32_t Code(char16_t unit) const noexcept { return m_codes[unit]; }
  constexpr char16_t Unit(std::uint32_t code) const noexcept { return m_units[code]; }

 private:
  static constexpr std::uint32_t kFirstTrail = 0x40;

  static constexpr std::uint32_t Next(std::uint32_t trail) noexcept {
    return trail == 0x7E ? 0x80 : trail + 1;
  }
  constexpr void Add(std::uint32_t code, char16_t unit) noexcept {
    m_units[code] = unit;
    if (m_codes[unit] == 0) m_codes[unit] = static_cast<std::uint16_t>(code);
  }

  std::array<std::uint16_t, 0x10000> m_codes{};
  std::array<char16_t, 0x10000> m_units{};
};

/// Made by the compiler: looking something up can neither fail nor wait for another thread.
constexpr CCodePage kCodePage;

/// Copies the ASCII at the start of `from` and returns how much there was.
template <class From, class To>
std::size_t CopyAscii(std::basic_string_view<From> from, To* to) noexcept {
  constexpr std::size_t kBlock = 16;  // short enough to be unrolled, long enough to be vectorised
  using Bits = std::make_unsigned_t<From>;
  std::size_t at = 0;
  for (; from.size() - at >= kBlock; at += kBlock) {
    Bits all = 0;
    for (std::size_t i = 0; i < kBlock; ++i) {
      all = static_cast<Bits>(all | static_cast<Bits>(from[at + i]));
    }
    if (all >= kAsciiEnd) {
      break;
    }
    for (std::size_t i = 0; i < kBlock; ++i) {
      to[at + i] = static_cast<To>(from[at + i]);
    }
  }
  for (; at < from.size() && static_cast<Bits>(from[at]) < kAsciiEnd; ++at) {
    to[at] = static_cast<To>(from[at]);
  }
  return at;
}

char* PutCode(char* out, std::uint32_t code) noexcept {
  if (code >= 0x100) {
    *out++ = static_cast<char>(code >> 8U);
  }
  *out++ = static_cast<char>(code == 0 ? '?' : code);
  return out;
}

}  // namespace

void AppendNarrow(CString& out, std::u16string_view wide) {
  const std::size_t before = out.size();
  out.resize(before + 2 * wide.size());
  char* end = out.data() + before;
  while (!wide.empty()) {
    const std::size_t ascii = CopyAscii(wide, end);
    end += ascii;
    wide.remove_prefix(ascii);
    for (; !wide.empty() && wide.front() >= kAsciiEnd; wide.remove_prefix(1)) {
      end = PutCode(end, kCodePage.Code(wide.front()));
    }
  }
  out.resize(static_cast<std::size_t>(end - out.data()));
}

CString NarrowText(std::u16string_view wide) {
  CString narrow;
  AppendNarrow(narrow, wide);
  return narrow;
}

CStringW WidenText(std::string_view narrow) {
  CStringW wide(narrow.size(), u'\0');
  char16_t* end = wide.data();
  while (!narrow.empty()) {
    const std::size_t ascii = CopyAscii(narrow, end);
    end += ascii;
    narrow.remove_prefix(ascii);
    while (!narrow.empty() && ByteValue(narrow.front()) >= kAsciiEnd) {
      const std::uint32_t first = ByteValue(narrow.front());
      std::size_t length = 1;
      char16_t unit = kCodePage.Unit(first);
      if (unit == 0 && narrow.size() > 1) {
        unit = kCodePage.Unit(first << 8U | ByteValue(narrow[1]));
        length = unit == 0 ? 1 : 2;
      }
      *end++ = unit == 0 ? kReplacement : unit;
      narrow.remove_prefix(length);
    }
  }
  wide.resize(static_cast<std::size_t>(end - wide.data()));
  return wide;
}

}  // namespace qenzor
