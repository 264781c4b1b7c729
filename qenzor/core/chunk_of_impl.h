#pragma once

#include "qenzor/core/chunk_of.h"
#include "qenzor/core/class_row_impl.h"
#include "qenzor/core/field_io_impl.h"

namespace qenzor {

template <class Self, class Base, class Data>
constinit const CRuntimeClass CChunkOf<Self, Base, Data>::kRuntimeClass{
    Self::kTag, &Base::kRuntimeClass, &RowInCatalogue<Self>};

template <class Self, class Base, class Data>
CChunkOf<Self, Base, Data>::CChunkOf() {
  this->m_header.ChunkId = Self::kChunkId;
}

template <class Self, class Base, class Data>
const CRuntimeClass& CChunkOf<Self, Base, Data>::GetRuntimeClass() const {
  return kRuntimeClass;
}

template <class Self, class Base, class Data>
CAbstractChunk* CChunkOf<Self, Base, Data>::Clone() try {
  auto clone = std::make_unique<Self>();
  clone->DeepCopy(this);
  return clone.release();
} catch (const std::bad_alloc&) {
  return nullptr;
}

template <class Self, class Base, class Data>
void CChunkOf<Self, Base, Data>::DeepCopy(CAbstractChunk* source) {
  if (source == this) return;
  Release();
  auto* same = class_cast<CChunkOf>(source);
  if (same == nullptr) return;
  this->m_header = same->m_header;
  CopyFields(FieldsOf<CChunkOf>(), *same, *this);
  if constexpr (requires { this->CopyDerived(*same); }) this->CopyDerived(*same);
}

template <class Self, class Base, class Data>
void CChunkOf<Self, Base, Data>::SubChunkSet(std::uint32_t /*index*/, CAbstractChunk* chunk) {
  TakeSubChunk(FieldsOf<CChunkOf>(), *this, chunk);
}

template <class Self, class Base, class Data>
void CChunkOf<Self, Base, Data>::RecursiveReCalcDataSize() {
  this->m_header.DataSize = SizeOfFields(FieldsOf<CChunkOf>(), *this);
}

template <class Self, class Base, class Data>
bool CChunkOf<Self, Base, Data>::ReadPrimitiveBlock(const void* data, const std::uint32_t& size,
                                                    std::uint32_t& consumed) {
  CMemSource source(data, size);
  if (!ReadFields(source, Data::Fields(), *this)) return false;
  consumed = source.GetConsumed();
  if constexpr (requires { this->AfterMemoryRead(); }) this->AfterMemoryRead();
  if constexpr (requires { Data::MemoryConsumed(data, consumed); })
    consumed = Data::MemoryConsumed(data, consumed);
  return true;
}

template <class Self, class Base, class Data>
bool CChunkOf<Self, Base, Data>::ReadPrimitiveBlock(CFile* file, std::uint32_t& consumed) {
  constexpr bool kMayOverrun = requires { Data::MemoryConsumed(file, consumed); };
  CFileSource source(*file);
  std::array<std::uint8_t, 2> front{};
  if (kMayOverrun && source.ReadsAsMemory()) source.Peek(front);
  if (!ReadFields(source, Data::Fields(), *this)) return false;
  consumed = source.GetConsumed();
  if (source.ReadsAsMemory()) {
    if constexpr (requires { this->AfterMemoryRead(); }) this->AfterMemoryRead();
    if constexpr (kMayOverrun) {
      consumed = Data::MemoryConsumed(front.data(), consumed);
      source.GoBackTo(consumed);
    }
  } else {
    if constexpr (requires { this->AfterFileRead(); }) this->AfterFileRead();
  }
  return true;
}

template <class Self, class Base, class Data>
void CChunkOf<Self, Base, Data>::Release() {
  ReleaseFields(FieldsOf<CChunkOf>(), *this);
}

template <class Self, class Base, class Data>
bool CChunkOf<Self, Base, Data>::WriteData(CFile* file, bool recalc) try {
  WriteFields(*file, Data::Fields(), *this);
  return WriteSlots(*file, recalc, FieldsOf<CChunkOf>(), *this);
} catch (const std::exception&) {
  return false;
}

}  // namespace qenzor
