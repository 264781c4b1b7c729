#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "qenzor/platform/export.h"
#include "qenzor/platform/strings.h"

namespace qenzor {

/// The deepest nesting of elements that is parsed, the root counted as 1, and the most attributes
/// of one element: the parser recurses on the former and takes quadratic time in the latter.
inline constexpr std::uint32_t kMaxXmlDepth = 256;
inline constexpr std::uint32_t kMaxXmlAttributes = 64;

/// Where XML text goes wrong, and why. Line and column count from 1, the column in bytes.
struct XmlError {
  std::uint32_t Line = 0;
  std::uint32_t Column = 0;
  CString Reason;
};

/// The first place where XML text exceeds those limits or holds a NUL: one pass over the bytes,
/// made before a parser sees them. Text that is not well-formed may pass; the parser refuses it.
[[nodiscard]] QENZOR_EXPORT std::optional<XmlError> FindXmlLimitError(std::string_view xml);
[[nodiscard]] QENZOR_EXPORT bool IsWithinXmlLimits(std::string_view xml);

/// Why the XML file at the path cannot be loaded; nothing when it can. Line 0 when the file itself
/// cannot be read.
[[nodiscard]] QENZOR_EXPORT std::optional<XmlError> FindXmlError(const CString& path);

}  // namespace qenzor
