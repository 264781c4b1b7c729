#include "qenzor/text/xml_file.h"

#include <algorithm>
#include <array>

namespace qenzor {

namespace {

/// Walks markup as the parser does, so that the text cannot mean one thing here and another there.
class CXmlScanner {
 public:
  explicit CXmlScanner(std::string_view xml) : m_rest(xml) {}

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
        return m_depth + (closed ? 1 : 0) <= kMaxXmlDepth;
      }
      if (found == '=') {
        if (++attributes > kMaxXmlAttributes) return false;
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
    return !is_xml || (std::ranges::count(declaration, '"') % 2 == 0 &&
                       std::ranges::count(declaration, '\'') % 2 == 0);
  }

  std::string_view m_rest;
  std::uint32_t m_depth = 0;
};

}  // namespace

bool IsWithinXmlLimits(std::string_view xml) noexcept {
  return xml.find('\0') == std::string_view::npos && CXmlScanner(xml).Scan();
}

}  // namespace qenzor
