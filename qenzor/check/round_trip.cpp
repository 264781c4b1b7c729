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

/// How a text comes back that XML holds in the code page: spaces and line feeds are escaped, and of
/// other white space the parser makes one space, or none at both ends.
CStringW ThroughXml(std::u16string_view text, bool undoes_escapes) {
  CStringW through = WidenText(NarrowText(text));
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
  m_reporter.Report(Code::kRoundTripInfo, offset, &node,
                    [] { return "the identification does not come back from XML as it is"; });
}

void CRoundTripChecks::Integer(const PathNode& node, const FieldSchema& field, std::uint64_t value,
                               std::uint64_t offset) {
  if (field.Role != Role::kMagic || value == 0x4041) return;
  m_reporter.Report(Code::kRoundTripInfo, offset, &node,
                    [] { return "Magic comes back from XML as 0; only 0x4041 is known there"; });
}

void CRoundTripChecks::Real(const PathNode& node, const FieldSchema& field, float value,
                            std::uint64_t offset) {
  std::array<char, kFixed10MaxLength> text;
  const char* const end = FormatFixed10(text.data(), value);
  const std::string_view written(text.data(), static_cast<std::size_t>(end - text.data()));
  const float read = ParseFloat(written);
  if (std::bit_cast<std::uint32_t>(read) == std::bit_cast<std::uint32_t>(value)) return;
  m_reporter.Report(Code::kRoundTripNumber, offset, &node, [&] {
    return CString(field.Tag) + " stands in XML as " + CString(written) +
           ", which is not the number that it is";
  });
}

void CRoundTripChecks::Text(const PathNode& node, const FieldSchema& field,
                            std::u16string_view text, std::uint64_t offset) {
  if (text.empty()) return;
  if (node.Id == CUrlInfo::kChunkId)
    return m_reporter.Report(Code::kRoundTripLink, offset, &node,
                             [] { return "the link is written to XML where it is not read"; });
  if (ThroughXml(text, node.Id == CCmbLblObj::kChunkId) == text) return;
  const CStringW in_code_page = WidenText(NarrowText(text));
  if (in_code_page != text)
    return m_reporter.Report(Code::kRoundTripCharacter, offset, &node, [&] {
      std::size_t lost = 0;
      for (std::size_t i = 0; i < text.size(); ++i)
        if (text[i] != in_code_page[i]) ++lost;
      return to_string(lost) + (lost == 1 ? " unit of " : " units of ") + CString(field.Tag) +
             " has no form in code page 932 and becomes a question mark";
    });
  m_reporter.Report(Code::kRoundTripSpace, offset, &node, [&] {
    return CString(field.Tag) + " has white space that comes back otherwise";
  });
}

}  // namespace qenzor::check
