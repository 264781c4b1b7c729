#pragma once

#include "qenzor/core/abstract_chunk.h"
#include "qenzor/core/fields.h"
#include "qenzor/core/forms.h"
#include "qenzor/edit/abstract_chunk_edit.h"
#include "qenzor/qen/added_obj_info_set.h"

namespace qenzor {

class CAbstractObjEdit;

/// What every map object has: at most one added-object-info set, its only sub-chunk.
template <class Form>
struct QENZOR_EXPORT ObjBaseFields {
  /// The links of the object; may be absent.
  typename Form::template Slot<CAddedObjInfoSet> AddedObjInfoSet;

  static constexpr auto BaseFields() {
    return std::tuple{slot<CAddedObjInfoSet>("AddedObjInfoSet", &ObjBaseFields::AddedObjInfoSet)};
  }
};

/// The base of the map objects, which object sets hold.
class QENZOR_EXPORT CAbstractObj : public CAbstractChunk, public ObjBaseFields<ChunkForm> {
 public:
  using EditClass = CAbstractObjEdit;
  static const CRuntimeClass kRuntimeClass;

  const CRuntimeClass& GetRuntimeClass() const override;
  /// Replaces the added-object-info set by a copy of the source's, none if it has none.
  void DeepCopy(CAbstractChunk* source) override;
  /// Keeps an added-object-info set; deletes any other chunk.
  void SubChunkSet(std::uint32_t index, CAbstractChunk* chunk) override;

 protected:
  void Release() override;
};

class QENZOR_EXPORT CAbstractObjEdit : public CAbstractChunkEdit, public ObjBaseFields<EditForm> {
 public:
  using ChunkClass = CAbstractObj;
  /// Keeps an added-object-info set edit; destroys any other.
  bool SetSubChunkEdit(CAbstractChunkEdit* sub) override;
};

}  // namespace qenzor
