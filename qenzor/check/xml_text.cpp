#include <algorithm>
#include <array>
#include <charconv>
#include <optional>

#include "qenzor/check/xml_text_impl.h"

namespace qenzor::check {

namespace {

using std::to_string;

constexpr std::string_view kNoCharacter = "\xEF\xBF\xBD";

bool IsAscii(std::string_view text) {
  return std::ranges::all_of(text, [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

struct Reference {
  std::size_t Length;  ///< of the reference as it stands
  std::uint32_t Character;
};

/// The reference at the front; nothing when the parser would not know it for one.
std::optional<Reference> ReadReference(std::string_view text) {
  constexpr std::array<std::pair<std::string_view, char>, 5> kNamed{
      {{"&amp;", '&'}, {"&lt;", '<'}, {"&gt;", '>'}, {"&quot;", '"'}, {"&apos;", '\''}}};
  for (const auto& [name, character] : kNamed)
    if (text.starts_with(name))
      return Reference{name.size(), static_cast<unsigned char>(character)};
  if (!text.starts_with("&#")) return std::nullopt;
  const bool is_hex = text.substr(2).starts_with('x');
  const std::size_t digits = is_hex ? 3 : 2;
  const std::size_t end = text.find(';', digits);
  if (end == std::string_view::npos) return std::nullopt;
  std::uint32_t character = 0;
  const auto [stop, error] =
      std::from_chars(text.data() + digits, text.data() + end, character, is_hex ? 16 : 10);
  if (error != std::errc() || stop != text.data() + end) return std::nullopt;
  return Reference{end + 1, character};
}

/// The bytes that the parser puts for a character's number.
CString BytesOf(std::uint32_t character, bool as_utf8) {
  constexpr std::uint32_t kBasicEnd = 0x10000;
  if (!as_utf8 || character < 0x80) return {static_cast<char>(character)};
  if (character < kBasicEnd) {
    const auto unit = static_cast<char16_t>(character);
    return EncodeText({&unit, 1}, TextEncoding::kUtf8);
  }
  const std::array<char16_t, 2> pair{static_cast<char16_t>(0xD7C0 + (character >> 10)),
                                     static_cast<char16_t>(0xDC00 | (character & 0x3FF))};
  return EncodeText({pair.data(), pair.size()}, TextEncoding::kUtf8);
}

CString ReadCData(std::string_view raw) {
  CString text;
  text.reserve(raw.size());
  for (std::size_t i = 0; i < raw.size(); ++i) {
    if (raw[i] == '\r' && raw.substr(i + 1).starts_with('\n')) continue;
    text += raw[i] == '\r' ? '\n' : raw[i];
  }
  return text;
}

}  // namespace

CString ReadXmlText(std::string_view raw, XmlTextKind kind, bool parsed_as_utf8,
                    TextEncoding encoding, const XmlPlace& place) {
  if (kind == XmlTextKind::kCData) return ReadCData(raw);
  CString text;
  text.reserve(raw.size());
  for (std::size_t at = 0; at < raw.size();) {
    const char c = raw[at];
    if (c == '&') {
      const std::optional<Reference> reference = ReadReference(raw.substr(at));
      if (!reference.has_value()) {
        place.Behind(at).Report(Code::kXmlBareAmpersand, [] {
          return "this ampersand begins no reference that is known and is dropped; write &amp;";
        });
        ++at;
        continue;
      }
      const std::uint32_t character = reference->Character;
      const auto as_it_stands = [&] { return CString(raw.substr(at, reference->Length)); };
      if (character == 0) {
        place.Behind(at).Report(Code::kXmlCharacterReference, [&] {
          return as_it_stands() + " stands for a NUL, at which the text ends";
        });
        return text;
      }
      if (character > 0x7F && !(parsed_as_utf8 && encoding == TextEncoding::kUtf8))
        place.Behind(at).Report(Code::kXmlCharacterReference, [&] {
          return as_it_stands() +
                 " does not stand for the character of that number in a text that is read as "
                 "Shift_JIS; write the character itself";
        });
      text += BytesOf(character, parsed_as_utf8);
      at += reference->Length;
    } else if (kind == XmlTextKind::kText && IsXmlSpace(c)) {
      while (at < raw.size() && IsXmlSpace(raw[at])) ++at;
      text += ' ';
    } else {
      const std::size_t length = parsed_as_utf8 ? CXmlScanner::CharacterLength(c) : 1;
      text += raw.substr(at, length);
      at += length;
    }
  }
  return text;
}

CStringW ReadXmlWideText(std::string_view text, const FieldSchema& field, TextEncoding encoding,
                         const XmlPlace& place) {
  CStringW wide = DecodeText(text, encoding);
  if (IsAscii(text)) return wide;
  auto lost = std::ranges::count(wide, u'\xFFFD');
  for (std::size_t at = text.find(kNoCharacter);
       lost > 0 && encoding == TextEncoding::kUtf8 && at != std::string_view::npos;
       at = text.find(kNoCharacter, at + kNoCharacter.size()))
    --lost;
  if (lost > 0)
    place.Report(Code::kXmlNotInCodePage, [&] {
      return to_string(lost) + (lost == 1 ? " byte of " : " bytes of ") + CString(field.Tag) +
             (lost == 1 ? " is no character" : " are no characters") + " of " +
             (encoding == TextEncoding::kUtf8 ? "UTF-8" : "code page 932") + " and " +
             (lost == 1 ? "becomes" : "become") + " U+FFFD";
    });
  if (field.Role != Role::kImageName || encoding == TextEncoding::kCodePage) return wide;
  CStringW kept = WidenText(NarrowText(wide));
  if (kept != wide)
    place.Report(Code::kXmlNameNotInCodePage, [&] {
      return CString(field.Tag) +
             " has characters without a form in code page 932, which become question marks";
    });
  return kept;
}

CString Quoted(std::string_view text) {
  constexpr std::size_t kMost = 40;
  return '"' + CString(text.substr(0, kMost)) + (text.size() > kMost ? "...\"" : "\"");
}

}  // namespace qenzor::check
