#include "qenzor/qen/ras_ll_obj.h"

#include "qenzor/core/chunk_of_impl.h"
#include "qenzor/edit/edit_of_impl.h"
#include "qenzor/text/converter_of_impl.h"

namespace qenzor {

template class CChunkOf<CRasLLObj, CAbstractObj, RasLLObjData<ChunkForm>>;
template class CEditOf<CRasLLObjEdit, CRasLLObj, CAbstractObjEdit, RasLLObjData<EditForm>>;
template class CConverterOf<CRasLLObj, CRasLLObjEdit>;

}  // namespace qenzor
