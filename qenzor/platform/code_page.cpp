#include "qenzor/platform/code_page.h"

#include <iconv.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <new>
#include <string_view>
#include <type_traits>

namespace qenzor {
namespace {

constexpr std::uint32_t kAsciiEnd = 0x80;
constexpr char16_t kReplacement = 0xFFFD;

struct Pair {
  std::uint32_t Code;
  char16_t Unit;
};
/// The code page passes the bytes without a meaning through, and back; iconv refuses them.
constexpr std::array<Pair, 5> kUnassignedBytes{
    {{0x80, 0x0080}, {0xA0, 0xF8F0}, {0xFD, 0xF8F1}, {0xFE, 0xF8F2}, {0xFF, 0xF8F3}}};

/// One direction of iconv, for single characters.
class Converter {
 public:
  Converter(const char* to, const char* from) : m_handle(iconv_open(to, from)) {
    // Only a code page that does not exist may become question marks for the rest of the process.
    if (!IsOpen() && errno == ENOMEM) {
      throw std::bad_alloc();
    }
  }
  ~Converter() {
    if (IsOpen()) {
      iconv_close(m_handle);
    }
  }
  Converter(const Converter&) = delete;
  Converter& operator=(const Converter&) = delete;

  bool IsOpen() const noexcept { return reinterpret_cast<std::intptr_t>(m_handle) != -1; }

  /// The number of bytes that the whole of `from` became in `to`; 0 if it is no one character.
  std::size_t Convert(std::string_view from, std::array<char, 2>& to) const noexcept {
    std::array<char, 2> source{};
    std::copy(from.begin(), from.end(), source.begin());
    char* in = source.data();
    char* out = to.data();
    std::size_t in_left = from.size();
    std::size_t out_left = to.size();
    iconv(m_handle, nullptr, nullptr, nullptr, nullptr);
    const bool exact = iconv(m_handle, &in, &in_left, &out, &out_left) == 0 && in_left == 0;
    return exact ? to.size() - out_left : 0;
  }

 private:
  iconv_t m_handle;
};

std::uint32_t ByteValue(char byte) noexcept { return static_cast<unsigned char>(byte); }

/// The code page both ways. A code is one byte, or the lead byte times 256 plus the trail byte; 0
/// stands for nothing, as ASCII is not looked up here.
class CodePage {
 public:
  CodePage() {
    const Converter decoder("UTF-16LE", "CP932");
    const Converter encoder("CP932", "UTF-16LE");
    if (!decoder.IsOpen() || !encoder.IsOpen()) {
      return;
    }
    for (const auto& [code, unit] : kUnassignedBytes) {
      m_units[code] = unit;
      m_codes[unit] = static_cast<std::uint16_t>(code);
    }
    for (std::uint32_t first = kAsciiEnd; first < 0x100; ++first) {
      if (m_units[first] == 0 && !AddCode(decoder, first)) {
        for (std::uint32_t second = 0; second < 0x100; ++second) {
          AddCode(decoder, first << 8U | second);
        }
      }
    }
    for (const char16_t unit : m_units) {
      if (unit != 0) {
        AddUnit(encoder, unit);
      }
    }
  }

  std::uint32_t Code(char16_t unit) const noexcept { return m_codes[unit]; }
  char16_t Unit(std::uint32_t code) const noexcept { return m_units[code]; }

 private:
  bool AddCode(const Converter& decoder, std::uint32_t code) noexcept {
    const std::array bytes{static_cast<char>(code >> 8U), static_cast<char>(code)};
    const std::size_t length = code < 0x100 ? 1 : 2;
    std::array<char, 2> unit{};
    if (decoder.Convert({bytes.data() + 2 - length, length}, unit) != 2) {
      return false;
    }
    m_units[code] = static_cast<char16_t>(ByteValue(unit[1]) << 8U | ByteValue(unit[0]));
    return true;
  }

  // Several codes may mean the same unit, and iconv knows which of them is written. It also encodes
  // look-alikes that decode to something else; only what comes back unchanged is kept.
  void AddUnit(const Converter& encoder, char16_t unit) noexcept {
    const std::array bytes{static_cast<char>(unit), static_cast<char>(unit >> 8U)};
    std::array<char, 2> text{};
    const std::size_t length = encoder.Convert({bytes.data(), bytes.size()}, text);
    if (length == 0) {
      return;
    }
    const std::uint32_t code =
        length == 1 ? ByteValue(text[0]) : ByteValue(text[0]) << 8U | ByteValue(text[1]);
    if (m_units[code] == unit) {
      m_codes[unit] = static_cast<std::uint16_t>(code);
    }
  }

  std::array<std::uint16_t, 0x10000> m_codes{};
  std::array<char16_t, 0x10000> m_units{};
};

const CodePage& GetCodePage() {
  static const CodePage page;
  return page;
}

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
  const CodePage& page = GetCodePage();
  const std::size_t before = out.size();
  out.resize(before + 2 * wide.size());
  char* end = out.data() + before;
  while (!wide.empty()) {
    const std::size_t ascii = CopyAscii(wide, end);
    end += ascii;
    wide.remove_prefix(ascii);
    for (; !wide.empty() && wide.front() >= kAsciiEnd; wide.remove_prefix(1)) {
      end = PutCode(end, page.Code(wide.front()));
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
  const CodePage& page = GetCodePage();
  CStringW wide(narrow.size(), u'\0');
  char16_t* end = wide.data();
  while (!narrow.empty()) {
    const std::size_t ascii = CopyAscii(narrow, end);
    end += ascii;
    narrow.remove_prefix(ascii);
    while (!narrow.empty() && ByteValue(narrow.front()) >= kAsciiEnd) {
      const std::uint32_t first = ByteValue(narrow.front());
      std::size_t length = 1;
      char16_t unit = page.Unit(first);
      if (unit == 0 && narrow.size() > 1) {
        unit = page.Unit(first << 8U | ByteValue(narrow[1]));
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
