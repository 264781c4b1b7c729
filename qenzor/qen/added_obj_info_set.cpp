#include "qenzor/qen/added_obj_info_set.h"

#include "qenzor/core/chunk_set_impl.h"
#include "qenzor/edit/chunk_set_edit_impl.h"
#include "qenzor/text/chunk_set_text_converter_impl.h"

namespace qenzor {

template class CAbstractChunkSet<CAbstractAddedObjInfo*>;
template class CChunkSetArray<CAbstractAddedObjInfo*>;
template class CSetOf<CAddedObjInfoSet, CChunkSetArray<CAbstractAddedObjInfo*>>;
template class CAbstractChunkSetEdit<CAbstractAddedObjInfoEdit*>;
template class CChunkSetArrayEdit<CAbstractAddedObjInfo*, CAbstractAddedObjInfoEdit*>;
template class CSetEditOf<CAddedObjInfoSetEdit, CAddedObjInfoSet,
                          CChunkSetArrayEdit<CAbstractAddedObjInfo*, CAbstractAddedObjInfoEdit*>>;
template class CChunkSetArrayTextConverter<CAbstractAddedObjInfo*>;
template class CSetConverterOf<CChunkSetArrayTextConverter<CAbstractAddedObjInfo*>>;

}  // namespace qenzor
