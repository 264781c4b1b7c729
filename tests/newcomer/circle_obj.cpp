#include "qenzor/qen/circle_obj.h"

#include "qenzor/core/chunk_of_impl.h"
#include "qenzor/edit/edit_of_impl.h"
#include "qenzor/text/converter_of_impl.h"

namespace qenzor {

template class CChunkOf<CCircleObj, CAbstractObj, CircleObjFields<ChunkForm>>;
template class CEditOf<CCircleObj>;
template class CConverterOf<CCircleObj>;

}  // namespace qenzor
