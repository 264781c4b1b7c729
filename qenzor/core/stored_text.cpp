#include "qenzor/core/stored_text.h"

#include <cassert>

#include "qenzor/core/coding.h"
#include "qenzor/platform/memory_budget_impl.h"

namespace qenzor {

void DecodeStoredText(const std::uint8_t* bytes, std::uint32_t size, CStringW& text) {
  constexpr std::uint16_t kMark = 0xFEFF;
  constexpr std::uint16_t kSwappedMark = 0xFFFE;
  assert(bytes != nullptr || size == 0);
  CStringW().swap(text);
  if (size < 2) return;
  const auto mark = little_endian::Load<std::uint16_t>(bytes);
  if (mark != kMark && mark != kSwappedMark) return;
  const auto unit_at = [units = bytes + 2](std::size_t index) {
    return little_endian::Load<std::uint16_t>(units + 2 * index);
  };
  // Memory is taken for the text, not for the block, which may overlap others and be nearly empty.
  const std::size_t most = size / 2 - 1;
  std::size_t length = 0;
  while (length < most && unit_at(length) != 0) ++length;
  ChargeMemory(length * sizeof(char16_t));
  CStringW decoded(length, u'\0');
  for (std::size_t i = 0; i < length; ++i) {
    const std::uint16_t unit = unit_at(i);
    decoded[i] = static_cast<char16_t>(
        mark == kSwappedMark ? static_cast<std::uint16_t>(unit << 8 | unit >> 8) : unit);
  }
  text.swap(decoded);
}

}  // namespace qenzor
