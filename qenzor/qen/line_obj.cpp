#include "qenzor/qen/line_obj.h"

#include "qenzor/core/chunk_of_impl.h"
#include "qenzor/edit/edit_of_impl.h"
#include "qenzor/text/converter_of_impl.h"

namespace qenzor {

template class CChunkOf<CLineObj, CAbstractObj,
                        Bounded<LineObjData<ChunkForm>, BoundsOf::kAllPoints>>;
template class CEditOf<CLineObjEdit, CLineObj, CAbstractObjEdit, LineObjData<EditForm>>;
template class CConverterOf<CLineObj, CLineObjEdit>;

}  // namespace qenzor
