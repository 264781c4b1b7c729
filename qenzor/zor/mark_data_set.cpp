#include "qenzor/zor/mark_data_set.h"

#include "qenzor/core/chunk_set_impl.h"
#include "qenzor/edit/chunk_set_edit_impl.h"
#include "qenzor/text/chunk_set_text_converter_impl.h"

namespace qenzor {

template class CAbstractChunkSet<CMarkData*>;
template class CChunkSetArray<CMarkData*>;
template class CSetOf<CMarkDataSet, CChunkSetArray<CMarkData*>>;
template class CAbstractChunkSetEdit<CMarkDataEdit*>;
template class CChunkSetArrayEdit<CMarkData*, CMarkDataEdit*>;
template class CSetEditOf<CMarkDataSetEdit, CMarkDataSet,
                          CChunkSetArrayEdit<CMarkData*, CMarkDataEdit*>>;
template class CChunkSetArrayTextConverter<CMarkData*>;
template class CSetConverterOf<CChunkSetArrayTextConverter<CMarkData*>>;

}  // namespace qenzor
