#pragma once

#include <string>
#include <string_view>

#include "qenzor/check/reporter_impl.h"
#include "qenzor/check/schema_impl.h"
#include "qenzor/check/xml_tokens_impl.h"

namespace qenzor::check {

/// The text as the parser gives it: references resolved, white space condensed unless it is a
/// CDATA section's. What is lost on the way is reported; offset is that of the raw text.
CString ReadXmlText(std::string_view raw, bool is_cdata, std::uint64_t offset, const PathNode& node,
                    CReporter& reporter);

/// Reports what the encoding of the text gives rise to, as a whole.
void CheckXmlEncoding(std::string_view text, CReporter& reporter);

/// Reports bytes of a text that begin no character, and gives the text in wide form.
CStringW ReadXmlWideText(std::string_view text, std::string_view tag, std::uint64_t offset,
                         const PathNode& node, CReporter& reporter);

/// The word among the candidates that a misspelt one is likely meant to be; empty when none is
/// near.
class CSpelling {
 public:
  explicit CSpelling(std::string_view word) : m_word(word) {}
  void Try(std::string_view candidate);
  /// "; did you mean X?", or nothing.
  CString Suggest() const;

 private:
  std::string_view m_word;
  std::string_view m_nearest;
  std::size_t m_distance = 4;
};

/// Reports what reading a number of this text loses, and returns what is read.
std::uint64_t ReadXmlInteger(std::string_view text, const FieldSchema& field, std::uint64_t offset,
                             const PathNode& node, CReporter& reporter);
float ReadXmlReal(std::string_view text, const FieldSchema& field, std::uint64_t offset,
                  const PathNode& node, CReporter& reporter);
/// The same of an attribute's number, which ought to lie in a range; code is what one outside is.
std::int32_t ReadXmlAttribute(std::string_view tag, const XmlAttribute& attribute,
                              std::int32_t least, std::int32_t most, Code code,
                              std::uint64_t offset, const PathNode& node, CReporter& reporter);

}  // namespace qenzor::check
