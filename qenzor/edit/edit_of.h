#pragma once

#include "qenzor/core/fields.h"
#include "qenzor/core/forms.h"
#include "qenzor/edit/abstract_chunk_edit.h"

namespace qenzor {

/// Everything that an edit class does, from its field list, which is its chunk's list in the edit
/// form. The chunk class names the edit class, and its base is the twin of the chunk's base.
/// The member functions stand in edit_of_impl.h.
template <class Chunk>
class QENZOR_EXPORT CEditOf : public Chunk::BaseType::EditClass,
                              public EditFormOf<typename Chunk::DataType>::Type {
 public:
  using ChunkClass = Chunk;
  using BaseType = typename Chunk::BaseType::EditClass;
  using DataType = typename EditFormOf<typename Chunk::DataType>::Type;

  [[nodiscard]] CAbstractChunk* EditDataToChunkData() override;
  void ChunkDataToEditData(CAbstractChunk* chunk) override;
  [[nodiscard]] CAbstractChunkEdit* Clone() override;
  void DeepCopy(CAbstractChunkEdit* source) override;
  bool SetSubChunkEdit(CAbstractChunkEdit* sub) override;
  void Release() override;
};

}  // namespace qenzor
