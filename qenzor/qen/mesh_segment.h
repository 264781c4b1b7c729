#pragma once

#include "qenzor/core/chunk_of.h"
#include "qenzor/core/data_hooks.h"
#include "qenzor/edit/edit_of.h"
#include "qenzor/qen/layer_set.h"
#include "qenzor/text/converter_of.h"

namespace qenzor {

class CMeshSegmentEdit;
class CMeshSegmentTextConverter;

/// Data: number (u16), then at most one layer set as sub-chunk.
template <class Form>
struct QENZOR_EXPORT MeshSegmentFields {
  /// The segment's place in the mesh; kept, not interpreted here.
  std::uint16_t MeshSegmentNo = 0;
  /// May be absent.
  typename Form::template Slot<CLayerSet> LayerSet;

  static constexpr auto Fields() {
    return std::tuple{field("MeshSegmentNo", &MeshSegmentFields::MeshSegmentNo),
                      slot<CLayerSet>("LayerSet", &MeshSegmentFields::LayerSet)};
  }

  struct Hooks final : DataHooks<MeshSegmentFields> {
    /// A released edit object starts again from number 0.
    void ResetNumber(MeshSegmentFields& data) const override { data.MeshSegmentNo = 0; }
  };
};

/// One segment of the map's mesh: its number and its layers.
class QENZOR_EXPORT CMeshSegment
    : public CChunkOf<CMeshSegment, CAbstractChunk, MeshSegmentFields<ChunkForm>> {
 public:
  static constexpr std::uint32_t kChunkId = 30;
  static constexpr std::string_view kTag = "MeshSegment";
  using EditClass = CMeshSegmentEdit;
  using ConverterClass = CMeshSegmentTextConverter;
};

class QENZOR_EXPORT CMeshSegmentEdit : public CEditOf<CMeshSegment> {};

class QENZOR_EXPORT CMeshSegmentTextConverter : public CConverterOf<CMeshSegment> {};

extern template class CChunkOf<CMeshSegment, CAbstractChunk, MeshSegmentFields<ChunkForm>>;

}  // namespace qenzor
