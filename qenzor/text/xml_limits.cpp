#include "qenzor/text/xml_error_impl.h"
#include "qenzor/text/xml_scanner_impl.h"

namespace qenzor {

std::optional<XmlError> FindXmlLimitError(std::string_view xml) {
  using Event = CXmlScanner::Event;
  if (const std::size_t nul = xml.find('\0'); nul != std::string_view::npos)
    return XmlErrorAt(xml, nul, "the text holds a NUL");
  CXmlScanner scanner;
  Event event = Event::kPassed;
  while (event != Event::kStopped && event != Event::kBroken && event != Event::kRefused)
    event = scanner.Step(xml.substr(scanner.GetPosition()), true);
  if (event != Event::kRefused) return std::nullopt;
  return XmlErrorAt(xml, scanner.GetMarkup(), scanner.GetReason());
}

bool IsWithinXmlLimits(std::string_view xml) { return !FindXmlLimitError(xml).has_value(); }

}  // namespace qenzor
