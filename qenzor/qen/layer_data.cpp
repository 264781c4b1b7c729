#include "qenzor/qen/layer_data.h"

#include "qenzor/core/chunk_of_impl.h"
#include "qenzor/edit/edit_of_impl.h"
#include "qenzor/text/converter_of_impl.h"

namespace qenzor {

template class CChunkOf<CLayerData, CAbstractChunk, LayerDataData<ChunkForm>>;
template class CEditOf<CLayerDataEdit, CLayerData, CAbstractChunkEdit, LayerDataData<EditForm>>;
template class CConverterOf<CLayerData, CLayerDataEdit>;

}  // namespace qenzor
