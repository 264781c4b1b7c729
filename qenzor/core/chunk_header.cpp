#include "qenzor/core/chunk_header.h"

#include <cassert>

#include "qenzor/core/block.h"
#include "qenzor/core/coding.h"

namespace qenzor {

namespace {

/// The header of a file that lends nothing, or ends.
[[gnu::noinline]] bool ReadUnlent(CFile& file, CChunkHeader& header) {
  std::array<std::uint8_t, CChunkHeader::kSize> bytes{};
  std::uint32_t count = file.Read(bytes.data(), 4);
  count += file.Read(bytes.data() + 4, 4);
  return count == CChunkHeader::kSize && header.Read(bytes.data(), CChunkHeader::kSize);
}

}  // namespace

bool CChunkHeader::Read(CFile* file) {
  assert(file != nullptr);
  const std::uint8_t* lent = file->TakeBlock(kSize);
  return lent != nullptr ? Read(lent, kSize) : ReadUnlent(*file, *this);
}

bool CChunkHeader::Read(const void* data, const std::uint32_t& size) {
  assert(data != nullptr || size == 0);
  if (size < kSize) return false;
  const auto* bytes = static_cast<const std::uint8_t*>(data);
  NumberCoding::Load(bytes, ChunkId);
  NumberCoding::Load(bytes + 4, DataSize);
  return true;
}

bool CChunkHeader::Write(CFile* file) try {
  assert(file != nullptr);
  WriteBlock(*file, kSize, [this](std::uint8_t* bytes) {
    NumberCoding::Store(bytes, ChunkId);
    NumberCoding::Store(bytes + 4, DataSize);
  });
  return true;
} catch (const std::exception&) {
  return false;
}

}  // namespace qenzor
