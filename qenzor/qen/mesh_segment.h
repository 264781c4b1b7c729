#pragma once

#include "qenzor/core/chunk_of.h"
#include "qenzor/edit/edit_of.h"
#include "qenzor/qen/layer_set.h"
#include "qenzor/text/converter_of.h"

namespace qenzor {

class CMeshSegmentEdit;
class CMeshSegmentTextConverter;

/// Data: number (u16), then at most one layer set as sub-chunk.
template <class Form>
struct QENZOR_EXPORT MeshSegmentData {
  std::uint16_t MeshSegmentNo = 0;
  typename Form::template Slot<CLayerSet> LayerSet;

  static constexpr auto Fields() {
    return std::tuple{field("MeshSegmentNo", &MeshSegmentData::MeshSegmentNo),
                      slot<CLayerSet>("LayerSet", &MeshSegmentData::LayerSet)};
  }
  /// A released edit object starts again from number 0.
  void ResetNumber() requires(!Form::kIsChunk) { MeshSegmentNo = 0; }
};

/// One segment of the map's mesh: its number and its layers.
class QENZOR_EXPORT CMeshSegment
    : public CChunkOf<CMeshSegment, CAbstractChunk, MeshSegmentData<ChunkForm>> {
 public:
  static constexpr std::uint32_t kChunkId = 30;
  static constexpr std::string_view kTag = "MeshSegment";
  using EditClass = CMeshSegmentEdit;
  using ConverterClass = CMeshSegmentTextConverter;
};

class QENZOR_EXPORT CMeshSegmentEdit
    : public CEditOf<CMeshSegmentEdit, CMeshSegment, CAbstractChunkEdit,
                     MeshSegmentData<EditForm>> {};

class QENZOR_EXPORT CMeshSegmentTextConverter
    : public CConverterOf<CMeshSegment, CMeshSegmentEdit> {};

extern template class CChunkOf<CMeshSegment, CAbstractChunk, MeshSegmentData<ChunkForm>>;
extern template class CEditOf<CMeshSegmentEdit, CMeshSegment, CAbstractChunkEdit,
                              MeshSegmentData<EditForm>>;
extern template class CConverterOf<CMeshSegment, CMeshSegmentEdit>;

}  // namespace qenzor
