#pragma once

#include <cstdint>

#include "qenzor/check/content_impl.h"
#include "qenzor/check/xml_text_impl.h"

namespace qenzor::check {

/// The text that stands first in an element, and where.
struct XmlContent {
  CString Text;
  std::uint64_t Offset = 0;
};

/// Reports what is lost in reading the values of elements, and tells a listener what they are read
/// as.
class CXmlValues {
 public:
  CXmlValues(const CXmlTokens& tokens, CReporter& reporter, CContentListener& listener)
      : m_tokens(tokens), m_reporter(reporter), m_listener(listener) {}

  /// How texts are read.
  TextEncoding GetEncoding() const {
    const bool is_told = m_reporter.GetOptions().Encoding != XmlEncoding::kShiftJis;
    return is_told && m_tokens.IsUtf8() ? TextEncoding::kUtf8 : TextEncoding::kCodePage;
  }
  /// The raw text as the parser gives it.
  CString ReadText(std::string_view raw, XmlTextKind kind, const PathNode& node);

  /// Takes the value of a field that is an element's text.
  void Take(PathNode& node, const FieldSchema& field, const XmlContent& content);
  void TakeText(const PathNode& node, const FieldSchema& field, const XmlContent& content,
                std::uint64_t offset);
  /// Takes the value of a field that stands in the attributes of the tag at hand.
  void TakeAttributes(const PathNode& node, const FieldSchema& field);
  /// Reports attributes of the tag at hand beside the known ones, each a letter.
  void CheckAttributes(const PathNode& node, std::string_view tag, std::string_view known);

  /// The length of the text taken last, in units.
  std::size_t GetTextLength() const { return m_text_length; }

 private:
  XmlPlace At(std::uint64_t offset, const PathNode& node) const {
    return {offset, node, m_reporter};
  }
  void TakeInteger(PathNode& node, const FieldSchema& field, const XmlContent& content);
  void TakeMagic(const PathNode& node, const FieldSchema& field, const XmlContent& content);
  void TakeIdent(const PathNode& node, const XmlContent& content);

  const CXmlTokens& m_tokens;
  CReporter& m_reporter;
  CContentListener& m_listener;
  bool m_wants_more = m_listener.WantsMore();
  std::size_t m_text_length = 0;
};

}  // namespace qenzor::check
