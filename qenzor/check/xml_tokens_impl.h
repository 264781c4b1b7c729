#pragma once

#include <cassert>
#include <cstdint>
#include <string_view>
#include <vector>

#include "qenzor/text/xml_scanner_for_impl.h"

namespace qenzor::check {

struct XmlAttribute {
  std::string_view Name;
  std::string_view Value;  ///< as it stands, references included
};

/// Goes over XML text piece by piece as the parser does, and says of each where it stands. Of text
/// that the parser refuses it goes as far as it can.
class CXmlTokens {
 public:
  enum class Kind : std::uint8_t {
    kStart,    ///< a start tag
    kEmpty,    ///< the tag of an empty element
    kEnd,      ///< an end tag
    kText,     ///< text without the white space around it, never empty
    kCData,    ///< a CDATA section
    kOther,    ///< a comment, a declaration or the like
    kUnknown,  ///< what begins like a tag, is none and is dropped
    kStop,     ///< where the parser reads no further
  };

  CXmlTokens(std::string_view text, XmlEncoding encoding)
      : m_text(text), m_scanner(ScannerFor(encoding)) {}

  Kind Next();
  /// Where the last piece begins, in bytes from the front.
  std::uint64_t GetOffset() const { return m_scanner.GetMarkup(); }
  /// Where a view into the text stands.
  std::uint64_t OffsetOf(std::string_view part) const {
    assert(part.data() >= m_text.data() &&
           part.data() + part.size() <= m_text.data() + m_text.size());
    return static_cast<std::uint64_t>(part.data() - m_text.data());
  }
  /// The name of a tag, or what a text or CDATA section holds; of other pieces all.
  std::string_view GetContent() const { return m_content; }
  const std::vector<XmlAttribute>& GetAttributes() const { return m_attributes; }
  /// Whether the parser takes the text for UTF-8, whatever it is read as.
  bool IsUtf8() const { return m_scanner.IsUtf8(); }
  /// The text from where the last piece was looked for.
  std::string_view GetRest() const { return m_text.substr(m_from); }
  /// Whether all of the text has been gone over.
  bool IsAtEnd() const { return m_scanner.GetMarkup() == m_text.size(); }

 private:
  Kind Passed();
  void ReadTag(std::string_view tag);

  std::string_view m_text;
  CXmlScanner m_scanner;
  std::string_view m_content;
  std::vector<XmlAttribute> m_attributes;
  std::size_t m_from = 0;
  bool m_stopped = false;
};

/// Whether a character is white space to the parser.
constexpr bool IsXmlSpace(char c) noexcept { return c == ' ' || (c >= '\t' && c <= '\r'); }

}  // namespace qenzor::check
