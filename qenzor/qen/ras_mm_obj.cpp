#include "qenzor/qen/ras_mm_obj.h"

#include "qenzor/core/chunk_of_impl.h"
#include "qenzor/edit/edit_of_impl.h"
#include "qenzor/text/converter_of_impl.h"

namespace qenzor {

template class CChunkOf<CRasMMObj, CAbstractObj, RasMMObjData<ChunkForm>>;
template class CEditOf<CRasMMObjEdit, CRasMMObj, CAbstractObjEdit, RasMMObjData<EditForm>>;
template class CConverterOf<CRasMMObj, CRasMMObjEdit>;

}  // namespace qenzor
