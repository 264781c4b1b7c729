#pragma once

#include <gtest/gtest.h>

#include <string>

#include "qenzor/qen/cmb_lbl_obj.h"
#include "qenzor/qen/line_obj.h"
#include "qenzor/qen/map_data.h"
#include "qenzor/qen/poly_obj.h"
#include "qenzor/qen/ras_ll_obj.h"
#include "qenzor/qen/ras_mm_obj.h"
#include "qenzor/zor/cmb_lbl_draw_info.h"
#include "qenzor/zor/draw_data.h"
#include "qenzor/zor/line_draw_info.h"
#include "qenzor/zor/poly_bmp_brush_draw_info.h"
#include "qenzor/zor/poly_shadow_draw_info.h"
#include "qenzor/zor/poly_solid_brush_draw_info.h"
#include "qenzor/zor/ras_ll_draw_info.h"
#include "qenzor/zor/ras_mm_draw_info.h"

namespace qenzor::testing {

/// Every chunk class that has the other two forms, for typed tests.
using EveryClass =
    ::testing::Types<CUrlInfo, CAddedObjInfoSet, CLineObj, CPolyObj, CCmbLblObj, CRasLLObj,
                     CRasMMObj, CObjSet, CZIdObj, CZIdObjSet, CLayerData, CLayerSet, CQenMapData,
                     CMarkData, CMarkDataSet, CRasMMDrawInfo, CRasLLDrawInfo, CCmbLblDrawInfo,
                     CPolyShadowDrawInfo, CPolyBmpBrushDrawInfo, CPolySolidBrushDrawInfo,
                     CLineDrawInfo, CDrawInfoSet, CDrawInfoIdxSet, CDrawAtter, CDrawAtterSet,
                     CZorDrawData, CMeshSegmentSet, CMeshSegment>;

/// Names typed tests after their class.
struct ClassNames {
  template <class Chunk>
  static std::string GetName(int /*index*/) {
    return std::string(Chunk::kTag);
  }
};

}  // namespace qenzor::testing
