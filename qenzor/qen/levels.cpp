// What stands between a map and its objects: a number or none, and one set.

#include "qenzor/core/chunk_of_impl.h"
#include "qenzor/edit/edit_of_impl.h"
#include "qenzor/qen/layer_data.h"
#include "qenzor/qen/map_data.h"
#include "qenzor/qen/mesh_segment.h"
#include "qenzor/qen/z_id_obj.h"
#include "qenzor/text/converter_of_impl.h"

namespace qenzor {

template class CChunkOf<CLayerData, CAbstractChunk, LayerDataFields<ChunkForm>>;
template class CEditOf<CLayerData>;
template class CConverterOf<CLayerData>;

template class CChunkOf<CQenMapData, CAbstractChunk, QenMapDataFields<ChunkForm>>;
template class CEditOf<CQenMapData>;
template class CConverterOf<CQenMapData>;

template class CChunkOf<CMeshSegment, CAbstractChunk, MeshSegmentFields<ChunkForm>>;
template class CEditOf<CMeshSegment>;
template class CConverterOf<CMeshSegment>;

template class CChunkOf<CZIdObj, CAbstractChunk, ZIdObjFields<ChunkForm>>;
template class CEditOf<CZIdObj>;
template class CConverterOf<CZIdObj>;

}  // namespace qenzor
