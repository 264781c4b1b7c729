#pragma once

#include "qenzor/core/chunk_of.h"
#include "qenzor/edit/edit_of.h"
#include "qenzor/text/converter_of.h"

namespace qenzor {

class CDrawInfoIdxSetEdit;
class CDrawInfoIdxSetTextConverter;

/// Data: count n (u32), n indices (u32 each); 4 + 4 * n bytes. An edit list of more than 65,536
/// indices comes round to the front of the chunk's array, whose end is then 0.
template <class Form>
struct QENZOR_EXPORT DrawInfoIdxSetData {
  typename Form::template LongArray<std::uint32_t> DrawInfoIdx;

  static constexpr auto Fields() {
    return std::tuple{array("DrawInfoIdx", &DrawInfoIdxSetData::DrawInfoIdx)};
  }
};

/// The draw infos that one draw attribute asks for, by their position in the draw info set.
class QENZOR_EXPORT CDrawInfoIdxSet
    : public CChunkOf<CDrawInfoIdxSet, CAbstractChunk, DrawInfoIdxSetData<ChunkForm>> {
 public:
  static constexpr std::uint32_t kChunkId = 23;
  static constexpr std::string_view kTag = "DrawInfoIdxSet";
  using EditClass = CDrawInfoIdxSetEdit;
  using ConverterClass = CDrawInfoIdxSetTextConverter;
};

class QENZOR_EXPORT CDrawInfoIdxSetEdit
    : public CEditOf<CDrawInfoIdxSetEdit, CDrawInfoIdxSet, CAbstractChunkEdit,
                     DrawInfoIdxSetData<EditForm>> {};

class QENZOR_EXPORT CDrawInfoIdxSetTextConverter
    : public CConverterOf<CDrawInfoIdxSet, CDrawInfoIdxSetEdit> {};

extern template class CChunkOf<CDrawInfoIdxSet, CAbstractChunk, DrawInfoIdxSetData<ChunkForm>>;
extern template class CEditOf<CDrawInfoIdxSetEdit, CDrawInfoIdxSet, CAbstractChunkEdit,
                              DrawInfoIdxSetData<EditForm>>;
extern template class CConverterOf<CDrawInfoIdxSet, CDrawInfoIdxSetEdit>;

}  // namespace qenzor
