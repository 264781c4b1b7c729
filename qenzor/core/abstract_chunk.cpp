#include "qenzor/core/abstract_chunk.h"

#include <memory>
#include <new>

#include "qenzor/core/chunk_factory.h"
#include "qenzor/core/class_row_impl.h"
#include "qenzor/core/read_log_impl.h"
#include "qenzor/core/unknown_chunk.h"
#include "qenzor/platform/window_file_impl.h"

namespace qenzor {

namespace {

/// How deep this thread stands in nested chunks. The reading operations have no room for it among
/// their arguments; it is back at zero whenever no read is under way.
// NOLINTNEXTLINE(cppcoreguidelines-avoid-non-const-global-variables)
thread_local std::uint32_t t_depth = 0;

class CDepthGuard {
 public:
  CDepthGuard() noexcept { ++t_depth; }
  ~CDepthGuard() { --t_depth; }
  CDepthGuard(const CDepthGuard&) = delete;
  CDepthGuard& operator=(const CDepthGuard&) = delete;
};

/// Whether the chunk being read stands so deep that it must hold no other.
bool IsAtMaxDepth() noexcept { return t_depth >= kMaxChunkDepth; }

}  // namespace

constinit const CRuntimeClass CAbstractChunk::kRuntimeClass{"AbstractChunk",
                                                            &CObject::kRuntimeClass};

CAbstractChunk::CAbstractChunk() = default;

const CRuntimeClass& CAbstractChunk::GetRuntimeClass() const { return kRuntimeClass; }

// The sizes come as references, perhaps to what reading is about to overwrite: each function that
// reads something before its last look at one copies it.

bool CAbstractChunk::Read(const void* data, const std::uint32_t& size) {
  const std::uint32_t left = size - CChunkHeader::kSize;
  return m_header.Read(data, size) &&
         ReadData(static_cast<const std::uint8_t*>(data) + CChunkHeader::kSize, left);
}

bool CAbstractChunk::Read(CFile* file) { return m_header.Read(file) && ReadData(file); }

bool CAbstractChunk::ReadData(const void* data, const std::uint32_t& size) try {
  const CDepthGuard depth;
  const std::uint32_t available = size;
  std::uint32_t consumed = 0;
  if (!ReadPrimitiveBlock(data, available, consumed)) return false;
  return ReadChunkBlock(static_cast<const std::uint8_t*>(data) + consumed, available - consumed,
                        m_header.DataSize - consumed);
} catch (const std::bad_alloc&) {
  return false;
}

bool CAbstractChunk::ReadData(CFile* file) try {
  const CDepthGuard depth;
  std::uint32_t consumed = 0;
  if (!ReadPrimitiveBlock(file, consumed)) return false;
  return ReadChunkBlock(file, m_header.DataSize - consumed);
} catch (const std::bad_alloc&) {
  return NoteNoMemory(*file);
}

bool CAbstractChunk::ReadChunkBlock(const void* data, const std::uint32_t& available_bytes,
                                    const std::uint32_t& needed_bytes) {
  const std::uint32_t available = available_bytes;
  const std::uint32_t needed = needed_bytes;
  if (available < needed || (needed != 0 && IsAtMaxDepth())) return false;
  const auto* bytes = static_cast<const std::uint8_t*>(data);
  std::uint32_t total = 0;
  for (std::uint32_t index = 0; total < needed; ++index) {
    const std::uint32_t remaining = available - total;
    CAbstractChunk* chunk = CChunkFactory::Create(bytes + total, remaining);
    if (chunk == nullptr) return false;
    total += chunk->GetChunkSize();
    SubChunkSet(index, chunk);
  }
  return total == needed;
}

bool CAbstractChunk::ReadChunkBlock(CFile* file, std::uint32_t needed) {
  if (needed == 0) return true;
  const CWindowFile* window = AsWindow(*file);
  const std::uint32_t most = window != nullptr ? window->GetLeft() : needed;
  if (IsAtMaxDepth()) return NoteTooDeep(*file, m_header.DataSize - needed);
  if (most < needed || needed > m_header.DataSize) {
    NoteWrongSize(*file, m_header.DataSize, m_header.DataSize - needed, most);
    if (most < needed) return false;
  }
  std::uint32_t total = 0;
  std::uint32_t index = 0;
  CChunkHeader last;
  for (; total < needed; ++index) {
    CAbstractChunk* chunk = CChunkFactory::Create(file);
    if (chunk == nullptr) return NoteSubChunk(*file, *this, index, needed - total);
    last = chunk->GetHeader();
    total += chunk->GetChunkSize();
    SubChunkSet(index, chunk);
  }
  return total == needed || NoteOverrun(*file, *this, last, index - 1, total - needed);
}

bool CAbstractChunk::Write(CFile* file, bool recalc) {
  if (recalc) RecursiveReCalcDataSize();
  return m_header.Write(file) && WriteData(file, false);
}

bool operator==(const CAbstractChunk& a, const CAbstractChunk& b) {
  const ClassRow* row = FindRow(a);
  if (row != nullptr) return row == FindRow(b) && row->EqualChunks(a, b);
  return &a == &b ||
         (class_cast<CUnKnownChunk>(&a) != nullptr && class_cast<CUnKnownChunk>(&b) != nullptr &&
          a.GetHeader().ChunkId == b.GetHeader().ChunkId);
}

void CAbstractChunk::SubChunkSet(std::uint32_t /*index*/, CAbstractChunk* chunk) { delete chunk; }

}  // namespace qenzor
