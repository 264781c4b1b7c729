#pragma once

#include "qenzor/core/chunk_set.h"
#include "qenzor/edit/chunk_set_edit.h"
#include "qenzor/qen/mesh_segment.h"
#include "qenzor/text/chunk_set_text_converter.h"

namespace qenzor {

class CMeshSegmentSetEdit;
class CMeshSegmentSetTextConverter;

/// The mesh segments of a map.
class QENZOR_EXPORT CMeshSegmentSet : public CArraySetOf<CMeshSegmentSet, CMeshSegment> {
 public:
  static constexpr std::uint32_t kChunkId = 29;
  static constexpr std::string_view kTag = "MeshSegmentSet";
  using EditClass = CMeshSegmentSetEdit;
  using ConverterClass = CMeshSegmentSetTextConverter;
};

class QENZOR_EXPORT CMeshSegmentSetEdit : public CSetEditOf<CMeshSegmentSet> {};

class QENZOR_EXPORT CMeshSegmentSetTextConverter : public CSetConverterOf<CMeshSegmentSet> {};

extern template class CChunkSetArray<CMeshSegment*>;
extern template class CSetOf<CMeshSegmentSet, CChunkSetArray<CMeshSegment*>>;

}  // namespace qenzor
