#pragma once

#include "qenzor/edit/edit_of.h"
#include "qenzor/edit/field_edit_impl.h"

namespace qenzor {

template <class Self, class Chunk, class Base, class Data>
CAbstractChunk* CEditOf<Self, Chunk, Base, Data>::EditDataToChunkData() {
  auto chunk = std::make_unique<Chunk>();
  ConvertToChunk(FieldsOf<CEditOf>(), *this, FieldsOf<Chunk>(), *chunk);
  return chunk.release();
}

template <class Self, class Chunk, class Base, class Data>
void CEditOf<Self, Chunk, Base, Data>::ChunkDataToEditData(CAbstractChunk* chunk) {
  Release();
  if (const auto* same = class_cast<Chunk>(chunk); same != nullptr)
    ConvertToEdit(FieldsOf<Chunk>(), *same, FieldsOf<CEditOf>(), *this);
}

template <class Self, class Chunk, class Base, class Data>
CAbstractChunkEdit* CEditOf<Self, Chunk, Base, Data>::Clone() {
  auto clone = std::make_unique<Self>();
  clone->DeepCopy(this);
  return clone.release();
}

template <class Self, class Chunk, class Base, class Data>
void CEditOf<Self, Chunk, Base, Data>::DeepCopy(CAbstractChunkEdit* source) {
  if (source == this) return;
  Release();
  if (const auto* same = dynamic_cast<const CEditOf*>(source); same != nullptr)
    CopyEditFields(FieldsOf<CEditOf>(), *same, *this);
}

template <class Self, class Chunk, class Base, class Data>
bool CEditOf<Self, Chunk, Base, Data>::SetSubChunkEdit(CAbstractChunkEdit* sub) {
  return TakeSubChunkEdit(FieldsOf<CEditOf>(), *this, sub);
}

template <class Self, class Chunk, class Base, class Data>
void CEditOf<Self, Chunk, Base, Data>::Release() {
  ReleaseFields(FieldsOf<CEditOf>(), *this);
  if constexpr (requires { this->ResetNumber(); }) this->ResetNumber();
}

}  // namespace qenzor
