#pragma once

#include <cassert>

#include "qenzor/core/chunk_of.h"
#include "qenzor/core/class_row_impl.h"
#include "qenzor/core/data_hooks.h"
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
  auto* same = class_cast<CChunkOf>(source);  // what is released may be the source
  Release();
  if (same == nullptr) return;
  this->m_header = same->m_header;
  CopyFields(FieldsOf<CChunkOf>(), *same, *this);
  HooksFor<Data>().CopyDerived(*same, *this);
}

template <class Self, class Base, class Data>
void CChunkOf<Self, Base, Data>::SubChunkSet(std::uint32_t /*index*/, CAbstractChunk* chunk) {
  TakeSubChunk(FieldsOf<CChunkOf>(), *this, chunk);
}

template <class Self, class Base, class Data>
void CChunkOf<Self, Base, Data>::RecursiveReCalcDataSize() {
  this->m_header.DataSize = SizeOfFields(FieldsOf<CChunkOf>(), *this);
}

template <class Data>
std::uint32_t CountInMemory(std::uint32_t consumed, const Data& data) {
  return HooksFor<Data>().MemoryConsumed(consumed - SizeOfElements(Data::Fields(), data), consumed);
}

template <class Self, class Base, class Data>
bool CChunkOf<Self, Base, Data>::ReadPrimitiveBlock(const void* data, const std::uint32_t& size,
                                                    std::uint32_t& consumed) {
  CMemSource source(data, size);
  if (!ReadFields(source, Data::Fields(), *this)) return false;
  consumed = source.GetConsumed();
  HooksFor<Data>().AfterMemoryRead(*this);
  if constexpr (kCountsItself<Data>) consumed = CountInMemory<Data>(consumed, *this);
  return true;
}

template <class Self, class Base, class Data>
bool CChunkOf<Self, Base, Data>::ReadPrimitiveBlock(CFile* file, std::uint32_t& consumed) {
  CFileSource source(*file);
  if (!ReadFields(source, Data::Fields(), *this)) return false;
  consumed = source.GetConsumed();
  if (source.ReadsAsMemory()) {
    HooksFor<Data>().AfterMemoryRead(*this);
    if constexpr (kCountsItself<Data>) {
      consumed = CountInMemory<Data>(consumed, *this);
      source.GoBackTo(consumed);
    }
  } else {
    HooksFor<Data>().AfterFileRead(*this);
  }
  return true;
}

template <class Self, class Base, class Data>
void CChunkOf<Self, Base, Data>::Release() {
  ReleaseFields(FieldsOf<CChunkOf>(), *this);
}

template <class Self, class Base, class Data>
bool CChunkOf<Self, Base, Data>::WriteData(CFile* file, bool recalc) try {
  // In one piece where the file lends room for it.
  const std::uint64_t size = SizeOfBlock(Data::Fields(), *this);
  const bool fits = size <= CFileBuffer::kWriteSize;
  if (std::uint8_t* next = fits ? file->BeginBlock(static_cast<std::uint32_t>(size)) : nullptr;
      next != nullptr) {
    [[maybe_unused]] const std::uint8_t* const end = next + size;
    WriteFields(next, Data::Fields(), *this);
    assert(next == end);
    file->EndBlock(next);
  } else {
    WriteFields(*file, Data::Fields(), *this);
  }
  return WriteSlots(*file, recalc, FieldsOf<CChunkOf>(), *this);
} catch (const std::exception&) {
  return false;
}

}  // namespace qenzor
