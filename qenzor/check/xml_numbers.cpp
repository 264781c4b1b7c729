#include <algorithm>
#include <cmath>
#include <limits>

#include "qenzor/check/xml_text_impl.h"
#include "qenzor/platform/numbers.h"

namespace qenzor::check {

namespace {

using std::to_string;

/// A longer text of a float, or none, leaves the value alone.
constexpr std::size_t kMaxFloatLength = 63;

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

std::size_t SkipDigits(std::string_view text, std::size_t at) {
  while (at < text.size() && IsDigit(text[at])) ++at;
  return at;
}

std::string_view WithoutSpace(std::string_view text) {
  while (!text.empty() && IsXmlSpace(text.front())) text.remove_prefix(1);
  while (!text.empty() && IsXmlSpace(text.back())) text.remove_suffix(1);
  return text;
}

/// A decimal number: its sign and digits, and what stands behind it.
struct Number {
  bool IsNegative = false;
  std::string_view Digits;
  std::string_view Rest;

  bool IsRead() const { return !Digits.empty() && Rest.empty(); }
  /// Whether the number, without regard to what follows, is not above the limit.
  bool IsWithin(std::uint64_t least_negated, std::uint64_t most) const {
    std::string_view digits = Digits;
    while (digits.size() > 1 && digits.front() == '0') digits.remove_prefix(1);
    const CString limit = to_string(IsNegative ? least_negated : most);
    return digits.size() < limit.size() || (digits.size() == limit.size() && digits <= limit);
  }
};

Number Split(std::string_view text) {
  text = WithoutSpace(text);
  Number number;
  if (!text.empty() && (text.front() == '-' || text.front() == '+')) {
    number.IsNegative = text.front() == '-';
    text.remove_prefix(1);
  }
  const std::size_t end = SkipDigits(text, 0);
  number.Digits = text.substr(0, end);
  number.Rest = text.substr(end);
  return number;
}

/// Whether the text is a number without more ado, and so short that it is read as what it says.
bool IsPlain(std::string_view text) {
  constexpr std::size_t kShort = 9;
  if (text.starts_with('-')) text.remove_prefix(1);
  return !text.empty() && text.size() <= kShort && SkipDigits(text, 0) == text.size();
}

/// Reports a number that is not read in full, or does not fit; read is what it is read as.
void CheckNumber(const CString& what, std::string_view text, std::uint64_t least_negated,
                 std::uint64_t most, Code outside, const CString& read, const XmlPlace& place) {
  const Number number = Split(text);
  if (!number.IsRead())
    place.Report(Code::kXmlValueNotRead, [&] {
      return number.Digits.empty() && number.Rest.empty()
                 ? what + " has no number and is read as " + read
                 : what + ' ' + Quoted(text) + " is no whole number and is read as " + read;
    });
  if (!number.Digits.empty() && !number.IsWithin(least_negated, most))
    place.Report(outside, [&] {
      return what + ' ' + Quoted(text) + " is not between " +
             (least_negated == 0 ? "0" : "-" + to_string(least_negated)) + " and " +
             to_string(most) +
             (outside == Code::kXmlCoordinate ? CString() : "; it is stored as " + read);
    });
}

/// Whether the digits, up to an exponent, say anything but 0.
bool IsAboveZero(std::string_view text) {
  return text.substr(0, text.find_first_of("eE")).find_first_of("123456789") !=
         std::string_view::npos;
}

}  // namespace

std::uint64_t ReadXmlInteger(std::string_view text, const FieldSchema& field,
                             const XmlPlace& place) {
  const bool is_signed = field.Shape == Shape::kSigned;
  const unsigned bits = 8U * field.Width;
  std::uint64_t value = 0;
  if (field.Width == 8)
    value = ParseUInt64(text);
  else if (field.Width == 4 && !is_signed)
    value = ParseUInt32(text);
  else
    value = static_cast<std::uint64_t>(std::int64_t{ParseInt32(text)});
  if (is_signed && bits == 16)
    value = static_cast<std::uint64_t>(std::int64_t{static_cast<std::int16_t>(value)});
  else if (!is_signed && bits < 64)
    value &= (std::uint64_t{1} << bits) - 1;
  const std::uint64_t half = std::uint64_t{1} << (bits - 1);
  const std::uint64_t most = is_signed ? half - 1 : half - 1 + half;
  const bool is_plain = IsPlain(text) && text.front() != '-';
  if (is_plain && static_cast<std::uint64_t>(ParseInt32(text)) == value) return value;
  const CString read = is_signed ? to_string(static_cast<std::int64_t>(value)) : to_string(value);
  CheckNumber(CString(field.Tag), text, is_signed ? half : 0, most, Code::kXmlValueOutOfRange, read,
              place);
  return value;
}

std::int32_t ReadXmlAttribute(std::string_view tag, std::string_view name, std::string_view text,
                              std::int32_t least, std::int32_t most, Code code,
                              const XmlPlace& place) {
  const std::int32_t value = ParseInt32(text);
  if (value >= least && value <= most && IsPlain(text)) return value;
  const auto bits = static_cast<std::uint32_t>(value);
  const CString read = most == 255 ? to_string(bits & 0xFF)
                       : code != Code::kXmlCoordinate && most == 0x7FFF
                           ? to_string(static_cast<std::int16_t>(bits))
                           : to_string(value);
  CheckNumber(CString(name) + " of " + CString(tag), text,
              static_cast<std::uint64_t>(-std::int64_t{least}), static_cast<std::uint64_t>(most),
              code, read, place);
  return value;
}

float ReadXmlReal(std::string_view text, const FieldSchema& field, const XmlPlace& place) {
  if (text.empty() || text.size() > kMaxFloatLength) {
    place.Report(Code::kXmlFloatLeftOut, [&] {
      return CString(field.Tag) +
             (text.empty() ? " has no number and is left out"
                           : " has " + to_string(text.size()) + " characters, more than the " +
                                 to_string(kMaxFloatLength) + " that are read, and is left out");
    });
    return 0;
  }
  const float value = ParseFloat(text);
  const Number whole = Split(text);
  std::string_view rest = whole.Rest;
  bool has_digits = !whole.Digits.empty();
  if (rest.starts_with('.')) {
    const std::size_t end = SkipDigits(rest, 1);
    has_digits = has_digits || end > 1;
    rest.remove_prefix(end);
  }
  if (has_digits && (rest.starts_with('e') || rest.starts_with('E'))) {
    const std::size_t sign = rest.size() > 1 && (rest[1] == '-' || rest[1] == '+') ? 2 : 1;
    const std::size_t end = SkipDigits(rest, sign);
    if (end > sign) rest.remove_prefix(end);
  }
  if (!has_digits || !rest.empty())
    place.Report(Code::kXmlValueNotRead, [&] {
      return CString(field.Tag) + ' ' + Quoted(text) + " is no number and is read as " +
             (has_digits ? CString(text.substr(0, text.size() - rest.size())) : "0");
    });
  else if (!std::isfinite(value) || (value == 0 && IsAboveZero(text)))
    place.Report(Code::kXmlValueOutOfRange, [&] {
      return CString(field.Tag) + ' ' + Quoted(text) + " is " +
             (value == 0 ? "nearer to 0 than the file can hold and becomes 0"
                         : "beyond what the file can hold and becomes infinite");
    });
  return value;
}

}  // namespace qenzor::check
