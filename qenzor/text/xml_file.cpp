#include "qenzor/text/xml_file.h"

#include <algorithm>

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
      const std::size_t at = std::min(m_rest.find_first_of("=\"'>"), m_rest.size());
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

/// Parses the file; why that failed, or nothing.
std::optional<XmlError> Load(const CString& path, TiXmlDocument& xml) {
  std::optional<XmlError> error = XmlError{0, 0, "the file cannot be read"};
  ReadWholeFile(path, [&](std::uint8_t* bytes, std::uint32_t size) {
    std::string text(reinterpret_cast<const char*>(bytes), size);
    error = FindXmlLimitError(text);
    if (error.has_value()) return false;
    // Line ends as the parser's own loading makes them: CR LF and CR become LF.
    ReplaceAll(text, "\r\n", "\n");
    std::ranges::replace(text, '\r', '\n');
    xml.Parse(text.c_str(), nullptr, TIXML_DEFAULT_ENCODING);
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

bool LoadXmlFile(const CString& path, TiXmlDocument& xml) { return !Load(path, xml).has_value(); }

std::optional<XmlError> FindXmlError(const CString& path) {
  TiXmlDocument xml;
  return Load(path, xml);
}

}  // namespace qenzor
