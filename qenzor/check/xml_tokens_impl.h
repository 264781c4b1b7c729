#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

namespace qenzor::check {

struct XmlAttribute {
  std::string_view Name;
  std::string_view Value;  ///< as it stands, references included
};

/// Goes over XML text that the parser takes, piece by piece, and says of each where it stands. Of
/// text that the parser refuses it goes as far as it can.
class CXmlTokens {
 public:
  enum class Kind : std::uint8_t {
    kStart,  ///< a start tag
    kEmpty,  ///< the tag of an empty element
    kEnd,    ///< an end tag
    kText,   ///< text without the white space around it, never empty
    kCData,
    kOther,  ///< a comment, a declaration or the like
    kStop,   ///< the end, or what is no XML
  };

  explicit CXmlTokens(std::string_view text) : m_text(text) {}

  Kind Next();
  /// Where the last piece begins, in bytes from the front.
  std::uint64_t GetOffset() const { return m_offset; }
  /// Where a view into the text stands.
  std::uint64_t OffsetOf(std::string_view part) const {
    return static_cast<std::uint64_t>(part.data() - m_text.data());
  }
  /// The name of a tag, or what a text or CDATA section holds.
  std::string_view GetContent() const { return m_content; }
  const std::vector<XmlAttribute>& GetAttributes() const { return m_attributes; }
  /// Whether all of the text has been gone over.
  bool IsAtEnd() const { return m_at == m_text.size(); }

 private:
  Kind Tag();
  Kind EndTag();
  Kind Enclosed(std::string_view begin, std::string_view end, Kind kind);
  Kind Stop() {
    m_stopped = true;
    return Kind::kStop;
  }
  bool Attribute();
  void SkipSpace();
  std::string_view Name();

  std::string_view m_text;
  std::size_t m_at = 0;
  std::uint64_t m_offset = 0;
  std::string_view m_content;
  std::vector<XmlAttribute> m_attributes;
  bool m_stopped = false;
};

/// Whether a character is white space to the parser.
constexpr bool IsXmlSpace(char c) noexcept { return c == ' ' || (c >= '\t' && c <= '\r'); }

}  // namespace qenzor::check
