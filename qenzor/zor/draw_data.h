#pragma once

#include "qenzor/core/chunk_of.h"
#include "qenzor/edit/edit_of.h"
#include "qenzor/text/converter_of.h"
#include "qenzor/zor/draw_atter_set.h"
#include "qenzor/zor/draw_info_set.h"
#include "qenzor/zor/mark_data_set.h"

namespace qenzor {

class CZorDrawDataEdit;
class CZorDrawDataTextConverter;

/// No fields of its own; at most one set of each kind as sub-chunks, written in this order. In the
/// edit form a set may be shared with the edit object that it was taken over from.
template <class Form>
struct QENZOR_EXPORT ZorDrawDataFields {
  // Each may be absent.
  typename Form::template SharedSlot<CDrawAtterSet> DrawAtterSet;
  typename Form::template SharedSlot<CDrawInfoSet> DrawInfoSet;
  typename Form::template SharedSlot<CMarkDataSet> MarkDataSet;

  static constexpr auto Fields() {
    using D = ZorDrawDataFields;
    return std::tuple{slot<CDrawAtterSet>("DrawAtterSet", &D::DrawAtterSet),
                      slot<CDrawInfoSet>("DrawInfoSet", &D::DrawInfoSet),
                      slot<CMarkDataSet>("MarkDataSet", &D::MarkDataSet)};
  }
};

/// The root chunk of a draw-data document.
class QENZOR_EXPORT CZorDrawData
    : public CChunkOf<CZorDrawData, CAbstractChunk, ZorDrawDataFields<ChunkForm>> {
 public:
  static constexpr std::uint32_t kChunkId = 26;
  static constexpr std::string_view kTag = "ZorDrawData";
  using EditClass = CZorDrawDataEdit;
  using ConverterClass = CZorDrawDataTextConverter;
};

class QENZOR_EXPORT CZorDrawDataEdit : public CEditOf<CZorDrawData> {};

class QENZOR_EXPORT CZorDrawDataTextConverter : public CConverterOf<CZorDrawData> {};

extern template class CChunkOf<CZorDrawData, CAbstractChunk, ZorDrawDataFields<ChunkForm>>;

}  // namespace qenzor
