#include <algorithm>
#include <array>
#include <charconv>
#include <numeric>
#include <optional>

#include "qenzor/check/xml_text_impl.h"
#include "qenzor/platform/code_page.h"

namespace qenzor::check {

namespace {

using std::to_string;

bool IsAscii(std::string_view text) {
  return std::ranges::all_of(text, [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

CString Lower(std::string_view text) {
  CString lower(text);
  std::ranges::transform(lower, lower.begin(), [](char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c;
  });
  return lower;
}

/// How many bytes the UTF-8 character at the front takes; 0 when there is none.
std::size_t Utf8Length(std::string_view text) {
  const auto byte = [&](std::size_t at) {
    return at < text.size() ? static_cast<unsigned char>(text[at]) : 0U;
  };
  const auto tail = [&](std::size_t at) { return (byte(at) & 0xC0U) == 0x80U; };
  const unsigned first = byte(0);
  if (first < 0x80) return 1;
  if (first >= 0xC2 && first < 0xE0) return tail(1) ? 2 : 0;
  if (first >= 0xE0 && first < 0xF0) {
    const bool in_range = !(first == 0xE0 && byte(1) < 0xA0) && !(first == 0xED && byte(1) > 0x9F);
    return in_range && tail(1) && tail(2) ? 3 : 0;
  }
  if (first >= 0xF0 && first < 0xF5) {
    const bool in_range = !(first == 0xF0 && byte(1) < 0x90) && !(first == 0xF4 && byte(1) > 0x8F);
    return in_range && tail(1) && tail(2) && tail(3) ? 4 : 0;
  }
  return 0;
}

bool IsUtf8(std::string_view text) {
  while (!text.empty()) {
    const std::size_t length = Utf8Length(text);
    if (length == 0) return false;
    text.remove_prefix(length);
  }
  return true;
}

/// The encoding that the declaration at the front names; empty when there is none.
std::string_view DeclaredEncoding(std::string_view text) {
  if (text.starts_with("\xEF\xBB\xBF")) text.remove_prefix(3);
  if (!text.starts_with("<?xml")) return {};
  const std::string_view declaration = text.substr(0, text.find('>'));
  constexpr std::string_view kWord = "encoding";
  std::size_t at = declaration.find(kWord);
  if (at == std::string_view::npos) return {};
  at = declaration.find_first_of("\"'", at + kWord.size());
  if (at == std::string_view::npos) return {};
  const std::size_t end = declaration.find(declaration[at], at + 1);
  return end == std::string_view::npos ? std::string_view()
                                       : declaration.substr(at + 1, end - at - 1);
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

}  // namespace

CString ReadXmlText(std::string_view raw, bool is_cdata, std::uint64_t offset, const PathNode& node,
                    CReporter& reporter) {
  CString text;
  text.reserve(raw.size());
  if (is_cdata) return text.append(raw);
  for (std::size_t at = 0; at < raw.size();) {
    const char c = raw[at];
    if (IsXmlSpace(c)) {
      // A run of white space is one space.
      while (at < raw.size() && IsXmlSpace(raw[at])) ++at;
      text += ' ';
      continue;
    }
    if (c != '&') {
      text += c;
      ++at;
      continue;
    }
    const std::optional<Reference> reference = ReadReference(raw.substr(at));
    if (!reference.has_value()) {
      reporter.Report(Code::kXmlBareAmpersand, offset + at, &node, [] {
        return "this ampersand begins no reference that is known and is dropped; write &amp;";
      });
      ++at;
      continue;
    }
    if (reference->Character > 0x7F)
      reporter.Report(Code::kXmlCharacterReference, offset + at, &node, [&] {
        return CString(raw.substr(at, reference->Length)) +
               " stands for one byte, not for a character; write the character itself";
      });
    text += static_cast<char>(reference->Character);
    at += reference->Length;
  }
  return text;
}

CStringW ReadXmlWideText(std::string_view text, std::string_view tag, std::uint64_t offset,
                         const PathNode& node, CReporter& reporter) {
  CStringW wide = WidenText(text);
  if (!IsAscii(text) && wide.find(u'\xFFFD') != CStringW::npos)
    reporter.Report(Code::kXmlNotInCodePage, offset, &node, [&] {
      return to_string(std::ranges::count(wide, u'\xFFFD')) + " bytes of " + CString(tag) +
             " are no characters of code page 932 and become U+FFFD";
    });
  return wide;
}

void CheckXmlEncoding(std::string_view text, CReporter& reporter) {
  constexpr std::array<std::string_view, 9> kNames{"shift_jis", "shift-jis",   "sjis",
                                                   "x-sjis",    "windows-31j", "cp932",
                                                   "ms932",     "csshiftjis",  "ms_kanji"};
  const std::string_view encoding = DeclaredEncoding(text);
  if (!encoding.empty() && std::ranges::find(kNames, Lower(encoding)) == kNames.end())
    reporter.Report(Code::kXmlEncoding, static_cast<std::uint64_t>(encoding.data() - text.data()),
                    nullptr, [&] {
                      return "the declaration names " + CString(encoding) +
                             ", but the text is read as Shift_JIS (code page 932)";
                    });
  const auto* const beyond =
      std::ranges::find_if(text, [](char c) { return static_cast<unsigned char>(c) > 0x7F; });
  if (beyond == text.end() || !IsUtf8(text)) return;
  reporter.Report(
      Code::kXmlLooksUtf8, static_cast<std::uint64_t>(beyond - text.begin()), nullptr,
      [] { return "the text looks like UTF-8, but is read as Shift_JIS (code page 932)"; });
}

void CSpelling::Try(std::string_view candidate) {
  const CString from = Lower(m_word);
  const CString to = Lower(candidate);
  const std::size_t most = std::min(m_distance, 1 + to.size() / 4);
  if (from.size() > to.size() + most || to.size() > from.size() + most) return;
  // The fewest letters to change, put in or take out.
  std::vector<std::size_t> row(to.size() + 1);
  std::iota(row.begin(), row.end(), 0U);
  for (const char letter : from) {
    std::size_t diagonal = row[0]++;
    for (std::size_t j = 0; j < to.size(); ++j) {
      const std::size_t change = diagonal + (letter == to[j] ? 0 : 1);
      diagonal = row[j + 1];
      row[j + 1] = std::min({change, row[j] + 1, diagonal + 1});
    }
  }
  if (row.back() >= m_distance || row.back() > most) return;
  m_distance = row.back();
  m_nearest = candidate;
}

CString CSpelling::Suggest() const {
  return m_nearest.empty() ? CString() : "; did you mean " + CString(m_nearest) + '?';
}

}  // namespace qenzor::check
