#pragma once

#include "qenzor/core/chunk_set.h"
#include "qenzor/edit/chunk_set_edit.h"
#include "qenzor/qen/url_info.h"
#include "qenzor/text/chunk_set_text_converter.h"

namespace qenzor {

class CAddedObjInfoSetEdit;
class CAddedObjInfoSetTextConverter;

/// What a map object carries beside its geometry.
class QENZOR_EXPORT CAddedObjInfoSet : public CArraySetOf<CAddedObjInfoSet, CAbstractAddedObjInfo> {
 public:
  static constexpr std::uint32_t kChunkId = 1;
  static constexpr std::string_view kTag = "AddedObjInfoSet";
  using EditClass = CAddedObjInfoSetEdit;
  using ConverterClass = CAddedObjInfoSetTextConverter;
};

class QENZOR_EXPORT CAddedObjInfoSetEdit : public CSetEditOf<CAddedObjInfoSet> {};

class QENZOR_EXPORT CAddedObjInfoSetTextConverter : public CSetConverterOf<CAddedObjInfoSet> {};

extern template class CChunkSetArray<CAbstractAddedObjInfo*>;
extern template class CSetOf<CAddedObjInfoSet, CChunkSetArray<CAbstractAddedObjInfo*>>;

}  // namespace qenzor
