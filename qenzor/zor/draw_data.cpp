#include "qenzor/zor/draw_data.h"

#include "qenzor/core/chunk_of_impl.h"
#include "qenzor/edit/edit_of_impl.h"
#include "qenzor/text/converter_of_impl.h"

namespace qenzor {

template class CChunkOf<CZorDrawData, CAbstractChunk, ZorDrawDataFields<ChunkForm>>;
template class CEditOf<CZorDrawData>;
template class CConverterOf<CZorDrawData>;

}  // namespace qenzor
