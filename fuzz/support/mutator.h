#pragma once

// Changes documents where it hurts: the ids, sizes and counts of their chunks.

#include <cstdint>
#include <cstring>
#include <random>
#include <vector>

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t max_size);

namespace fuzz {

/// The offsets of the chunk headers that a lenient walk finds: wherever an id of the table stands
/// in front of a size that fits.
inline std::vector<std::size_t> FindHeaders(const std::uint8_t* data, std::size_t size) {
  std::vector<std::size_t> headers;
  for (std::size_t at = 0; at + 8 <= size; ++at) {
    std::uint32_t id = 0;
    std::uint32_t length = 0;
    std::memcpy(&id, data + at, 4);
    std::memcpy(&length, data + at + 4, 4);
    if (id <= 31 && length <= size - at - 8) headers.push_back(at);
  }
  return headers;
}

inline std::size_t MutateChunks(std::uint8_t* data, std::size_t size, std::size_t max_size,
                                unsigned seed) {
  std::minstd_rand random(seed);
  const std::vector<std::size_t> headers = FindHeaders(data, size);
  if (headers.empty() || random() % 3 == 0) return LLVMFuzzerMutate(data, size, max_size);
  const std::size_t at = headers[random() % headers.size()];
  std::uint32_t length = 0;
  std::memcpy(&length, data + at + 4, 4);
  const auto put = [&](std::size_t where, std::uint32_t value) {
    if (where + 4 <= size) std::memcpy(data + where, &value, 4);
  };
  switch (random() % 6) {
    case 0:  // another class
      put(at, static_cast<std::uint32_t>(random() % 33));
      break;
    case 1:  // a size a little off
      put(at + 4, length + static_cast<std::uint32_t>(random() % 33) - 16);
      break;
    case 2:  // a size near a limit
      put(at + 4, static_cast<std::uint32_t>(random() % 4) * 0x7FFFFFFFU - 8);
      break;
    case 3:  // another count, where one stands first
      put(at + 8, static_cast<std::uint32_t>(random() % 2 == 0 ? random() : random() % 8));
      break;
    case 4: {  // the chunk once more, behind itself
      const std::size_t whole = std::size_t{length} + 8;
      if (size + whole > max_size) break;
      std::memmove(data + at + whole, data + at, size - at);
      size += whole;
      break;
    }
    default: {  // the chunk taken out
      const std::size_t whole = std::size_t{length} + 8;
      std::memmove(data + at, data + at + whole, size - at - whole);
      size -= whole;
      break;
    }
  }
  return size;
}

}  // namespace fuzz
