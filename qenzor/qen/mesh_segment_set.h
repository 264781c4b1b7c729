#pragma once

#include "qenzor/core/chunk_set.h"
#include "qenzor/edit/chunk_set_edit.h"
#include "qenzor/qen/mesh_segment.h"
#include "qenzor/text/chunk_set_text_converter.h"

namespace qenzor {

class CMeshSegmentSetEdit;
class CMeshSegmentSetTextConverter;

/// The mesh segments of a map.
class QENZOR_EXPORT CMeshSegmentSet
    : public CSetOf<CMeshSegmentSet, CChunkSetArray<CMeshSegment*>> {
 public:
  static constexpr std::uint32_t kChunkId = 29;
  static constexpr std::string_view kTag = "MeshSegmentSet";
  using EditClass = CMeshSegmentSetEdit;
  using ConverterClass = CMeshSegmentSetTextConverter;
};

class QENZOR_EXPORT CMeshSegmentSetEdit
    : public CSetEditOf<CMeshSegmentSetEdit, CMeshSegmentSet,
                        CChunkSetArrayEdit<CMeshSegment*, CMeshSegmentEdit*>> {};

class QENZOR_EXPORT CMeshSegmentSetTextConverter
    : public CSetConverterOf<CChunkSetArrayTextConverter<CMeshSegment*>> {};

extern template class CAbstractChunkSet<CMeshSegment*>;
extern template class CChunkSetArray<CMeshSegment*>;
extern template class CSetOf<CMeshSegmentSet, CChunkSetArray<CMeshSegment*>>;
extern template class CAbstractChunkSetEdit<CMeshSegmentEdit*>;
extern template class CChunkSetArrayEdit<CMeshSegment*, CMeshSegmentEdit*>;
extern template class CSetEditOf<CMeshSegmentSetEdit, CMeshSegmentSet,
                                 CChunkSetArrayEdit<CMeshSegment*, CMeshSegmentEdit*>>;
extern template class CChunkSetArrayTextConverter<CMeshSegment*>;
extern template class CSetConverterOf<CChunkSetArrayTextConverter<CMeshSegment*>>;

}  // namespace qenzor
