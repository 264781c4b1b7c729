#include "qenzor/core/abstract_chunk.h"

#include <cassert>
#include <memory>
#include <new>

#include "qenzor/core/chunk_factory.h"
#include "qenzor/core/class_row_impl.h"
#include "qenzor/core/coding.h"
#include "qenzor/core/read_log_impl.h"
#include "qenzor/core/unknown_chunk.h"
#include "qenzor/platform/near_tls_impl.h"
#include "qenzor/platform/window_file_impl.h"

namespace qenzor {

namespace {

/// How deep this thread stands in nested chunks. The reading operations have no room for it among
/// their arguments; it is back at zero whenever no read is under way.
// NOLINTNEXTLINE(cppcoreguidelines-avoid-non-const-global-variables)
QENZOR_NEAR_TLS constinit thread_local std::uint32_t t_depth = 0;

class CDepthGuard {
 public:
  CDepthGuard() noexcept { ++t_depth; }
  ~CDepthGuard() { --t_depth; }
  CDepthGuard(const CDepthGuard&) = delete;
  CDepthGuard& operator=(const CDepthGuard&) = delete;
};

/// Whether the chunk being read stands so deep that it must hold no other.
bool IsAtMaxDepth() noexcept { return t_depth >= kMaxChunkDepth; }

// A keyed set files an element by looking into a large table at random. The keys of those to come
// are looked at now and then, and their places fetched into the processor's cache.
constexpr std::uint32_t kLookAhead = 16;
/// Sub-chunks of common size.
constexpr std::uint32_t kBytesAhead = 1024;

/// Whether to look ahead before the sub-chunk at the index. Not before the first: most chunks have
/// no other.
bool IsTimeToLookAhead(std::uint32_t index) noexcept { return index % kLookAhead == 1; }

void LookAhead(const CAbstractChunk& set, const std::uint8_t* bytes, std::uint32_t size) {
  constexpr std::uint32_t kLeast = CChunkHeader::kSize + sizeof(std::uint64_t);
  const ClassRow* row = FindRow(set);
  if (row == nullptr || row->PrefetchElem == nullptr) return;
  for (std::uint32_t left = kLookAhead; left > 0 && size >= kLeast; --left) {
    CChunkHeader header;
    static_cast<void>(header.Read(bytes, size));  // there are enough
    row->PrefetchElem(set, little_endian::Load<std::uint64_t>(bytes + CChunkHeader::kSize));
    if (header.DataSize > size - CChunkHeader::kSize) return;
    bytes += CChunkHeader::kSize + header.DataSize;
    size -= CChunkHeader::kSize + header.DataSize;
  }
}

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

bool CAbstractChunk::Read(CFile* file) {
  assert(file != nullptr);
  return m_header.Read(file) && ReadData(file);
}

bool CAbstractChunk::ReadData(const void* data, const std::uint32_t& size) try {
  assert(data != nullptr || size == 0);
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
  assert(file != nullptr);
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
    if (IsTimeToLookAhead(index)) LookAhead(*this, bytes + total, remaining);
    CAbstractChunk* chunk = CChunkFactory::Create(bytes + total, remaining);
    if (chunk == nullptr) return false;
    total += chunk->GetChunkSize();
    SubChunkSet(index, chunk);
  }
  return total == needed;
}

bool CAbstractChunk::ReadChunkBlock(CFile* file, std::uint32_t needed) {
  if (needed == 0) return true;
  CWindowFile* window = AsWindow(*file);
  const std::uint32_t most = window != nullptr ? window->GetLeft() : needed;
  if (IsAtMaxDepth()) return NoteTooDeep(*file, m_header.DataSize - needed);
  if (most < needed || needed > m_header.DataSize) {
    NoteWrongSize(*file, m_header.DataSize, m_header.DataSize - needed, most);
    if (most < needed) return false;
  }
  std::uint32_t total = 0;
  for (std::uint32_t index = 0; total < needed; ++index) {
    if (window != nullptr && IsTimeToLookAhead(index)) {
      const std::span<const std::uint8_t> ahead = window->Peek(kBytesAhead);
      LookAhead(*this, ahead.data(), static_cast<std::uint32_t>(ahead.size()));
    }
    CAbstractChunk* chunk = CChunkFactory::Create(file);
    if (chunk == nullptr) return NoteSubChunk(*file, *this, index, needed - total);
    const CChunkHeader header = chunk->GetHeader();
    total += chunk->GetChunkSize();
    SubChunkSet(index, chunk);
    if (total > needed) return NoteOverrun(*file, *this, header, index, total - needed);
  }
  return true;
}

bool CAbstractChunk::Write(CFile* file, bool recalc) {
  assert(file != nullptr);
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
