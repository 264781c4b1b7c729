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
struct QENZOR_EXPORT ZIdObjFields {
  /// What draw attributes know the objects by.
  std::uint64_t ZId = 0;
  /// May be absent.
  typename Form::template Slot<CObjSet> ObjSet;

  static constexpr auto Fields() {
    return std::tuple{field("ZId", &ZIdObjFields::ZId),
                      slot<CObjSet>("ObjSet", &ZIdObjFields::ObjSet)};
  }
};

/// Map objects grouped under a 64-bit identifier.
class QENZOR_EXPORT CZIdObj : public CChunkOf<CZIdObj, CAbstractChunk, ZIdObjFields<ChunkForm>> {
 public:
  static constexpr std::uint32_t kChunkId = 21;
  static constexpr std::string_view kTag = "ZIdObj";
  using EditClass = CZIdObjEdit;
  using ConverterClass = CZIdObjTextConverter;
};

class QENZOR_EXPORT CZIdObjEdit : public CEditOf<CZIdObj> {};

class QENZOR_EXPORT CZIdObjTextConverter : public CConverterOf<CZIdObj> {};

extern template class CChunkOf<CZIdObj, CAbstractChunk, ZIdObjFields<ChunkForm>>;

}  // namespace qenzor
