#include "qenzor/zor/draw_atter.h"

#include "qenzor/core/chunk_of_impl.h"
#include "qenzor/edit/edit_of_impl.h"
#include "qenzor/text/converter_of_impl.h"

namespace qenzor {

template class CChunkOf<CDrawAtter, CAbstractChunk, DrawAtterData<ChunkForm>>;
template class CEditOf<CDrawAtterEdit, CDrawAtter, CAbstractChunkEdit, DrawAtterData<EditForm>>;
template class CConverterOf<CDrawAtter, CDrawAtterEdit>;

void CDrawAtterEdit::ChunkDataToEditData(CAbstractChunk* chunk) {
  CEditOf::ChunkDataToEditData(chunk);
  if (DrawInfoIdxSet == nullptr && class_cast<CDrawAtter>(chunk) != nullptr)
    DrawInfoIdxSet = std::make_unique<CDrawInfoIdxSetEdit>();
}

}  // namespace qenzor
