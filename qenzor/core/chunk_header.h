#pragma once

#include <cstdint>

#include "qenzor/platform/file.h"

namespace qenzor {

/// The 8 bytes in front of every chunk: chunk id, then data size, both unsigned 32-bit
/// little-endian. The data size counts what follows the header.
class QENZOR_EXPORT CChunkHeader {
 public:
  static constexpr std::uint32_t kSize = 8;

  CChunkHeader() = default;
  CChunkHeader(std::uint32_t id, std::uint32_t size) : ChunkId(id), DataSize(size) {}

  /// Reads from the file's position; false unless exactly 8 bytes came.
  [[nodiscard]] bool Read(CFile* file);
  /// Reads from the front of a memory block; false when it holds fewer than 8 bytes.
  [[nodiscard]] bool Read(const void* data, const std::uint32_t& size);
  /// Writes both values; false when the file refuses them.
  [[nodiscard]] bool Write(CFile* file);

  std::uint32_t ChunkId = 0;
  std::uint32_t DataSize = 0;
};

}  // namespace qenzor
