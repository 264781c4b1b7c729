#include "qenzor/qen/mesh_segment_set.h"

#include "qenzor/core/chunk_set_impl.h"
#include "qenzor/edit/chunk_set_edit_impl.h"
#include "qenzor/text/chunk_set_text_converter_impl.h"

namespace qenzor {

template class CAbstractChunkSet<CMeshSegment*>;
template class CChunkSetArray<CMeshSegment*>;
template class CSetOf<CMeshSegmentSet, CChunkSetArray<CMeshSegment*>>;
template class CAbstractChunkSetEdit<CMeshSegmentEdit*>;
template class CChunkSetArrayEdit<CMeshSegment*, CMeshSegmentEdit*>;
template class CSetEditOf<CMeshSegmentSetEdit, CMeshSegmentSet,
                          CChunkSetArrayEdit<CMeshSegment*, CMeshSegmentEdit*>>;
template class CChunkSetArrayTextConverter<CMeshSegment*>;
template class CSetConverterOf<CChunkSetArrayTextConverter<CMeshSegment*>>;

}  // namespace qenzor
