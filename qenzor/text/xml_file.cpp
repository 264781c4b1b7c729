#include "qenzor/text/xml_file.h"

#include <algorithm>
#include <cstring>

#include "qenzor/core/document_impl.h"
#include "qenzor/text/document_text_impl.h"
#include "qenzor/text/xml_error_impl.h"

namespace qenzor {

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
    // The parser believes a character's first byte about its length: one zero might be passed over.
    std::fill_n(end, kSpareBytes, '\0');
    const std::string_view text(begin, static_cast<std::size_t>(end - begin));
    error = FindXmlLimitError(text);
    if (error.has_value()) return false;
    xml.Parse(begin, nullptr, TIXML_DEFAULT_ENCODING);
    if (xml.Error()) {
      // The parser knows no place for what is missing at the end.
      error = XmlErrorAt(text, text.size(), xml.ErrorDesc());
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
