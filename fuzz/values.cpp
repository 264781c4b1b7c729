// Number parsing and the code page beside simple reference functions.

#include <cmath>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <string>

#include "qenzor/platform/code_page.h"
#include "qenzor/platform/numbers.h"
#include "support/documents.h"

namespace {

/// The digits behind white space and sign, as far as they go.
struct Decimal {
  bool Negative = false;
  unsigned __int128 Value = 0;  ///< kept at 2^100 when it would be larger
};

Decimal ParseDecimal(const std::string& text) {
  Decimal decimal;
  std::size_t at = 0;
  while (at < text.size() && std::strchr(" \t\n\v\f\r", text[at]) != nullptr && text[at] != '\0')
    ++at;
  if (at < text.size() && (text[at] == '+' || text[at] == '-'))
    decimal.Negative = text[at++] == '-';
  constexpr unsigned __int128 kMost = static_cast<unsigned __int128>(1) << 100;
  for (; at < text.size() && text[at] >= '0' && text[at] <= '9'; ++at) {
    decimal.Value = decimal.Value * 10 + static_cast<unsigned>(text[at] - '0');
    if (decimal.Value > kMost) decimal.Value = kMost;
  }
  return decimal;
}

template <class T>
T Unsigned(const Decimal& decimal) {
  constexpr T kMax = std::numeric_limits<T>::max();
  if (decimal.Value > kMax) return kMax;
  const auto value = static_cast<T>(decimal.Value);
  return decimal.Negative ? static_cast<T>(T{0} - value) : value;
}

std::int32_t Signed(const Decimal& decimal) {
  constexpr std::int64_t kMax = std::numeric_limits<std::int32_t>::max();
  const auto limit = static_cast<unsigned __int128>(kMax + (decimal.Negative ? 1 : 0));
  const auto value = static_cast<std::int64_t>(decimal.Value > limit ? limit : decimal.Value);
  return static_cast<std::int32_t>(decimal.Negative ? -value : value);
}

void CheckNumbers(const std::string& text) {
  const Decimal decimal = ParseDecimal(text);
  fuzz::Require(qenzor::ParseInt32(text) == Signed(decimal));
  fuzz::Require(qenzor::ParseUInt32(text) == Unsigned<std::uint32_t>(decimal));
  fuzz::Require(qenzor::ParseUInt64(text) == Unsigned<std::uint64_t>(decimal));
  // strtof knows more forms than we do: names and hexadecimal digits are left out.
  if (text.find_first_of("xXnNiIpP") == std::string::npos && text.find('\0') == std::string::npos) {
    const float expected = std::strtof(text.c_str(), nullptr);
    const float parsed = qenzor::ParseFloat(text);
    fuzz::Require(std::memcmp(&parsed, &expected, sizeof(float)) == 0 ||
                  (parsed == 0 && expected == 0));
  }
}

void CheckFormats(const std::uint8_t* data, std::size_t size) {
  if (size < sizeof(double)) return;
  std::uint64_t bits = 0;
  std::memcpy(&bits, data, sizeof(bits));
  char ours[512];
  char theirs[512];
  const auto same = [&](const char* end) {
    return std::string(ours, static_cast<std::size_t>(end - ours)) == theirs;
  };
  std::snprintf(theirs, sizeof(theirs), "%d", static_cast<std::int32_t>(bits));
  fuzz::Require(same(qenzor::FormatInt32(ours, static_cast<std::int32_t>(bits))));
  std::snprintf(theirs, sizeof(theirs), "%u", static_cast<std::uint32_t>(bits));
  fuzz::Require(same(qenzor::FormatUInt32(ours, static_cast<std::uint32_t>(bits))));
  std::snprintf(theirs, sizeof(theirs), "%llu", static_cast<unsigned long long>(bits));
  fuzz::Require(same(qenzor::FormatUInt64(ours, bits)));
  float single = 0;
  std::memcpy(&single, data, sizeof(single));
  std::snprintf(theirs, sizeof(theirs), "%.10f", static_cast<double>(single));
  fuzz::Require(same(qenzor::FormatFixed10(ours, static_cast<double>(single))));
}

void CheckCodePage(const std::string& narrow, const std::u16string& wide) {
  // What the code page holds comes back; what it lacks becomes one '?' a unit and stays that.
  const std::string once = qenzor::NarrowText(wide);
  const std::u16string back = qenzor::WidenText(once);
  fuzz::Require(back.size() == wide.size());
  for (std::size_t i = 0; i < wide.size(); ++i)
    fuzz::Require(back[i] == wide[i] || back[i] == u'?');
  fuzz::Require(qenzor::NarrowText(back) == once);
  // Every byte counts: a character takes one byte or two.
  const std::u16string widened = qenzor::WidenText(narrow);
  fuzz::Require(widened.size() <= narrow.size() && widened.size() * 2 >= narrow.size());
  // No text leaves a mark on the next.
  fuzz::Require(qenzor::WidenText(narrow + "A") == widened + u'A' ||
                (!narrow.empty() && static_cast<unsigned char>(narrow.back()) >= 0x80));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string text(reinterpret_cast<const char*>(data), size);
  std::u16string wide(size / 2, u'\0');
  if (!wide.empty()) std::memcpy(wide.data(), data, wide.size() * 2);
  CheckNumbers(text);
  CheckFormats(data, size);
  CheckCodePage(text, wide);
  return 0;
}
