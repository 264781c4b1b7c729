#pragma once

#include "qenzor/core/chunk_of.h"
#include "qenzor/edit/edit_of.h"
#include "qenzor/text/converter_of.h"

namespace qenzor {

class CDrawInfoIdxSetEdit;
class CDrawInfoIdxSetTextConverter;

/// Data: count n (u32), n indices (u32 each); 4 + 4 * n bytes. Of an edit list of more
/// than 65,536 indices, the 65,537th and those behind it overwrite the chunk's first ones, and the
/// end of the chunk's array is 0.
template <class Form>
struct QENZOR_EXPORT DrawInfoIdxSetFields {
  /// Positions in the draw info set, from 0; not checked.
  typename Form::template LongArray<std::uint32_t> DrawInfoIdx;

  static constexpr auto Fields() {
    return std::tuple{array("DrawInfoIdx", &DrawInfoIdxSetFields::DrawInfoIdx)};
  }
};

/// The draw infos that one draw attribute asks for, by their position in the draw info set.
class QENZOR_EXPORT CDrawInfoIdxSet
    : public CChunkOf<CDrawInfoIdxSet, CAbstractChunk, DrawInfoIdxSetFields<ChunkForm>> {
 public:
  static constexpr std::uint32_t kChunkId = 23;
  static constexpr std::string_view kTag = "DrawInfoIdxSet";
  using EditClass = CDrawInfoIdxSetEdit;
  using ConverterClass = CDrawInfoIdxSetTextConverter;
};

class QENZOR_EXPORT CDrawInfoIdxSetEdit : public CEditOf<CDrawInfoIdxSet> {};

class QENZOR_EXPORT CDrawInfoIdxSetTextConverter : public CConverterOf<CDrawInfoIdxSet> {};

extern template class CChunkOf<CDrawInfoIdxSet, CAbstractChunk, DrawInfoIdxSetFields<ChunkForm>>;

}  // namespace qenzor
