// The two kinds of raster placement.

#include "qenzor/core/chunk_of_impl.h"
#include "qenzor/edit/edit_of_impl.h"
#include "qenzor/qen/ras_ll_obj.h"
#include "qenzor/qen/ras_mm_obj.h"
#include "qenzor/text/converter_of_impl.h"

namespace qenzor {

template class CChunkOf<CRasLLObj, CAbstractObj, RasLLObjFields<ChunkForm>>;
template class CEditOf<CRasLLObj>;
template class CConverterOf<CRasLLObj>;

template class CChunkOf<CRasMMObj, CAbstractObj, RasMMObjFields<ChunkForm>>;
template class CEditOf<CRasMMObj>;
template class CConverterOf<CRasMMObj>;

}  // namespace qenzor
