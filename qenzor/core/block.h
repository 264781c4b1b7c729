#pragma once

#include <array>
#include <cassert>
#include <cstdint>

#include "qenzor/platform/file.h"

namespace qenzor {

/// The longest block that is put together before it is written.
inline constexpr std::uint32_t kMaxBlockSize = 4096;

/// Writes a block of size bytes, at most kMaxBlockSize, that fill puts at the address it is given:
/// straight into the file's buffer where the file lends one. Throws as CFile::Write does.
template <class Fill>
void WriteBlock(CFile& file, std::uint32_t size, Fill&& fill) {
  assert(size != 0 && size <= kMaxBlockSize);
  if (std::uint8_t* room = file.BeginBlock(size); room != nullptr) {
    fill(room);
    file.EndBlock(room + size);
    return;
  }
  std::array<std::uint8_t, kMaxBlockSize> block;
  fill(block.data());
  file.Write(block.data(), size);
}

/// The same at an address, which moves behind the block.
template <class Fill>
void WriteBlock(std::uint8_t*& next, std::uint32_t size, Fill&& fill) {
  fill(next);
  next += size;
}

}  // namespace qenzor
