#include "qenzor/zor/ras_ll_draw_info.h"

#include "qenzor/zor/draw_info_of_impl.h"

namespace qenzor {

template class CChunkOf<CRasLLDrawInfo, CAbstractDrawInfo,
                        DrawInfoData<RasDrawComData, RasLLDrawScData, ChunkForm>>;
template class CEditOf<CRasLLDrawInfoEdit, CRasLLDrawInfo, CAbstractDrawInfoEdit,
                       DrawInfoData<RasDrawComData, RasLLDrawScData, EditForm>>;
template class CConverterOf<CRasLLDrawInfo, CRasLLDrawInfoEdit>;
template class CDrawInfoConverterOf<CRasLLDrawInfo, CRasLLDrawInfoEdit>;

}  // namespace qenzor
