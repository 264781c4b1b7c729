#include "qenzor/zor/draw_info_idx_set.h"

#include "qenzor/core/chunk_of_impl.h"
#include "qenzor/edit/edit_of_impl.h"
#include "qenzor/text/converter_of_impl.h"

namespace qenzor {

template class CChunkOf<CDrawInfoIdxSet, CAbstractChunk, DrawInfoIdxSetData<ChunkForm>>;
template class CEditOf<CDrawInfoIdxSetEdit, CDrawInfoIdxSet, CAbstractChunkEdit,
                       DrawInfoIdxSetData<EditForm>>;
template class CConverterOf<CDrawInfoIdxSet, CDrawInfoIdxSetEdit>;

}  // namespace qenzor
