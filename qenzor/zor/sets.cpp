// The array sets of the draw data, which add nothing to their bases.

#include "qenzor/core/chunk_set_impl.h"
#include "qenzor/edit/chunk_set_edit_impl.h"
#include "qenzor/zor/draw_info_set.h"
#include "qenzor/zor/mark_data_set.h"

namespace qenzor {

template class CChunkSetArray<CAbstractDrawInfo*>;
template class CSetOf<CDrawInfoSet, CChunkSetArray<CAbstractDrawInfo*>>;
template class CChunkSetArrayEdit<CAbstractDrawInfo*, CAbstractDrawInfoEdit*>;

template class CChunkSetArray<CMarkData*>;
template class CSetOf<CMarkDataSet, CChunkSetArray<CMarkData*>>;
template class CChunkSetArrayEdit<CMarkData*, CMarkDataEdit*>;

}  // namespace qenzor
