#pragma once

#include <string>
#include <string_view>
#include <utility>

#include "qenzor/check/reporter_impl.h"
#include "qenzor/check/schema_impl.h"
#include "qenzor/check/xml_tokens_impl.h"
#include "qenzor/platform/code_page.h"

namespace qenzor::check {

/// Where a value stands, and who hears what is wrong with it.
struct XmlPlace {
  std::uint64_t Offset;
  const PathNode& Node;
  CReporter& Reporter;

  template <class Describe>
  void Report(Code code, Describe&& describe) const {
    Reporter.Report(code, Offset, &Node, std::forward<Describe>(describe));
  }
  /// A place further on.
  XmlPlace Behind(std::uint64_t bytes) const { return {Offset + bytes, Node, Reporter}; }
};

/// How the parser goes about a text.
enum class XmlTextKind : std::uint8_t {
  kText,       ///< resolves references and makes one space of white space
  kCData,      ///< takes it as it is
  kAttribute,  ///< resolves references
};

/// The text as the parser gives it. What is lost on the way is reported; the place is that of the
/// raw text.
CString ReadXmlText(std::string_view raw, XmlTextKind kind, bool parsed_as_utf8,
                    TextEncoding encoding, const XmlPlace& place);

/// Reports what the encoding of the text gives rise to, as a whole.
void CheckXmlEncoding(std::string_view text, XmlEncoding encoding, CReporter& reporter);

/// Reports bytes of a text that are no character, and characters of a name that the code page
/// lacks. Gives the text in wide form.
CStringW ReadXmlWideText(std::string_view text, const FieldSchema& field, TextEncoding encoding,
                         const XmlPlace& place);

/// A text as a message shows it: not too much of it.
CString Quoted(std::string_view text);

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
std::uint64_t ReadXmlInteger(std::string_view text, const FieldSchema& field,
                             const XmlPlace& place);
float ReadXmlReal(std::string_view text, const FieldSchema& field, const XmlPlace& place);
/// The same of the number of an attribute, which ought to lie in a range; code is what one outside
/// is.
std::int32_t ReadXmlAttribute(std::string_view tag, std::string_view name, std::string_view text,
                              std::int32_t least, std::int32_t most, Code code,
                              const XmlPlace& place);

}  // namespace qenzor::check
