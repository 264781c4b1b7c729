#pragma once

#include "qenzor/core/chunk_set.h"
#include "qenzor/edit/chunk_set_edit.h"
#include "qenzor/qen/z_id_obj.h"
#include "qenzor/text/chunk_set_text_converter.h"

namespace qenzor {

class CZIdObjSetEdit;
class CZIdObjSetTextConverter;

/// The z-id objects of a layer.
class QENZOR_EXPORT CZIdObjSet : public CSetOf<CZIdObjSet, CChunkSetArray<CZIdObj*>> {
 public:
  static constexpr std::uint32_t kChunkId = 20;
  static constexpr std::string_view kTag = "ZIdObjSet";
  using EditClass = CZIdObjSetEdit;
  using ConverterClass = CZIdObjSetTextConverter;
};

class QENZOR_EXPORT CZIdObjSetEdit
    : public CSetEditOf<CZIdObjSetEdit, CZIdObjSet, CChunkSetArrayEdit<CZIdObj*, CZIdObjEdit*>> {};

class QENZOR_EXPORT CZIdObjSetTextConverter
    : public CSetConverterOf<CChunkSetArrayTextConverter<CZIdObj*>> {};

extern template class CAbstractChunkSet<CZIdObj*>;
extern template class CChunkSetArray<CZIdObj*>;
extern template class CSetOf<CZIdObjSet, CChunkSetArray<CZIdObj*>>;
extern template class CAbstractChunkSetEdit<CZIdObjEdit*>;
extern template class CChunkSetArrayEdit<CZIdObj*, CZIdObjEdit*>;
extern template class CSetEditOf<CZIdObjSetEdit, CZIdObjSet,
                                 CChunkSetArrayEdit<CZIdObj*, CZIdObjEdit*>>;
extern template class CChunkSetArrayTextConverter<CZIdObj*>;
extern template class CSetConverterOf<CChunkSetArrayTextConverter<CZIdObj*>>;

}  // namespace qenzor
