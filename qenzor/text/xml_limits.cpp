// The parser recurses on elements, so text must be known to keep the limits before it is parsed.
// That is only worth something if this walk and the parser agree on what is an element and where it
// ends, in malformed text too: what looks like an attribute's value here must not be elements
// there. Hence every step below is the parser's own. Where the parser gives up, so does the walk.

#include <algorithm>
#include <array>
#include <optional>

#include "qenzor/text/xml_error_impl.h"

namespace qenzor {

namespace {

bool IsSpace(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }
bool IsLetter(char c) {
  const auto byte = static_cast<unsigned char>(c);
  return (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z') || byte >= 127;
}
bool IsNameStart(char c) { return IsLetter(c) || c == '_'; }
bool IsNameChar(char c) {
  return IsNameStart(c) || (c >= '0' && c <= '9') || c == '-' || c == '.' || c == ':';
}
bool IsDigit(char c, bool hex) {
  return (c >= '0' && c <= '9') || (hex && ((c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F')));
}
bool StartsWithWord(std::string_view text, std::string_view lower) {
  const auto same = [](char a, char b) { return (a >= 'A' && a <= 'Z' ? a - 'A' + 'a' : a) == b; };
  return text.size() >= lower.size() && std::equal(lower.begin(), lower.end(), text.begin(),
                                                   [&](char b, char a) { return same(a, b); });
}

class CXmlScanner {
 public:
  explicit CXmlScanner(std::string_view xml) : m_rest(xml) {}

  /// Why the text is refused.
  const char* GetReason() const { return m_reason; }
  /// Bytes from the refused piece of markup to the end.
  std::size_t GetLeft() const { return m_markup.size(); }

  /// False when the text is refused.
  bool Scan() {
    if (m_rest.starts_with("\xEF\xBB\xBF")) m_encoding = Encoding::kUtf8;
    for (SkipSpace(); !m_rest.empty(); SkipSpace()) {
      m_markup = m_rest;
      if (m_rest.front() == '<') {
        if (!ScanMarkup()) return false;
      } else if (m_depth > 0) {
        SkipCharacters('<');
      } else {
        GiveUp();  // text has no place outside the root
      }
    }
    return true;
  }

 private:
  enum class Encoding { kUnknown, kUtf8, kOther };

  bool ScanMarkup() {
    if (StartsWithWord(m_rest, "<?xml")) return ScanDeclaration();
    if (m_rest.starts_with("<!--")) return SkipEnclosed("<!--", "-->");
    if (m_rest.starts_with("<![CDATA[")) return SkipEnclosed("<![CDATA[", "]]>");
    if (m_rest.size() > 1 && IsNameStart(m_rest[1])) return ScanTag();
    if (m_rest.starts_with("</") && m_depth > 0) --m_depth;
    return SkipEnclosed("<", ">");
  }

  bool ScanTag() {
    m_rest.remove_prefix(1);
    SkipWhile(IsNameChar);
    for (std::uint32_t attributes = 0;;) {
      SkipSpace();
      if (m_rest.starts_with("/>") || m_rest.starts_with('>')) {
        const bool is_empty = m_rest.front() == '/';
        m_rest.remove_prefix(is_empty ? 2 : 1);
        if (m_depth + 1 > kMaxXmlDepth) return Refuse("elements nest too deep");
        if (!is_empty) ++m_depth;
        return true;
      }
      if (m_rest.empty() || !IsNameStart(m_rest.front())) return GiveUp();
      if (++attributes > kMaxXmlAttributes) return Refuse("an element has too many attributes");
      if (!SkipAttribute().has_value()) return true;
    }
  }

  /// A declaration ends at the first '>' that does not stand in the value of one of three words.
  /// The first one outside the root may settle the encoding.
  bool ScanDeclaration() {
    std::string_view encoding;
    m_rest.remove_prefix(std::string_view("<?xml").size());
    while (!m_rest.empty() && m_rest.front() != '>') {
      SkipSpace();
      const bool tells_encoding = StartsWithWord(m_rest, "encoding");
      if (tells_encoding || StartsWithWord(m_rest, "version") ||
          StartsWithWord(m_rest, "standalone")) {
        const std::optional<std::string_view> value = SkipAttribute();
        if (!value.has_value()) return true;
        if (tells_encoding) encoding = *value;
      } else {
        SkipWhile([](char c) { return c != '>' && !IsSpace(c); });
      }
    }
    if (!m_rest.empty()) m_rest.remove_prefix(1);
    if (m_depth > 0 || m_encoding != Encoding::kUnknown) return true;
    if (encoding.find('&') != std::string_view::npos)
      return Refuse("the name of the encoding holds an entity");
    const bool is_utf8 =
        encoding.empty() || StartsWithWord(encoding, "utf-8") || StartsWithWord(encoding, "utf8");
    m_encoding = is_utf8 ? Encoding::kUtf8 : Encoding::kOther;
    return true;
  }

  /// Name, '=' and value; the value, or nothing where the parser gives up.
  std::optional<std::string_view> SkipAttribute() {
    SkipWhile(IsNameChar);
    SkipSpace();
    if (!m_rest.starts_with('=')) return GiveUpValue();
    m_rest.remove_prefix(1);
    SkipSpace();
    if (m_rest.empty()) return std::nullopt;
    const char quote = m_rest.front();
    const bool is_quoted = quote == '"' || quote == '\'';
    if (is_quoted) m_rest.remove_prefix(1);
    const std::string_view value = m_rest;
    if (is_quoted)
      SkipCharacters(quote);
    else
      SkipWhile(
          [](char c) { return !IsSpace(c) && c != '/' && c != '>' && c != '"' && c != '\''; });
    const std::size_t length = value.size() - m_rest.size();
    if (is_quoted && !m_rest.empty()) m_rest.remove_prefix(1);
    const bool goes_on = !m_rest.empty() && (is_quoted || (m_rest[0] != '"' && m_rest[0] != '\''));
    if (!goes_on) return GiveUpValue();
    return value.substr(0, length);
  }

  /// To the next mark that begins a character. Where text is UTF-8 the parser believes every first
  /// byte of a character about its length, and does not see a mark among what follows.
  void SkipCharacters(char mark) {
    const std::size_t plain = std::min(m_rest.find(mark), m_rest.size());
    if (m_encoding != Encoding::kUtf8 &&
        m_rest.substr(0, plain).find('&') == std::string_view::npos)
      return m_rest.remove_prefix(plain);
    while (!m_rest.empty() && m_rest.front() != mark) {
      const auto first = static_cast<unsigned char>(m_rest.front());
      if (m_rest.starts_with("&#") && m_rest.size() > 2)
        SkipNumericEntity();
      else
        m_rest.remove_prefix(
            m_encoding == Encoding::kUtf8 ? std::min(CharacterLength(first), m_rest.size()) : 1);
    }
  }
  /// The parser looks for the next ';', however far, and reads the digits in front of it back to
  /// the next 'x' or '#'. It does not see what stands between that and the entity's beginning.
  void SkipNumericEntity() {
    const bool is_hex = m_rest[2] == 'x';
    const std::size_t end = m_rest.find(';', is_hex ? 3 : 2);
    if (end == std::string_view::npos) return m_rest.remove_prefix(m_rest.size());
    std::size_t at = end - 1;
    while (IsDigit(m_rest[at], is_hex)) --at;
    m_rest.remove_prefix(m_rest[at] == (is_hex ? 'x' : '#') ? end + 1 : m_rest.size());
  }
  static std::size_t CharacterLength(unsigned char first) {
    if (first < 0xC2 || first > 0xF4) return 1;
    return first < 0xE0 ? 2 : first < 0xF0 ? 3 : 4;
  }

  /// White space, and in UTF-8 the three characters that the parser takes for such.
  void SkipSpace() {
    constexpr std::array<std::string_view, 3> kMarks{"\xEF\xBB\xBF", "\xEF\xBF\xBE",
                                                     "\xEF\xBF\xBF"};
    SkipWhile(IsSpace);
    while (m_encoding == Encoding::kUtf8 &&
           std::ranges::any_of(kMarks, [&](auto mark) { return m_rest.starts_with(mark); })) {
      m_rest.remove_prefix(kMarks[0].size());
      SkipWhile(IsSpace);
    }
  }

  template <class Is>
  void SkipWhile(Is is) {
    m_rest.remove_prefix(static_cast<std::size_t>(
        std::find_if_not(m_rest.begin(), m_rest.end(), is) - m_rest.begin()));
  }

  bool SkipEnclosed(std::string_view begin, std::string_view end) {
    m_rest.remove_prefix(begin.size());
    const std::size_t at = m_rest.find(end);
    m_rest.remove_prefix(at == std::string_view::npos ? m_rest.size() : at + end.size());
    return true;
  }

  bool GiveUp() {
    m_rest = {};
    return true;
  }
  std::nullopt_t GiveUpValue() {
    GiveUp();
    return std::nullopt;
  }
  bool Refuse(const char* reason) {
    m_reason = reason;
    return false;
  }

  std::string_view m_rest;
  std::string_view m_markup;
  Encoding m_encoding = Encoding::kUnknown;
  std::uint32_t m_depth = 0;
  const char* m_reason = nullptr;
};

}  // namespace

std::optional<XmlError> FindXmlLimitError(std::string_view xml) {
  if (const std::size_t nul = xml.find('\0'); nul != std::string_view::npos)
    return XmlErrorAt(xml, nul, "the text holds a NUL");
  CXmlScanner scanner(xml);
  if (scanner.Scan()) return std::nullopt;
  return XmlErrorAt(xml, xml.size() - scanner.GetLeft(), scanner.GetReason());
}

bool IsWithinXmlLimits(std::string_view xml) { return !FindXmlLimitError(xml).has_value(); }

}  // namespace qenzor
