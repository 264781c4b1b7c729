#include "qenzor/qen/z_id_obj.h"

#include "qenzor/core/chunk_of_impl.h"
#include "qenzor/edit/edit_of_impl.h"
#include "qenzor/text/converter_of_impl.h"

namespace qenzor {

template class CChunkOf<CZIdObj, CAbstractChunk, ZIdObjData<ChunkForm>>;
template class CEditOf<CZIdObjEdit, CZIdObj, CAbstractChunkEdit, ZIdObjData<EditForm>>;
template class CConverterOf<CZIdObj, CZIdObjEdit>;

}  // namespace qenzor
