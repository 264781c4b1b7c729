#include "qenzor/core/document_impl.h"
#include "qenzor/text/document_text_impl.h"

namespace qenzor {

bool LoadXmlFile(const CString& path, TiXmlDocument& xml) {
  return ReadWholeFile(path, [&xml](std::uint8_t* bytes, std::uint32_t size) {
    std::string text(reinterpret_cast<const char*>(bytes), size);
    if (text.empty() || !IsWithinXmlLimits(text)) return false;
    // Line ends as the parser's own loading makes them: CR LF and CR become LF.
    ReplaceAll(text, std::string("\r\n"), std::string("\n"));
    std::ranges::replace(text, '\r', '\n');
    xml.Parse(text.c_str(), nullptr, TIXML_DEFAULT_ENCODING);
    return !xml.Error();
  });
}

}  // namespace qenzor
