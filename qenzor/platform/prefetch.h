#pragma once

#include <cstddef>

#include "qenzor/platform/standard.h"

namespace qenzor {

/// Has the processor fetch the memory at an address that will be used soon, or may not even be
/// valid; a hint only.
inline void Prefetch(const void* address) noexcept {
#ifdef __GNUC__
  __builtin_prefetch(address);
  // g++ takes a function that does no more than the above for one without effect, and drops calls.
  asm volatile("");  // NOLINT(hicpp-no-assembler)
#else
  static_cast<void>(address);
#endif
}

/// The same for what an owning pointer points to, with the first of what was made right after it;
/// nothing for any other value.
template <class Value>
void PrefetchPointee(const Value& value) noexcept {
  if constexpr (requires { value.get(); }) {
    constexpr std::size_t kLine = 64;
    const auto* front = reinterpret_cast<const unsigned char*>(value.get());
    for (std::size_t offset = 0; front != nullptr && offset < 3 * kLine; offset += kLine)
      Prefetch(front + offset);
  }
}

}  // namespace qenzor
