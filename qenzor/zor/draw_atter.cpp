#include "qenzor/zor/draw_atter.h"

#include "qenzor/core/chunk_of_impl.h"
#include "qenzor/edit/edit_of_impl.h"
#include "qenzor/text/converter_of_impl.h"

namespace qenzor {

template class CChunkOf<CDrawInfoIdxSet, CAbstractChunk, DrawInfoIdxSetFields<ChunkForm>>;
template class CEditOf<CDrawInfoIdxSet>;
template class CConverterOf<CDrawInfoIdxSet>;
template class CChunkOf<CDrawAtter, CAbstractChunk, DrawAtterFields<ChunkForm>>;
template class CEditOf<CDrawAtter>;
template class CConverterOf<CDrawAtter>;

void CDrawAtterEdit::ChunkDataToEditData(CAbstractChunk* chunk) {
  CEditOf::ChunkDataToEditData(chunk);
  if (DrawInfoIdxSet == nullptr && class_cast<CDrawAtter>(chunk) != nullptr)
    DrawInfoIdxSet = std::make_unique<CDrawInfoIdxSetEdit>();
}

}  // namespace qenzor
