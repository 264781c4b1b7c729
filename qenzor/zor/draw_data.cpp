#include "qenzor/zor/draw_data.h"

#include "qenzor/core/chunk_of_impl.h"
#include "qenzor/edit/edit_of_impl.h"
#include "qenzor/text/converter_of_impl.h"

namespace qenzor {

template class CChunkOf<CZorDrawData, CAbstractChunk, ZorDrawDataData<ChunkForm>>;
template class CEditOf<CZorDrawDataEdit, CZorDrawData, CAbstractChunkEdit,
                       ZorDrawDataData<EditForm>>;
template class CConverterOf<CZorDrawData, CZorDrawDataEdit>;

}  // namespace qenzor
