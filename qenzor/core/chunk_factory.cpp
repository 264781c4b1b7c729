#include "qenzor/core/chunk_factory.h"

#include <memory>
#include <new>

#include "qenzor/core/read_log_impl.h"
#include "qenzor/core/unknown_chunk.h"

namespace qenzor {

CChunkFactory::CChunkFactory() = default;
CChunkFactory::~CChunkFactory() = default;

CAbstractChunk* CChunkFactory::CreateInstance(const CChunkHeader& header) {
  const Creator creator =
      header.ChunkId < kCreatorsById.size() ? kCreatorsById[header.ChunkId] : nullptr;
  CAbstractChunk* chunk = creator != nullptr ? creator() : CreateUnKnownChunkInst();
  if (chunk != nullptr) chunk->SetHeader(header);
  return chunk;
}

CAbstractChunk* CChunkFactory::Create(CFile* file) {
  CChunkHeader header;
  if (!header.Read(file)) return nullptr;
  std::unique_ptr<CAbstractChunk> chunk(CreateInstance(header));
  if (chunk == nullptr) {
    NoteNoMemory(*file);
    return nullptr;
  }
  if (!chunk->ReadData(file)) {
    NoteLevel(*chunk);
    return nullptr;
  }
  return chunk.release();
}

CAbstractChunk* CChunkFactory::Create(const void* data, const std::uint32_t& size) {
  CChunkHeader header;
  if (!header.Read(data, size)) return nullptr;
  std::unique_ptr<CAbstractChunk> chunk(CreateInstance(header));
  if (chunk == nullptr ||
      !chunk->ReadData(static_cast<const std::uint8_t*>(data) + CChunkHeader::kSize,
                       size - CChunkHeader::kSize))
    return nullptr;
  return chunk.release();
}

CAbstractChunk* CChunkFactory::CreateUnKnownChunkInst() { return new (std::nothrow) CUnKnownChunk; }

}  // namespace qenzor
