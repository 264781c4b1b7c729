#pragma once

#include <algorithm>

#include "qenzor/text/xml_file.h"

namespace qenzor {

/// The error that stands at a byte of the text.
inline XmlError XmlErrorAt(std::string_view xml, std::size_t at, const char* reason) {
  const std::string_view before = xml.substr(0, at);
  const std::size_t line_start = before.rfind('\n') + 1;  // npos + 1 is 0
  return {static_cast<std::uint32_t>(std::ranges::count(before, '\n') + 1),
          static_cast<std::uint32_t>(at - line_start + 1), reason};
}

}  // namespace qenzor
