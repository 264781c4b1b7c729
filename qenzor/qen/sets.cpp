// The sets of the map project, which add nothing to their bases.

#include "qenzor/core/chunk_set_impl.h"
#include "qenzor/edit/chunk_set_edit_impl.h"
#include "qenzor/qen/added_obj_info_set.h"
#include "qenzor/qen/layer_set.h"
#include "qenzor/qen/mesh_segment_set.h"
#include "qenzor/qen/obj_set.h"
#include "qenzor/qen/z_id_obj_set.h"

namespace qenzor {

template class CChunkSetArray<CAbstractAddedObjInfo*>;
template class CSetOf<CAddedObjInfoSet, CChunkSetArray<CAbstractAddedObjInfo*>>;
template class CChunkSetArrayEdit<CAbstractAddedObjInfo*, CAbstractAddedObjInfoEdit*>;

template class CChunkSetArray<CLayerData*>;
template class CSetOf<CLayerSet, CChunkSetArray<CLayerData*>>;
template class CChunkSetArrayEdit<CLayerData*, CLayerDataEdit*>;

template class CChunkSetArray<CMeshSegment*>;
template class CSetOf<CMeshSegmentSet, CChunkSetArray<CMeshSegment*>>;
template class CChunkSetArrayEdit<CMeshSegment*, CMeshSegmentEdit*>;

template class CChunkSetArray<CAbstractObj*>;
template class CSetOf<CObjSet, CChunkSetArray<CAbstractObj*>>;
template class CChunkSetArrayEdit<CAbstractObj*, CAbstractObjEdit*>;

template class CChunkSetArray<CZIdObj*>;
template class CSetOf<CZIdObjSet, CChunkSetArray<CZIdObj*>>;
template class CChunkSetArrayEdit<CZIdObj*, CZIdObjEdit*>;

}  // namespace qenzor
