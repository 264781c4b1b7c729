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
struct QENZOR_EXPORT DrawAtterFields {
  /// The z-id of the objects that it is for.
  std::uint64_t ZId = 0;
  /// Which draw infos draw them; may be absent.
  typename Form::template Slot<CDrawInfoIdxSet> DrawInfoIdxSet;

  /// What a keyed set files it under.
  std::uint64_t GetKey() const noexcept { return ZId; }

  static constexpr auto Fields() {
    return std::tuple{field("ZId", &DrawAtterFields::ZId),
                      slot<CDrawInfoIdxSet>("DrawInfoIdxSet", &DrawAtterFields::DrawInfoIdxSet)};
  }
};

/// Ties a z-id to the draw infos that draw its objects.
class QENZOR_EXPORT CDrawAtter
    : public CChunkOf<CDrawAtter, CAbstractChunk, DrawAtterFields<ChunkForm>> {
 public:
  static constexpr std::uint32_t kChunkId = 3;
  static constexpr std::string_view kTag = "DrawAtter";
  using EditClass = CDrawAtterEdit;
  using ConverterClass = CDrawAtterTextConverter;
};

/// Filled from a chunk it always has an index set edit, an empty one if the chunk has none.
class QENZOR_EXPORT CDrawAtterEdit : public CEditOf<CDrawAtter> {
 public:
  void ChunkDataToEditData(CAbstractChunk* chunk) override;
};

class QENZOR_EXPORT CDrawAtterTextConverter : public CConverterOf<CDrawAtter> {};

extern template class CChunkOf<CDrawAtter, CAbstractChunk, DrawAtterFields<ChunkForm>>;

}  // namespace qenzor
