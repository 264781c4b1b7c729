#include "qenzor/zor/mark_data.h"

#include "qenzor/core/chunk_of_impl.h"
#include "qenzor/edit/edit_of_impl.h"
#include "qenzor/text/converter_of_impl.h"

namespace qenzor {

template class CChunkOf<CMarkData, CAbstractChunk, MarkDataData<ChunkForm>>;
template class CEditOf<CMarkDataEdit, CMarkData, CAbstractChunkEdit, MarkDataData<EditForm>>;
template class CConverterOf<CMarkData, CMarkDataEdit>;

}  // namespace qenzor
