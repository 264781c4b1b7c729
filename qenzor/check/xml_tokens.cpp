#include <algorithm>

#include "qenzor/check/xml_tokens_impl.h"

namespace qenzor::check {

namespace {

constexpr std::string_view kCDataBegin = "<![CDATA[";
constexpr std::string_view kCDataEnd = "]]>";

void SkipSpace(std::string_view& text) {
  while (!text.empty() && IsXmlSpace(text.front())) text.remove_prefix(1);
}

/// Takes the front of the text, up to one of these characters.
std::string_view TakeUpTo(std::string_view& text, std::string_view ends) {
  const std::string_view part = text.substr(0, text.find_first_of(ends));
  text.remove_prefix(part.size());
  return part;
}

bool StartsWithDocType(std::string_view text) {
  constexpr std::string_view kWord = "<!doctype";
  return text.size() >= kWord.size() &&
         std::ranges::equal(kWord, text.substr(0, kWord.size()),
                            [](char word, char c) { return word == c || word == c + 32; });
}

}  // namespace

CXmlTokens::Kind CXmlTokens::Next() {
  using Event = CXmlScanner::Event;
  if (m_stopped) return Kind::kStop;
  m_from = m_scanner.GetPosition();
  switch (m_scanner.Step(m_text.substr(m_scanner.GetPosition()), true)) {
    case Event::kStart:
      ReadTag(m_text.substr(m_scanner.GetMarkup(), m_scanner.GetPosition() - GetOffset()));
      return Kind::kStart;
    case Event::kEmpty:
      ReadTag(m_text.substr(m_scanner.GetMarkup(), m_scanner.GetPosition() - GetOffset()));
      return Kind::kEmpty;
    case Event::kEnd:
      m_content = m_text.substr(GetOffset() + 2, m_scanner.GetPosition() - GetOffset() - 3);
      m_content = TakeUpTo(m_content, " \t\n\v\f\r");
      return Kind::kEnd;
    case Event::kPassed:
      return Passed();
    default:
      m_stopped = true;
      return Kind::kStop;
  }
}

CXmlTokens::Kind CXmlTokens::Passed() {
  m_content = m_text.substr(GetOffset(), m_scanner.GetPosition() - GetOffset());
  switch (m_scanner.GetKind()) {
    case CXmlScanner::Kind::kText:
      while (!m_content.empty() && IsXmlSpace(m_content.back())) m_content.remove_suffix(1);
      return Kind::kText;
    case CXmlScanner::Kind::kCData:
      m_content.remove_prefix(kCDataBegin.size());
      m_content.remove_suffix(kCDataEnd.size());
      return Kind::kCData;
    default:
      return m_content.starts_with("<?") || m_content.starts_with("<!--") ||
                     StartsWithDocType(m_content)
                 ? Kind::kOther
                 : Kind::kUnknown;
  }
}

/// Takes apart a tag that is known to be one.
void CXmlTokens::ReadTag(std::string_view tag) {
  m_attributes.clear();
  tag.remove_prefix(1);
  tag.remove_suffix(tag.ends_with("/>") ? 2 : 1);
  m_content = TakeUpTo(tag, " \t\n\v\f\r");
  for (SkipSpace(tag); !tag.empty(); SkipSpace(tag)) {
    XmlAttribute attribute{TakeUpTo(tag, "= \t\n\v\f\r"), {}};
    SkipSpace(tag);
    if (!tag.starts_with('=')) return;
    tag.remove_prefix(1);
    SkipSpace(tag);
    const bool is_quoted = tag.starts_with('"') || tag.starts_with('\'');
    const std::string_view quote = tag.substr(0, is_quoted ? 1 : 0);
    tag.remove_prefix(quote.size());
    attribute.Value = TakeUpTo(tag, is_quoted ? quote : " \t\n\v\f\r/>\"'");
    tag.remove_prefix(std::min(quote.size(), tag.size()));
    m_attributes.push_back(attribute);
  }
}

}  // namespace qenzor::check
