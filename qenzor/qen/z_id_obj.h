#pragma once

#include "qenzor/core/chunk_of.h"
#include "qenzor/edit/edit_of.h"
#include "qenzor/qen/obj_set.h"
#include "qenzor/text/converter_of.h"

namespace qenzor {

class CZIdObjEdit;
class CZIdObjTextConverter;

/// Data: z-id (u64), then at most one object set as sub-chunk.
template <class Form>
struct QENZOR_EXPORT ZIdObjData {
  std::uint64_t ZId = 0;
  typename Form::template Slot<CObjSet> ObjSet;

  static constexpr auto Fields() {
    return std::tuple{field("ZId", &ZIdObjData::ZId), slot<CObjSet>("ObjSet", &ZIdObjData::ObjSet)};
  }
};

/// Map objects grouped under a 64-bit identifier.
class QENZOR_EXPORT CZIdObj : public CChunkOf<CZIdObj, CAbstractChunk, ZIdObjData<ChunkForm>> {
 public:
  static constexpr std::uint32_t kChunkId = 21;
  static constexpr std::string_view kTag = "ZIdObj";
  using EditClass = CZIdObjEdit;
  using ConverterClass = CZIdObjTextConverter;
};

class QENZOR_EXPORT CZIdObjEdit
    : public CEditOf<CZIdObjEdit, CZIdObj, CAbstractChunkEdit, ZIdObjData<EditForm>> {};

class QENZOR_EXPORT CZIdObjTextConverter : public CConverterOf<CZIdObj, CZIdObjEdit> {};

extern template class CChunkOf<CZIdObj, CAbstractChunk, ZIdObjData<ChunkForm>>;
extern template class CEditOf<CZIdObjEdit, CZIdObj, CAbstractChunkEdit, ZIdObjData<EditForm>>;
extern template class CConverterOf<CZIdObj, CZIdObjEdit>;

}  // namespace qenzor
