#include "qenzor/zor/ras_mm_draw_info.h"

#include "qenzor/zor/draw_info_of_impl.h"

namespace qenzor {

template class CChunkOf<CRasMMDrawInfo, CAbstractDrawInfo,
                        DrawInfoData<RasDrawComData, RasMMDrawScData, ChunkForm>>;
template class CEditOf<CRasMMDrawInfoEdit, CRasMMDrawInfo, CAbstractDrawInfoEdit,
                       DrawInfoData<RasDrawComData, RasMMDrawScData, EditForm>>;
template class CConverterOf<CRasMMDrawInfo, CRasMMDrawInfoEdit>;
template class CDrawInfoConverterOf<CRasMMDrawInfo, CRasMMDrawInfoEdit>;

}  // namespace qenzor
