#include "qenzor/qen/poly_obj.h"

#include "qenzor/core/chunk_of_impl.h"
#include "qenzor/edit/edit_of_impl.h"
#include "qenzor/text/converter_of_impl.h"

namespace qenzor {

template class CChunkOf<CPolyObj, CAbstractObj, Bounded<PolyObjData<ChunkForm>, BoundsOf::kRing>>;
template class CEditOf<CPolyObjEdit, CPolyObj, CAbstractObjEdit, PolyObjData<EditForm>>;
template class CConverterOf<CPolyObj, CPolyObjEdit>;

}  // namespace qenzor
