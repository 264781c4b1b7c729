#pragma once

#include <algorithm>
#include <new>

#include "qenzor/core/chunk_set.h"
#include "qenzor/core/class_row_impl.h"
#include "qenzor/core/field_io_impl.h"
#include "qenzor/core/prefetch_impl.h"
#include "qenzor/platform/memory_budget_impl.h"

namespace qenzor {

// The element count is the only thing in front of the elements.
inline constexpr std::uint32_t kSetCountSize = 4;

template <class T>
void CAbstractChunkSet<T>::SubChunkSet(std::uint32_t index, CAbstractChunk* chunk) {
  std::unique_ptr<CAbstractChunk> owned(chunk);
  auto* elem = class_cast<Element>(chunk);
  if (elem == nullptr) return;
  constexpr bool kIsKeyed = requires { elem->GetKey(); };
  ChargeMemory(kIsKeyed ? kKeyedPlace : kListPlace);
  owned.release();
  AddElem(index, elem);
}

template <class T>
bool CAbstractChunkSet<T>::ReadPrimitiveBlock(const void* data, const std::uint32_t& size,
                                              std::uint32_t& consumed) {
  CMemSource source(data, size);
  const std::uint8_t* count = source.Take(kSetCountSize);
  if (count == nullptr) return false;
  NumberCoding::Load(count, m_declaredCount);
  consumed = kSetCountSize;
  return true;
}

template <class T>
bool CAbstractChunkSet<T>::ReadPrimitiveBlock(CFile* file, std::uint32_t& consumed) {
  CFileSource source(*file);
  const std::uint8_t* count = source.Take(kSetCountSize);
  if (count == nullptr) return source.Misses("element count", kSetCountSize);
  NumberCoding::Load(count, m_declaredCount);
  consumed = kSetCountSize;
  return true;
}

template <class T>
template <class Walk>
bool CAbstractChunkSet<T>::WriteElements(CFile* file, std::uint32_t count, Walk&& walk) try {
  WriteBlock(*file, kSetCountSize,
             [count](std::uint8_t* bytes) { NumberCoding::Store(bytes, count); });
  walk();
  return true;
} catch (const std::exception&) {
  return false;
}

// The array.

template <class T>
constinit const CRuntimeClass CChunkSetArray<T>::kRuntimeClass{"ChunkSetArray",
                                                               &CAbstractChunk::kRuntimeClass};

template <class T>
const CRuntimeClass& CChunkSetArray<T>::GetRuntimeClass() const {
  return kRuntimeClass;
}

template <class T>
std::uint32_t CChunkSetArray<T>::GetElemCount() const {
  return static_cast<std::uint32_t>(m_elems.size());
}

template <class T>
void CChunkSetArray<T>::GetNewArray(std::uint32_t count) {
  Release();
  m_elems.resize(count);
}

template <class T>
void CChunkSetArray<T>::AddElem(std::uint32_t /*index*/, T elem) {
  // Room for what the file declares, but for no more than a few elements that have not arrived.
  constexpr std::uint32_t kMaxAhead = 16;
  std::unique_ptr<Element> owned(elem);
  if (m_elems.empty()) m_elems.reserve(std::min(this->m_declaredCount, kMaxAhead));
  m_elems.push_back(std::move(owned));
}

template <class T>
CAbstractChunk* CChunkSetArray<T>::Clone() try {
  std::unique_ptr<CAbstractChunk> clone(this->GetChunkInstance());
  if (clone != nullptr) clone->DeepCopy(this);
  return clone.release();
} catch (const std::bad_alloc&) {
  return nullptr;
}

template <class T>
void CChunkSetArray<T>::DeepCopy(CAbstractChunk* source) {
  if (source == this) return;
  auto* same = class_cast<CChunkSetArray>(source);  // what is released may be the source
  Release();
  if (same == nullptr) return;
  this->m_header = same->m_header;
  m_elems.reserve(same->m_elems.size());
  for (const auto& elem : same->m_elems) m_elems.push_back(CloneOf(elem.get()));
}

template <class T>
void CChunkSetArray<T>::RecursiveReCalcDataSize() {
  std::uint32_t size = kSetCountSize;
  for (const auto& elem : m_elems) {
    if (elem == nullptr) continue;
    elem->RecursiveReCalcDataSize();
    size += elem->GetChunkSize();
  }
  this->m_header.DataSize = size;
}

template <class T>
void CChunkSetArray<T>::Release() {
  m_elems.clear();
  m_elems.shrink_to_fit();
}

template <class T>
bool CChunkSetArray<T>::WriteData(CFile* file, bool recalc) {
  return this->WriteElements(file, GetElemCount(), [&] {
    for (const auto& elem : m_elems)
      if (elem != nullptr) static_cast<void>(elem->Write(file, recalc));
  });
}

// The map.

template <class T>
constinit const CRuntimeClass CChunkSetMap<std::uint64_t, T>::kRuntimeClass{
    "ChunkSetMap", &CAbstractChunk::kRuntimeClass};

template <class T>
CChunkSetMap<std::uint64_t, T>::CChunkSetMap() : m_elems(kBuckets) {}

template <class T>
const CRuntimeClass& CChunkSetMap<std::uint64_t, T>::GetRuntimeClass() const {
  return kRuntimeClass;
}

template <class T>
std::uint32_t CChunkSetMap<std::uint64_t, T>::GetElemCount() const {
  return static_cast<std::uint32_t>(m_elems.GetCount());
}

template <class T>
T CChunkSetMap<std::uint64_t, T>::GetElem(std::uint64_t key) const {
  const auto* elem = m_elems.Find(key);
  return elem == nullptr ? nullptr : elem->get();
}

template <class T>
std::vector<T> CChunkSetMap<std::uint64_t, T>::GetElems() const {
  std::vector<T> elems;
  elems.reserve(m_elems.GetCount());
  ForEachElem([&](T elem) { elems.push_back(elem); });
  return elems;
}

template <class T>
CAbstractChunk* CChunkSetMap<std::uint64_t, T>::Clone() try {
  std::unique_ptr<CAbstractChunk> clone(this->GetChunkInstance());
  if (clone != nullptr) clone->DeepCopy(this);
  return clone.release();
} catch (const std::bad_alloc&) {
  return nullptr;
}

template <class T>
void CChunkSetMap<std::uint64_t, T>::DeepCopy(CAbstractChunk* source) {
  if (source == this) return;
  auto* same = class_cast<CChunkSetMap>(source);  // what is released may be the source
  Release();
  if (same == nullptr) return;
  this->m_header = same->m_header;
  m_elems.Reserve(same->m_elems.GetCount());
  std::uint32_t index = 0;
  VisitTrailing<Element>(
      [&](auto visit) {
        same->ForEachElem(visit, [this](std::uint64_t key) { PrefetchElem(key); });
      },
      [&](T elem) { this->AddElem(index++, CloneOf(elem).release()); });
}

template <class T>
void CChunkSetMap<std::uint64_t, T>::RecursiveReCalcDataSize() {
  std::uint32_t size = kSetCountSize;
  m_elems.ForEach([&](std::uint64_t, const auto& elem) {
    elem->RecursiveReCalcDataSize();
    size += elem->GetChunkSize();
  });
  this->m_header.DataSize = size;
}

template <class T>
void CChunkSetMap<std::uint64_t, T>::Release() {
  m_elems.Clear();
}

template <class T>
bool CChunkSetMap<std::uint64_t, T>::WriteData(CFile* file, bool recalc) {
  return this->WriteElements(file, GetElemCount(), [&] {
    VisitTrailing<Element>([this](auto visit) { this->ForEachElem(visit); },
                           [&](T elem) { static_cast<void>(elem->Write(file, recalc)); });
  });
}

// Concrete sets.

template <class Self, class SetBase>
constinit const CRuntimeClass CSetOf<Self, SetBase>::kRuntimeClass{
    Self::kTag, &SetBase::kRuntimeClass, &RowInCatalogue<Self>};

template <class Self, class SetBase>
CSetOf<Self, SetBase>::CSetOf() {
  this->m_header.ChunkId = Self::kChunkId;
}

template <class Self, class SetBase>
const CRuntimeClass& CSetOf<Self, SetBase>::GetRuntimeClass() const {
  return kRuntimeClass;
}

template <class Self, class SetBase>
CAbstractChunk* CSetOf<Self, SetBase>::GetChunkInstance() {
  return new (std::nothrow) Self;
}

}  // namespace qenzor
