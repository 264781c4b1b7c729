#include <algorithm>
#include <array>
#include <bit>

#include "qenzor/check/round_trip_impl.h"
#include "qenzor/check/xml_tokens_impl.h"
#include "qenzor/platform/code_page.h"
#include "qenzor/platform/numbers.h"
#include "qenzor/qen/cmb_lbl_obj.h"
#include "qenzor/qen/url_info.h"

namespace qenzor::check {

namespace {

using std::to_string;

constexpr std::u16string_view kSpace = u"&nbsp;";
constexpr std::u16string_view kLineFeed = u"<br />";

/// Four hexadecimal digits, or more where there are.
CString HexOf(std::uint32_t character) {
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  CString hex;
  for (; character != 0 || hex.size() < 4; character >>= 4U)
    hex.insert(hex.begin(), kDigits[character & 0xFU]);
  return hex;
}

/// How white space comes back: spaces and line feeds are escaped, and of other white space the
/// parser makes one space, or none at both ends.
CStringW ThroughXml(CStringW through, bool undoes_escapes) {
  ReplaceAll(through, u" ", kSpace);
  ReplaceAll(through, u"\n", kLineFeed);
  const auto is_space = [](char16_t c) { return c < 0x80 && IsXmlSpace(static_cast<char>(c)); };
  CStringW condensed;
  for (const char16_t c : through) {
    if (!is_space(c))
      condensed += c;
    else if (!condensed.empty() && condensed.back() != u' ')
      condensed += u' ';
  }
  if (condensed.ends_with(u' ')) condensed.pop_back();
  if (!undoes_escapes) return condensed;
  ReplaceAll(condensed, kLineFeed, u"\n");
  ReplaceAll(condensed, kSpace, u" ");
  return condensed;
}

}  // namespace

void CRoundTripChecks::Ident(const PathNode& node, std::string_view ident, std::uint64_t offset) {
  const std::string_view name = ident.substr(0, ident.size() - 3);
  const bool keeps_name =
      std::ranges::none_of(name, [](char c) { return c == '\0' || IsXmlSpace(c); });
  if (keeps_name && ident.ends_with("\r\n\x1A")) return;
  Report(Code::kRoundTripInfo, offset, node,
         [] { return "the identification does not come back from XML as it is"; });
}

void CRoundTripChecks::Integer(const PathNode& node, const FieldSchema& field, std::uint64_t value,
                               std::uint64_t offset) {
  if (field.Role != Role::kMagic || value == 0x4041) return;
  Report(Code::kRoundTripInfo, offset, node,
         [] { return "Magic comes back from XML as 0; only 0x4041 is known there"; });
}

void CRoundTripChecks::Real(const PathNode& node, const FieldSchema& field, float value,
                            std::uint64_t offset) {
  std::array<char, kFixed10MaxLength> text;
  const char* const end = FormatFixed10(text.data(), value);
  const std::string_view written(text.data(), static_cast<std::size_t>(end - text.data()));
  const float read = ParseFloat(written);
  if (std::bit_cast<std::uint32_t>(read) == std::bit_cast<std::uint32_t>(value)) return;
  Report(Code::kRoundTripNumber, offset, node, [&] {
    return CString(field.Tag) + " stands in XML as " + CString(written) +
           ", which is not the number that it is";
  });
}

/// File names are in the code page in the edit form, whatever the XML is in.
CStringW CRoundTripChecks::Encoded(const FieldSchema& field, std::u16string_view text) const {
  const bool is_utf8 = m_reporter.GetOptions().Encoding == XmlEncoding::kUtf8;
  const TextEncoding encoding =
      is_utf8 && field.Role != Role::kImageName ? TextEncoding::kUtf8 : TextEncoding::kCodePage;
  return DecodeText(EncodeText(text, encoding), encoding);
}

void CRoundTripChecks::Text(const PathNode& node, const FieldSchema& field,
                            std::u16string_view text, std::uint64_t offset) {
  if (text.empty()) return;
  if (node.Id == CUrlInfo::kChunkId)
    return Report(Code::kRoundTripLink, offset, node,
                  [] { return "the link is written to XML where it is not read"; });
  const CStringW encoded = Encoded(field, text);
  CheckCharacters(node, field, text, encoded, offset);
  if (ThroughXml(encoded, node.Id == CCmbLblObj::kChunkId) != encoded)
    Report(Code::kRoundTripSpace, offset, node,
           [&] { return CString(field.Tag) + " has white space that comes back otherwise"; });
}

/// Every unit comes back as one, if not as itself.
void CRoundTripChecks::CheckCharacters(const PathNode& node, const FieldSchema& field,
                                       std::u16string_view text, std::u16string_view encoded,
                                       std::uint64_t offset) {
  constexpr std::uint64_t kMarkSize = 2;
  for (std::size_t at = 0; at < text.size(); ++at) {
    if (text[at] == encoded[at]) continue;
    const std::size_t first = at;
    std::uint32_t character = text[at];
    const bool is_pair = (character & 0xFC00U) == 0xD800 && at + 1 < text.size() &&
                         (text[at + 1] & 0xFC00U) == 0xDC00;
    if (is_pair) character = 0x10000 + ((character & 0x3FF) << 10) + (text[++at] & 0x3FF);
    Report(Code::kRoundTripCharacter, offset + kMarkSize + 2 * first, node, [&] {
      return "character " + to_string(first + 1) + " of " + CString(field.Tag) + ", U+" +
             HexOf(character) + ", has no form in XML and comes back as a question mark";
    });
  }
}

}  // namespace qenzor::check
