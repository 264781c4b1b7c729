#include "qenzor/text/xml_file.h"

#include <algorithm>
#include <cstring>

#include "qenzor/core/document_impl.h"
#include "qenzor/text/document_text_impl.h"

namespace qenzor {

namespace {

/// Walks markup as the parser does, so that the text cannot mean one thing here and another there.
class CXmlScanner {
 public:
  explicit CXmlScanner(std::string_view xml) : m_rest(xml) {}

  /// Why the text is refused; null when it is not.
  const char* GetReason() const { return m_reason; }
  /// Bytes that had not been walked when the walk ended.
  std::size_t GetLeft() const { return m_rest.size(); }

  bool Scan() {
    while (SkipTo("<")) {
      if (m_rest.starts_with("<!--")) {
        m_rest.remove_prefix(4);
        SkipPast("-->");
      } else if (m_rest.starts_with("<![CDATA[")) {
        m_rest.remove_prefix(9);
        SkipPast("]]>");
      } else if (m_rest.starts_with("</")) {
        if (m_depth > 0) --m_depth;
        SkipPast(">");
      } else if (m_rest.size() > 1 && IsNameStart(m_rest[1])) {
        if (!ScanTag()) return false;
      } else if (!ScanDeclaration()) {
        return false;
      }
    }
    return true;
  }

 private:
  static bool IsNameStart(char c) {
    const auto byte = static_cast<unsigned char>(c);
    return (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z') || byte == '_' ||
           byte >= 127;
  }

  /// What matters inside a start tag.
  static bool IsTagMark(char c) { return c == '=' || c == '"' || c == '\'' || c == '>'; }

  bool SkipTo(std::string_view mark) {
    m_rest.remove_prefix(std::min(m_rest.find(mark), m_rest.size()));
    return !m_rest.empty();
  }
  void SkipPast(std::string_view mark) {
    if (SkipTo(mark)) m_rest.remove_prefix(mark.size());
  }

  /// A start tag; quoted values may hold anything but their own quote.
  bool ScanTag() {
    std::uint32_t attributes = 0;
    m_rest.remove_prefix(1);
    while (!m_rest.empty()) {
      const auto at = static_cast<std::size_t>(
          std::find_if(m_rest.begin(), m_rest.end(), IsTagMark) - m_rest.begin());
      const bool closed = at > 0 && m_rest[at - 1] == '/';
      if (at == m_rest.size()) {
        m_rest = {};
        return true;
      }
      const char found = m_rest[at];
      m_rest.remove_prefix(at + 1);
      if (found == '>') {
        if (!closed) ++m_depth;
        return m_depth + (closed ? 1 : 0) <= kMaxXmlDepth || Refuse("elements nest too deep");
      }
      if (found == '=') {
        if (++attributes > kMaxXmlAttributes) return Refuse("an element has too many attributes");
      } else {
        SkipPast(std::string_view(&found, 1));
      }
    }
    return true;
  }

  /// Declarations end at the first '>' unless it stands inside quotes, about which the parser knows
  /// in the XML declaration alone: such a one is refused.
  bool ScanDeclaration() {
    const std::string_view declaration = m_rest.substr(0, m_rest.find('>'));
    const bool is_xml = m_rest.size() > 1 && m_rest[1] == '?';
    SkipPast(">");
    return !is_xml ||
           (std::ranges::count(declaration, '"') % 2 == 0 &&
            std::ranges::count(declaration, '\'') % 2 == 0) ||
           Refuse("a declaration holds '>' inside quotes");
  }

  bool Refuse(const char* reason) {
    m_reason = reason;
    return false;
  }

  std::string_view m_rest;
  std::uint32_t m_depth = 0;
  const char* m_reason = nullptr;
};

XmlError ErrorAt(std::string_view xml, std::size_t at, const char* reason) {
  const std::string_view before = xml.substr(0, at);
  const std::size_t line_start = before.rfind('\n') + 1;  // npos + 1 is 0
  return {static_cast<std::uint32_t>(std::ranges::count(before, '\n') + 1),
          static_cast<std::uint32_t>(at - line_start + 1), reason};
}

}  // namespace

std::optional<XmlError> FindXmlLimitError(std::string_view xml) {
  if (const std::size_t nul = xml.find('\0'); nul != std::string_view::npos)
    return ErrorAt(xml, nul, "the text holds a NUL");
  CXmlScanner scanner(xml);
  if (scanner.Scan()) return std::nullopt;
  return ErrorAt(xml, xml.size() - scanner.GetLeft(), scanner.GetReason());
}

bool IsWithinXmlLimits(std::string_view xml) { return !FindXmlLimitError(xml).has_value(); }

namespace {

/// Line ends as the parser's own loading makes them: CR LF and CR become LF. The new end of the
/// text.
char* NormaliseLineEnds(char* from, char* end) {
  const auto line_end = [end](char* line) {
    void* found = std::memchr(line, '\r', static_cast<std::size_t>(end - line));
    return found == nullptr ? end : static_cast<char*>(found);
  };
  char* to = line_end(from);
  for (from = to; from != end;) {
    from += from + 1 != end && from[1] == '\n' ? 2 : 1;
    *to++ = '\n';
    char* const next = line_end(from);
    to = std::copy(from, next, to);
    from = next;
  }
  return to;
}

/// Parses the file; why that failed, or nothing.
std::optional<XmlError> Load(const CString& path, TiXmlDocument& xml) {
  std::optional<XmlError> error = XmlError{0, 0, "the file cannot be read"};
  ReadWholeFile(path, [&](std::uint8_t* bytes, std::uint32_t size) {
    char* const begin = reinterpret_cast<char*>(bytes);
    char* const end = NormaliseLineEnds(begin, begin + size);
    *end = '\0';
    const std::string_view text(begin, static_cast<std::size_t>(end - begin));
    error = FindXmlLimitError(text);
    if (error.has_value()) return false;
    xml.Parse(begin, nullptr, TIXML_DEFAULT_ENCODING);
    if (xml.Error()) {
      // The parser knows no place for what is missing at the end.
      error = ErrorAt(text, text.size(), xml.ErrorDesc());
      if (xml.ErrorRow() > 0) {
        error->Line = static_cast<std::uint32_t>(xml.ErrorRow());
        error->Column = static_cast<std::uint32_t>(xml.ErrorCol());
      }
    }
    return true;
  });
  return error;
}

}  // namespace

bool LoadXmlFile(const CString& path, TiXmlDocument& xml) {
  xml.SetTabSize(0);  // whoever asks where an error stands gets it from FindXmlError
  return !Load(path, xml).has_value();
}

std::optional<XmlError> FindXmlError(const CString& path) {
  TiXmlDocument xml;
  return Load(path, xml);
}

}  // namespace qenzor
