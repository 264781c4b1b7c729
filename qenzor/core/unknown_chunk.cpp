#include "qenzor/core/unknown_chunk.h"

#include <memory>
#include <new>

namespace qenzor {

constinit const CRuntimeClass CUnKnownChunk::kRuntimeClass{"UnKnownChunk",
                                                           &CAbstractChunk::kRuntimeClass};

CUnKnownChunk::CUnKnownChunk() = default;

const CRuntimeClass& CUnKnownChunk::GetRuntimeClass() const { return kRuntimeClass; }

bool CUnKnownChunk::ReadData(CFile* file) try {
  if (file->ReadsAsMemory()) return CAbstractChunk::ReadData(file);
  const std::uint64_t from = file->GetPosition();
  return file->Seek(m_header.DataSize, CFile::current) - from == m_header.DataSize;
} catch (const std::exception&) {
  return false;  // a file that does not let itself be moved
}

CAbstractChunk* CUnKnownChunk::Clone() {
  auto* clone = new (std::nothrow) CUnKnownChunk;
  if (clone != nullptr) clone->DeepCopy(this);
  return clone;
}

void CUnKnownChunk::DeepCopy(CAbstractChunk* source) {
  Release();
  if (const auto* unknown = class_cast<CUnKnownChunk>(source)) m_header = unknown->m_header;
}

void CUnKnownChunk::RecursiveReCalcDataSize() { m_header.DataSize = 0; }

bool CUnKnownChunk::ReadPrimitiveBlock(const void* /*data*/, const std::uint32_t& /*size*/,
                                       std::uint32_t& consumed) {
  consumed = 0;
  return true;
}

bool CUnKnownChunk::ReadPrimitiveBlock(CFile* /*file*/, std::uint32_t& consumed) {
  consumed = 0;
  return true;
}

void CUnKnownChunk::Release() {}

bool CUnKnownChunk::WriteData(CFile* /*file*/, bool /*recalc*/) { return true; }

}  // namespace qenzor
