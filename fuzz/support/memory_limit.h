#pragma once

#include <cstddef>

namespace fuzz {

/// What reading an input may take: a fixed base, and so much for each byte that is there.
constexpr std::size_t MemoryFor(std::size_t input) {
  constexpr std::size_t kBase = std::size_t{1} << 20U;
  constexpr std::size_t kForEachByte = 24;
  return kBase + kForEachByte * input;
}

/// While it lives the program may hold so many bytes more than before. What asks for more is a
/// find: the run ends there. The most that one limit saw is told by Peak, until the next is made.
class MemoryLimit {
 public:
  explicit MemoryLimit(std::size_t bytes);
  ~MemoryLimit();
  MemoryLimit(const MemoryLimit&) = delete;
  MemoryLimit& operator=(const MemoryLimit&) = delete;

  static std::size_t Peak();
};

}  // namespace fuzz
