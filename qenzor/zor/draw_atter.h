#pragma once

#include "qenzor/core/chunk_of.h"
#include "qenzor/edit/edit_of.h"
#include "qenzor/text/converter_of.h"
#include "qenzor/zor/draw_info_idx_set.h"

namespace qenzor {

class CDrawAtterEdit;
class CDrawAtterTextConverter;

/// Data: z-id (u64), then at most one draw info index set as sub-chunk.
template <class Form>
struct QENZOR_EXPORT DrawAtterData {
  std::uint64_t ZId = 0;
  typename Form::template Slot<CDrawInfoIdxSet> DrawInfoIdxSet;

  /// What a keyed set files it under.
  std::uint64_t GetKey() const noexcept { return ZId; }

  static constexpr auto Fields() {
    return std::tuple{field("ZId", &DrawAtterData::ZId),
                      slot<CDrawInfoIdxSet>("DrawInfoIdxSet", &DrawAtterData::DrawInfoIdxSet)};
  }
};

/// Ties a z-id to the draw infos that draw its objects.
class QENZOR_EXPORT CDrawAtter
    : public CChunkOf<CDrawAtter, CAbstractChunk, DrawAtterData<ChunkForm>> {
 public:
  static constexpr std::uint32_t kChunkId = 3;
  static constexpr std::string_view kTag = "DrawAtter";
  using EditClass = CDrawAtterEdit;
  using ConverterClass = CDrawAtterTextConverter;
};

/// Filled from a chunk it always has an index set edit, an empty one if the chunk has none.
class QENZOR_EXPORT CDrawAtterEdit
    : public CEditOf<CDrawAtterEdit, CDrawAtter, CAbstractChunkEdit, DrawAtterData<EditForm>> {
 public:
  void ChunkDataToEditData(CAbstractChunk* chunk) override;
};

class QENZOR_EXPORT CDrawAtterTextConverter : public CConverterOf<CDrawAtter, CDrawAtterEdit> {};

extern template class CChunkOf<CDrawAtter, CAbstractChunk, DrawAtterData<ChunkForm>>;
extern template class CEditOf<CDrawAtterEdit, CDrawAtter, CAbstractChunkEdit,
                              DrawAtterData<EditForm>>;
extern template class CConverterOf<CDrawAtter, CDrawAtterEdit>;

}  // namespace qenzor
