#pragma once

#include <cstdint>

#include "qenzor/platform/export.h"
#include "qenzor/platform/strings.h"

namespace qenzor {

/// Text inside a chunk: a 16-bit byte count L, then L bytes: the mark FF FE and the UTF-16LE code
/// units, without terminator. An empty text is L = 0 with no mark.
inline constexpr std::uint32_t kStoredTextCountSize = 2;
/// The most code units whose byte count, mark included, fits the count.
inline constexpr std::size_t kMaxStoredTextUnits = 0xFFFF / 2 - 1;

/// The bytes that a text of so many code units takes behind its count.
constexpr std::uint32_t StoredTextBytes(std::size_t units) noexcept {
  return units == 0 ? 0 : static_cast<std::uint32_t>((units + 1) * 2);
}

/// Decodes the size bytes behind the count. FF FE is little-endian, FE FF big-endian; any other
/// mark, or fewer than two bytes, gives an empty text. The text ends at the first zero unit.
QENZOR_EXPORT void DecodeStoredText(const std::uint8_t* bytes, std::uint32_t size, CStringW& text);

}  // namespace qenzor
