#include "qenzor/qen/poly_obj.h"

#include "qenzor/core/chunk_of_impl.h"
#include "qenzor/edit/edit_of_impl.h"
#include "qenzor/text/converter_of_impl.h"

namespace qenzor {

template class CChunkOf<CPolyObj, CAbstractObj,
                        CBounded<PolyObjFields<ChunkForm>, BoundsOf::kRing>>;
template class CEditOf<CPolyObj>;
template class CConverterOf<CPolyObj>;

}  // namespace qenzor
