#pragma once

#include "qenzor/core/chunk_set.h"
#include "qenzor/edit/chunk_set_edit.h"
#include "qenzor/qen/z_id_obj.h"
#include "qenzor/text/chunk_set_text_converter.h"

namespace qenzor {

class CZIdObjSetEdit;
class CZIdObjSetTextConverter;

/// The z-id objects of a layer.
class QENZOR_EXPORT CZIdObjSet : public CArraySetOf<CZIdObjSet, CZIdObj> {
 public:
  static constexpr std::uint32_t kChunkId = 20;
  static constexpr std::string_view kTag = "ZIdObjSet";
  using EditClass = CZIdObjSetEdit;
  using ConverterClass = CZIdObjSetTextConverter;
};

class QENZOR_EXPORT CZIdObjSetEdit : public CSetEditOf<CZIdObjSet> {};

class QENZOR_EXPORT CZIdObjSetTextConverter : public CSetConverterOf<CZIdObjSet> {};

extern template class CChunkSetArray<CZIdObj*>;
extern template class CSetOf<CZIdObjSet, CChunkSetArray<CZIdObj*>>;

}  // namespace qenzor
