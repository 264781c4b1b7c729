#include "qenzor/qen/cmb_lbl_obj.h"

#include "qenzor/core/chunk_of_impl.h"
#include "qenzor/edit/edit_of_impl.h"
#include "qenzor/text/converter_of_impl.h"

namespace qenzor {

template class CChunkOf<CCmbLblObj, CAbstractObj, CmbLblObjFields<ChunkForm>>;
template class CEditOf<CCmbLblObj>;
template class CConverterOf<CCmbLblObj>;

}  // namespace qenzor
