#pragma once

#include "qenzor/core/chunk_of.h"
#include "qenzor/edit/edit_of.h"
#include "qenzor/qen/mesh_segment_set.h"
#include "qenzor/text/converter_of.h"

namespace qenzor {

class CQenMapDataEdit;
class CQenMapDataTextConverter;

/// No fields of its own; at most one mesh segment set as sub-chunk.
template <class Form>
struct QENZOR_EXPORT QenMapDataFields {
  /// May be absent.
  typename Form::template Slot<CMeshSegmentSet> MeshSegmentSet;

  static constexpr auto Fields() {
    return std::tuple{slot<CMeshSegmentSet>("MeshSegmentSet", &QenMapDataFields::MeshSegmentSet)};
  }
};

/// The root chunk of a map-project document.
class QENZOR_EXPORT CQenMapData
    : public CChunkOf<CQenMapData, CAbstractChunk, QenMapDataFields<ChunkForm>> {
 public:
  static constexpr std::uint32_t kChunkId = 25;
  static constexpr std::string_view kTag = "QenMapData";
  using EditClass = CQenMapDataEdit;
  using ConverterClass = CQenMapDataTextConverter;
};

class QENZOR_EXPORT CQenMapDataEdit : public CEditOf<CQenMapData> {};

class QENZOR_EXPORT CQenMapDataTextConverter : public CConverterOf<CQenMapData> {};

extern template class CChunkOf<CQenMapData, CAbstractChunk, QenMapDataFields<ChunkForm>>;

}  // namespace qenzor
