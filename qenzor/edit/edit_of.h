#pragma once

#include "qenzor/core/fields.h"
#include "qenzor/core/forms.h"
#include "qenzor/edit/abstract_chunk_edit.h"

namespace qenzor {

/// Everything that an edit class does, from its field list, which is its chunk's list in the edit
/// form. Self is the class, Chunk its chunk class, Base CAbstractChunkEdit or a class between.
/// The member functions stand in edit_of_impl.h.
template <class Self, class Chunk, class Base, class Data>
class QENZOR_EXPORT CEditOf : public Base, public Data {
 public:
  using BaseType = Base;
  using DataType = Data;

  [[nodiscard]] CAbstractChunk* EditDataToChunkData() override;
  void ChunkDataToEditData(CAbstractChunk* chunk) override;
  [[nodiscard]] CAbstractChunkEdit* Clone() override;
  void DeepCopy(CAbstractChunkEdit* source) override;
  bool SetSubChunkEdit(CAbstractChunkEdit* sub) override;
  void Release() override;
};

}  // namespace qenzor
