#pragma once

#include "qenzor/core/chunk_set.h"
#include "qenzor/core/prefetch_impl.h"
#include "qenzor/edit/chunk_edit_impl.h"
#include "qenzor/edit/chunk_set_edit.h"
#include "qenzor/edit/giving_up_impl.h"
#include "qenzor/platform/memory_budget_impl.h"

namespace qenzor {

/// A copy of an edit object that belongs to its owner at once.
template <class Edit>
std::unique_ptr<Edit> CloneOfEdit(Edit* original) {
  return std::unique_ptr<Edit>(original == nullptr ? nullptr
                                                   : static_cast<Edit*>(original->Clone()));
}

/// The chunk made of an edit object, which belongs to its owner at once.
template <class Chunk, class Edit>
std::unique_ptr<Chunk> ChunkOfEdit(Edit* edit) {
  return std::unique_ptr<Chunk>(edit == nullptr ? nullptr
                                                : static_cast<Chunk*>(edit->EditDataToChunkData()));
}

// The array.

template <class T, class TEdit>
std::uint32_t CChunkSetArrayEdit<T, TEdit>::GetElemCount() const {
  return static_cast<std::uint32_t>(m_list.size());
}

template <class T, class TEdit>
CAbstractChunk* CChunkSetArrayEdit<T, TEdit>::EditDataToChunkData() {
  std::unique_ptr<CAbstractChunk> chunk(GetChunkInstance());
  auto* set = class_cast<CChunkSetArray<T>>(chunk.get());
  if (set == nullptr) return chunk.release();
  set->GetNewArray(this->GetElemCount());
  const bool gives_up = CGivingUp::IsUnderWay();
  std::uint32_t place = 0;
  for (auto& elem : m_list) {
    if (elem == nullptr) continue;
    set->SetElem(place++, ChunkOfEdit<std::remove_pointer_t<T>>(elem.get()).release());
    if (gives_up) elem.reset();
  }
  if (gives_up) Release();
  return chunk.release();
}

template <class T, class TEdit>
void CChunkSetArrayEdit<T, TEdit>::ChunkDataToEditData(CAbstractChunk* chunk) {
  Release();
  auto* set = class_cast<CChunkSetArray<T>>(chunk);
  if (set == nullptr) return;
  const std::uint32_t count = set->GetElemCount();
  ChargeMemory(count * kListPlace);
  m_list.reserve(count);
  for (std::uint32_t i = 0; i < count; ++i) {
    T elem = set->GetElem(i);
    if (elem == nullptr) continue;
    // The catalogue has checked that this edit form is one that the set's holds.
    if (auto edit = MakeEdit(*elem); edit != nullptr)
      m_list.emplace_back(static_cast<TEdit>(edit.release()));
  }
}

template <class T, class TEdit>
CAbstractChunkEdit* CChunkSetArrayEdit<T, TEdit>::Clone() {
  std::unique_ptr<CAbstractChunkEdit> clone(GetChunkEditInstance());
  clone->DeepCopy(this);
  return clone.release();
}

template <class T, class TEdit>
void CChunkSetArrayEdit<T, TEdit>::DeepCopy(CAbstractChunkEdit* source) {
  if (source == this) return;
  auto* same = dynamic_cast<CChunkSetArrayEdit*>(source);  // what is released may be the source
  Release();
  if (same == nullptr) return;
  m_list.reserve(same->m_list.size());
  for (const auto& elem : same->m_list)
    if (elem != nullptr) m_list.push_back(CloneOfEdit(elem.get()));
}

template <class T, class TEdit>
bool CChunkSetArrayEdit<T, TEdit>::SetSubChunkEdit(CAbstractChunkEdit* sub) {
  std::unique_ptr<CAbstractChunkEdit> owned(sub);
  auto* elem = dynamic_cast<TEdit>(sub);
  if (elem == nullptr) return false;
  ChargeMemory(kListPlace);
  m_list.emplace_back();
  owned.release();
  m_list.back().reset(elem);
  return true;
}

template <class T, class TEdit>
void CChunkSetArrayEdit<T, TEdit>::Release() {
  m_list.clear();
}

template <class T, class TEdit>
TEdit CChunkSetArrayEdit<T, TEdit>::GetElem(std::uint32_t index) const {
  return index < m_list.size() ? m_list[index].get() : nullptr;
}

template <class T, class TEdit>
void CChunkSetArrayEdit<T, TEdit>::AddElem(std::uint32_t index, TEdit elem) {
  std::unique_ptr<ElementEdit> owned(elem);
  const std::size_t place = std::min<std::size_t>(index, m_list.size());
  m_list.insert(m_list.begin() + static_cast<std::ptrdiff_t>(place), std::move(owned));
}

template <class T, class TEdit>
void CChunkSetArrayEdit<T, TEdit>::DelElem(std::uint32_t index) {
  if (index < m_list.size()) m_list.erase(m_list.begin() + static_cast<std::ptrdiff_t>(index));
}

// The map.

/// Calls visit for each element in the map's order, and ahead with its key some elements before.
template <class Elems, class Ahead, class Visit>
void ForEachElemTrailing(const Elems& elems, Ahead ahead, Visit visit) {
  using Edit = typename decltype(Elems::Entry::Value)::element_type;
  VisitTrailing<Edit>(
      [&](auto take) {
        elems.ForEachOrdered([&](std::uint64_t, const auto& elem) { take(elem.get()); }, ahead);
      },
      visit);
}

template <class T, class TEdit>
CChunkSetMapEdit<std::uint64_t, T, TEdit>::CChunkSetMapEdit() : m_elems(kBuckets) {}

template <class T, class TEdit>
CAbstractChunk* CChunkSetMapEdit<std::uint64_t, T, TEdit>::EditDataToChunkData() {
  std::unique_ptr<CAbstractChunk> chunk(GetChunkInstance());
  auto* set = class_cast<CChunkSetMap<std::uint64_t, T>>(chunk.get());
  if (set == nullptr) return chunk.release();
  std::uint32_t index = 0;
  if (CGivingUp::IsUnderWay()) {
    for (const std::uint32_t position : m_elems.WalkOrder()) {
      auto& elem = m_elems.At(position).Value;
      set->SubChunkSet(index++, elem->EditDataToChunkData());
      elem.reset();
    }
    Release();
    return chunk.release();
  }
  ForEachElemTrailing(
      m_elems, [set](std::uint64_t key) { set->PrefetchElem(key); },
      [&](TEdit elem) { set->SubChunkSet(index++, elem->EditDataToChunkData()); });
  return chunk.release();
}

template <class T, class TEdit>
void CChunkSetMapEdit<std::uint64_t, T, TEdit>::ChunkDataToEditData(CAbstractChunk* chunk) {
  Release();
  auto* set = class_cast<CChunkSetMap<std::uint64_t, T>>(chunk);
  if (set == nullptr) return;
  ChargeMemory(set->GetElemCount() * kKeyedPlace);
  m_elems.Reserve(set->GetElemCount());
  VisitTrailing<std::remove_pointer_t<T>>(
      [&](auto visit) {
        set->ForEachElem(visit, [this](std::uint64_t key) { m_elems.PrefetchKey(key); });
      },
      [this](T elem) {
        if (auto edit = MakeEdit(*elem); edit != nullptr)
          AddElem(static_cast<ElementEdit*>(edit.release()));
      });
}

template <class T, class TEdit>
CAbstractChunkEdit* CChunkSetMapEdit<std::uint64_t, T, TEdit>::Clone() {
  std::unique_ptr<CAbstractChunkEdit> clone(GetChunkEditInstance());
  clone->DeepCopy(this);
  return clone.release();
}

template <class T, class TEdit>
void CChunkSetMapEdit<std::uint64_t, T, TEdit>::DeepCopy(CAbstractChunkEdit* source) {
  if (source == this) return;
  auto* same = dynamic_cast<CChunkSetMapEdit*>(source);  // what is released may be the source
  Release();
  if (same == nullptr) return;
  m_elems.Reserve(same->m_elems.GetCount());
  ForEachElemTrailing(
      same->m_elems, [this](std::uint64_t key) { m_elems.PrefetchKey(key); },
      [this](TEdit elem) { AddElem(CloneOfEdit(elem).release()); });
}

template <class T, class TEdit>
bool CChunkSetMapEdit<std::uint64_t, T, TEdit>::SetSubChunkEdit(CAbstractChunkEdit* sub) {
  std::unique_ptr<CAbstractChunkEdit> owned(sub);
  auto* elem = dynamic_cast<TEdit>(sub);
  if (elem == nullptr) return false;
  ChargeMemory(kKeyedPlace);
  owned.release();
  AddElem(elem);
  return true;
}

template <class T, class TEdit>
void CChunkSetMapEdit<std::uint64_t, T, TEdit>::Release() {
  m_elems.Clear();
}

template <class T, class TEdit>
std::uint32_t CChunkSetMapEdit<std::uint64_t, T, TEdit>::GetElemCount() const {
  return static_cast<std::uint32_t>(m_elems.GetCount());
}

template <class T, class TEdit>
TEdit CChunkSetMapEdit<std::uint64_t, T, TEdit>::GetElem(std::uint64_t key) const {
  const auto* elem = m_elems.Find(key);
  return elem == nullptr ? nullptr : elem->get();
}

template <class T, class TEdit>
std::vector<TEdit> CChunkSetMapEdit<std::uint64_t, T, TEdit>::GetElems() const {
  std::vector<TEdit> elems;
  elems.reserve(m_elems.GetCount());
  m_elems.ForEachOrdered([&](std::uint64_t, const auto& elem) { elems.push_back(elem.get()); });
  return elems;
}

template <class T, class TEdit>
TEdit CChunkSetMapEdit<std::uint64_t, T, TEdit>::DelElem(std::uint64_t key) {
  auto elem = m_elems.Remove(key);
  return elem.has_value() ? elem->release() : nullptr;
}

template <class T, class TEdit>
void CChunkSetMapEdit<std::uint64_t, T, TEdit>::ReverseOrder() {
  m_elems.Reverse();
}

}  // namespace qenzor
