#include "qenzor/qen/mesh_segment.h"

#include "qenzor/core/chunk_of_impl.h"
#include "qenzor/edit/edit_of_impl.h"
#include "qenzor/text/converter_of_impl.h"

namespace qenzor {

template class CChunkOf<CMeshSegment, CAbstractChunk, MeshSegmentData<ChunkForm>>;
template class CEditOf<CMeshSegmentEdit, CMeshSegment, CAbstractChunkEdit,
                       MeshSegmentData<EditForm>>;
template class CConverterOf<CMeshSegment, CMeshSegmentEdit>;

}  // namespace qenzor
