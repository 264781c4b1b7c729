#include "qenzor/qen/z_id_obj_set.h"

#include "qenzor/core/chunk_set_impl.h"
#include "qenzor/edit/chunk_set_edit_impl.h"
#include "qenzor/text/chunk_set_text_converter_impl.h"

namespace qenzor {

template class CAbstractChunkSet<CZIdObj*>;
template class CChunkSetArray<CZIdObj*>;
template class CSetOf<CZIdObjSet, CChunkSetArray<CZIdObj*>>;
template class CAbstractChunkSetEdit<CZIdObjEdit*>;
template class CChunkSetArrayEdit<CZIdObj*, CZIdObjEdit*>;
template class CSetEditOf<CZIdObjSetEdit, CZIdObjSet, CChunkSetArrayEdit<CZIdObj*, CZIdObjEdit*>>;
template class CChunkSetArrayTextConverter<CZIdObj*>;
template class CSetConverterOf<CChunkSetArrayTextConverter<CZIdObj*>>;

}  // namespace qenzor
