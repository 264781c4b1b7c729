#pragma once

// The draw data: its document and each of its data classes. To add a class, include its header and
// put its name into the list.

#include "qenzor/core/class_list.h"
#include "qenzor/zor/cmb_lbl_draw_info.h"
#include "qenzor/zor/draw_atter.h"
#include "qenzor/zor/draw_atter_set.h"
#include "qenzor/zor/draw_data.h"
#include "qenzor/zor/draw_info_idx_set.h"
#include "qenzor/zor/draw_info_set.h"
#include "qenzor/zor/line_draw_info.h"
#include "qenzor/zor/mark_data.h"
#include "qenzor/zor/mark_data_set.h"
#include "qenzor/zor/poly_bmp_brush_draw_info.h"
#include "qenzor/zor/poly_shadow_draw_info.h"
#include "qenzor/zor/poly_solid_brush_draw_info.h"
#include "qenzor/zor/ras_ll_draw_info.h"
#include "qenzor/zor/ras_mm_draw_info.h"
#include "qenzor/zor/zor.h"

namespace qenzor {

/// In the order in which classes are matched.
using ZorClasses =
    ClassList<CMarkData, CMarkDataSet, CRasMMDrawInfo, CRasLLDrawInfo, CCmbLblDrawInfo,
              CPolyShadowDrawInfo, CPolyBmpBrushDrawInfo, CPolySolidBrushDrawInfo, CLineDrawInfo,
              CDrawInfoSet, CDrawInfoIdxSet, CDrawAtter, CDrawAtterSet, CZorDrawData>;

}  // namespace qenzor
