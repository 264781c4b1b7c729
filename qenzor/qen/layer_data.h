#pragma once

#include "qenzor/core/chunk_of.h"
#include "qenzor/core/data_hooks.h"
#include "qenzor/edit/edit_of.h"
#include "qenzor/qen/z_id_obj_set.h"
#include "qenzor/text/converter_of.h"

namespace qenzor {

class CLayerDataEdit;
class CLayerDataTextConverter;

/// Data: number (u16), then at most one z-id object set as sub-chunk.
template <class Form>
struct QENZOR_EXPORT LayerDataFields {
  /// Kept, not interpreted.
  std::uint16_t LayerNo = 0;
  /// May be absent.
  typename Form::template Slot<CZIdObjSet> ZIdObjSet;

  static constexpr auto Fields() {
    return std::tuple{field("LayerNo", &LayerDataFields::LayerNo),
                      slot<CZIdObjSet>("ZIdObjSet", &LayerDataFields::ZIdObjSet)};
  }

  struct Hooks final : DataHooks<LayerDataFields> {
    /// A released edit object starts again from number 0.
    void ResetNumber(LayerDataFields& data) const override { data.LayerNo = 0; }
  };
};

/// One layer of a mesh segment: its number and its z-id objects.
class QENZOR_EXPORT CLayerData
    : public CChunkOf<CLayerData, CAbstractChunk, LayerDataFields<ChunkForm>> {
 public:
  static constexpr std::uint32_t kChunkId = 7;
  static constexpr std::string_view kTag = "LayerData";
  using EditClass = CLayerDataEdit;
  using ConverterClass = CLayerDataTextConverter;
};

class QENZOR_EXPORT CLayerDataEdit : public CEditOf<CLayerData> {};

class QENZOR_EXPORT CLayerDataTextConverter : public CConverterOf<CLayerData> {};

extern template class CChunkOf<CLayerData, CAbstractChunk, LayerDataFields<ChunkForm>>;

}  // namespace qenzor
