#include "qenzor/core/stored_text.h"

#include "qenzor/core/coding.h"

namespace qenzor {

void DecodeStoredText(const std::uint8_t* bytes, std::uint32_t size, CStringW& text) {
  constexpr std::uint16_t kMark = 0xFEFF;
  constexpr std::uint16_t kSwappedMark = 0xFFFE;
  text.clear();
  if (size < 2) return;
  const auto mark = little_endian::Load<std::uint16_t>(bytes);
  if (mark != kMark && mark != kSwappedMark) return;
  const std::uint32_t units = size / 2 - 1;
  text.resize(units);
  std::uint32_t length = 0;
  for (; length < units; ++length) {
    auto unit = little_endian::Load<std::uint16_t>(bytes + 2 + 2 * std::size_t{length});
    if (unit == 0) break;
    if (mark == kSwappedMark) unit = static_cast<std::uint16_t>(unit << 8 | unit >> 8);
    text[length] = static_cast<char16_t>(unit);
  }
  text.resize(length);
}

}  // namespace qenzor
