#pragma once

#include "qenzor/core/data_hooks.h"
#include "qenzor/edit/edit_of.h"
#include "qenzor/edit/field_edit_impl.h"

namespace qenzor {

template <class Chunk>
CAbstractChunk* CEditOf<Chunk>::EditDataToChunkData() {
  auto chunk = std::make_unique<Chunk>();
  ConvertToChunk(FieldsOf<CEditOf>(), *this, FieldsOf<Chunk>(), *chunk);
  return chunk.release();
}

template <class Chunk>
void CEditOf<Chunk>::ChunkDataToEditData(CAbstractChunk* chunk) {
  Release();
  if (const auto* same = class_cast<Chunk>(chunk); same != nullptr)
    ConvertToEdit(FieldsOf<Chunk>(), *same, FieldsOf<CEditOf>(), *this);
}

template <class Chunk>
CAbstractChunkEdit* CEditOf<Chunk>::Clone() {
  auto clone = std::make_unique<typename Chunk::EditClass>();
  clone->DeepCopy(this);
  return clone.release();
}

template <class Chunk>
void CEditOf<Chunk>::DeepCopy(CAbstractChunkEdit* source) {
  if (source == this) return;
  const auto* same = dynamic_cast<const CEditOf*>(source);  // what is released may be the source
  Release();
  if (same != nullptr) CopyEditFields(FieldsOf<CEditOf>(), *same, *this);
}

template <class Chunk>
bool CEditOf<Chunk>::SetSubChunkEdit(CAbstractChunkEdit* sub) {
  return TakeSubChunkEdit(FieldsOf<CEditOf>(), *this, sub);
}

template <class Chunk>
void CEditOf<Chunk>::Release() {
  ReleaseFields(FieldsOf<CEditOf>(), *this);
  HooksFor<DataType>().ResetNumber(*this);
}

}  // namespace qenzor
