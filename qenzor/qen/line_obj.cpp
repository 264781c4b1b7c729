#include "qenzor/qen/line_obj.h"

#include "qenzor/core/chunk_of_impl.h"
#include "qenzor/edit/edit_of_impl.h"
#include "qenzor/text/converter_of_impl.h"

namespace qenzor {

template class CChunkOf<CLineObj, CAbstractObj,
                        CBounded<LineObjFields<ChunkForm>, BoundsOf::kAllPoints>>;
template class CEditOf<CLineObj>;
template class CConverterOf<CLineObj>;

}  // namespace qenzor
