#include "qenzor/qen/layer_set.h"

#include "qenzor/core/chunk_set_impl.h"
#include "qenzor/edit/chunk_set_edit_impl.h"
#include "qenzor/text/chunk_set_text_converter_impl.h"

namespace qenzor {

template class CAbstractChunkSet<CLayerData*>;
template class CChunkSetArray<CLayerData*>;
template class CSetOf<CLayerSet, CChunkSetArray<CLayerData*>>;
template class CAbstractChunkSetEdit<CLayerDataEdit*>;
template class CChunkSetArrayEdit<CLayerData*, CLayerDataEdit*>;
template class CSetEditOf<CLayerSetEdit, CLayerSet,
                          CChunkSetArrayEdit<CLayerData*, CLayerDataEdit*>>;
template class CChunkSetArrayTextConverter<CLayerData*>;
template class CSetConverterOf<CChunkSetArrayTextConverter<CLayerData*>>;

}  // namespace qenzor
