#pragma once

#include <cstdint>
#include <string_view>

#include "qenzor/platform/export.h"

namespace qenzor {

/// Elements nest this deep at most in what is parsed, the root counted as 1, and bear at most so
/// many attributes: the parser recurses on the one and takes quadratic time in the other.
inline constexpr std::uint32_t kMaxXmlDepth = 256;
inline constexpr std::uint32_t kMaxXmlAttributes = 64;

/// Whether XML text keeps to those limits and holds no NUL: one pass over the bytes, made before a
/// parser sees them. Text that is not well-formed may pass; the parser refuses it.
QENZOR_EXPORT bool IsWithinXmlLimits(std::string_view xml) noexcept;

}  // namespace qenzor
