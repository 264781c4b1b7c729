#pragma once

#include "qenzor/core/chunk_set.h"
#include "qenzor/edit/chunk_set_edit.h"
#include "qenzor/qen/abstract_obj.h"
#include "qenzor/text/chunk_set_text_converter.h"

namespace qenzor {

class CObjSetEdit;
class CObjSetTextConverter;

/// The map objects of a z-id object, of any kind, in drawing order.
class QENZOR_EXPORT CObjSet : public CArraySetOf<CObjSet, CAbstractObj> {
 public:
  static constexpr std::uint32_t kChunkId = 22;
  static constexpr std::string_view kTag = "ObjSet";
  using EditClass = CObjSetEdit;
  using ConverterClass = CObjSetTextConverter;
};

class QENZOR_EXPORT CObjSetEdit : public CSetEditOf<CObjSet> {};

class QENZOR_EXPORT CObjSetTextConverter : public CSetConverterOf<CObjSet> {};

extern template class CChunkSetArray<CAbstractObj*>;
extern template class CSetOf<CObjSet, CChunkSetArray<CAbstractObj*>>;

}  // namespace qenzor
