#include <algorithm>

#include "qenzor/check/xml_tokens_impl.h"

namespace qenzor::check {

namespace {

bool IsNameStart(char c) {
  const auto byte = static_cast<unsigned char>(c);
  return (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z') || byte >= 127 || c == '_';
}
bool IsNameChar(char c) {
  return IsNameStart(c) || (c >= '0' && c <= '9') || c == '-' || c == '.' || c == ':';
}

}  // namespace

void CXmlTokens::SkipSpace() {
  while (m_at < m_text.size() && IsXmlSpace(m_text[m_at])) ++m_at;
}

std::string_view CXmlTokens::Name() {
  const std::size_t from = m_at;
  while (m_at < m_text.size() && IsNameChar(m_text[m_at])) ++m_at;
  return m_text.substr(from, m_at - from);
}

CXmlTokens::Kind CXmlTokens::Next() {
  if (m_stopped) return Kind::kStop;
  if (m_at == 0 && m_text.starts_with("\xEF\xBB\xBF")) m_at = 3;
  SkipSpace();
  m_offset = m_at;
  if (m_at == m_text.size()) return Stop();
  if (m_text[m_at] != '<') {
    const std::size_t end = std::min(m_text.find('<', m_at), m_text.size());
    m_content = m_text.substr(m_at, end - m_at);
    while (IsXmlSpace(m_content.back())) m_content.remove_suffix(1);
    m_at = end;
    return Kind::kText;
  }
  const std::string_view rest = m_text.substr(m_at);
  if (rest.size() > 1 && IsNameStart(rest[1])) return Tag();
  if (rest.starts_with("</")) return EndTag();
  if (rest.starts_with("<!--")) return Enclosed("<!--", "-->", Kind::kOther);
  if (rest.starts_with("<![CDATA[")) return Enclosed("<![CDATA[", "]]>", Kind::kCData);
  return Enclosed("<", ">", Kind::kOther);
}

CXmlTokens::Kind CXmlTokens::Enclosed(std::string_view begin, std::string_view end, Kind kind) {
  const std::size_t from = m_at + begin.size();
  const std::size_t to = m_text.find(end, from);
  if (to == std::string_view::npos) return Stop();
  m_content = m_text.substr(from, to - from);
  m_at = to + end.size();
  return kind;
}

CXmlTokens::Kind CXmlTokens::EndTag() {
  m_at += 2;
  m_content = Name();
  SkipSpace();
  if (m_at == m_text.size() || m_text[m_at] != '>') return Stop();
  ++m_at;
  return Kind::kEnd;
}

CXmlTokens::Kind CXmlTokens::Tag() {
  ++m_at;
  m_content = Name();
  m_attributes.clear();
  while (true) {
    SkipSpace();
    if (m_text.substr(m_at).starts_with("/>")) {
      m_at += 2;
      return Kind::kEmpty;
    }
    if (m_text.substr(m_at).starts_with('>')) {
      ++m_at;
      return Kind::kStart;
    }
    if (!Attribute()) return Stop();
  }
}

/// Name, '=' and value, which may lack its quotes.
bool CXmlTokens::Attribute() {
  XmlAttribute attribute{Name(), {}};
  SkipSpace();
  if (attribute.Name.empty() || !m_text.substr(m_at).starts_with('=')) return false;
  ++m_at;
  SkipSpace();
  if (m_at == m_text.size()) return false;
  const char quote = m_text[m_at];
  if (quote == '"' || quote == '\'') {
    const std::size_t end = m_text.find(quote, m_at + 1);
    if (end == std::string_view::npos) return false;
    attribute.Value = m_text.substr(m_at + 1, end - m_at - 1);
    m_at = end + 1;
  } else {
    const std::size_t end = std::min(m_text.find_first_of(" \t\n\v\f\r/>\"'", m_at), m_text.size());
    attribute.Value = m_text.substr(m_at, end - m_at);
    m_at = end;
  }
  m_attributes.push_back(attribute);
  return true;
}

}  // namespace qenzor::check
