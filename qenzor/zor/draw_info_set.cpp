#include "qenzor/zor/draw_info_set.h"

#include "qenzor/core/chunk_set_impl.h"
#include "qenzor/edit/chunk_set_edit_impl.h"
#include "qenzor/text/chunk_set_text_converter_impl.h"

namespace qenzor {

template class CAbstractChunkSet<CAbstractDrawInfo*>;
template class CChunkSetArray<CAbstractDrawInfo*>;
template class CSetOf<CDrawInfoSet, CChunkSetArray<CAbstractDrawInfo*>>;
template class CAbstractChunkSetEdit<CAbstractDrawInfoEdit*>;
template class CChunkSetArrayEdit<CAbstractDrawInfo*, CAbstractDrawInfoEdit*>;
template class CSetEditOf<CDrawInfoSetEdit, CDrawInfoSet,
                          CChunkSetArrayEdit<CAbstractDrawInfo*, CAbstractDrawInfoEdit*>>;
template class CChunkSetArrayTextConverter<CAbstractDrawInfo*>;
template class CSetConverterOf<CChunkSetArrayTextConverter<CAbstractDrawInfo*>>;

}  // namespace qenzor
