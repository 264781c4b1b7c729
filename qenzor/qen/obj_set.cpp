#include "qenzor/qen/obj_set.h"

#include "qenzor/core/chunk_set_impl.h"
#include "qenzor/edit/chunk_set_edit_impl.h"
#include "qenzor/text/chunk_set_text_converter_impl.h"

namespace qenzor {

template class CAbstractChunkSet<CAbstractObj*>;
template class CChunkSetArray<CAbstractObj*>;
template class CSetOf<CObjSet, CChunkSetArray<CAbstractObj*>>;
template class CAbstractChunkSetEdit<CAbstractObjEdit*>;
template class CChunkSetArrayEdit<CAbstractObj*, CAbstractObjEdit*>;
template class CSetEditOf<CObjSetEdit, CObjSet,
                          CChunkSetArrayEdit<CAbstractObj*, CAbstractObjEdit*>>;
template class CChunkSetArrayTextConverter<CAbstractObj*>;
template class CSetConverterOf<CChunkSetArrayTextConverter<CAbstractObj*>>;

}  // namespace qenzor
