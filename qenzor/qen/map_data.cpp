#include "qenzor/qen/map_data.h"

#include "qenzor/core/chunk_of_impl.h"
#include "qenzor/edit/edit_of_impl.h"
#include "qenzor/text/converter_of_impl.h"

namespace qenzor {

template class CChunkOf<CQenMapData, CAbstractChunk, QenMapDataData<ChunkForm>>;
template class CEditOf<CQenMapDataEdit, CQenMapData, CAbstractChunkEdit, QenMapDataData<EditForm>>;
template class CConverterOf<CQenMapData, CQenMapDataEdit>;

}  // namespace qenzor
