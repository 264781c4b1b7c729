#pragma once

// The map project: its document and each of its data classes. To add a class, include its header
// and put its name into the list.

#include "qenzor/core/class_list.h"
#include "qenzor/qen/added_obj_info_set.h"
#include "qenzor/qen/cmb_lbl_obj.h"
#include "qenzor/qen/layer_data.h"
#include "qenzor/qen/layer_set.h"
#include "qenzor/qen/line_obj.h"
#include "qenzor/qen/map_data.h"
#include "qenzor/qen/mesh_segment.h"
#include "qenzor/qen/mesh_segment_set.h"
#include "qenzor/qen/obj_set.h"
#include "qenzor/qen/poly_obj.h"
#include "qenzor/qen/qen.h"
#include "qenzor/qen/ras_ll_obj.h"
#include "qenzor/qen/ras_mm_obj.h"
#include "qenzor/qen/url_info.h"
#include "qenzor/qen/walk.h"
#include "qenzor/qen/z_id_obj.h"
#include "qenzor/qen/z_id_obj_set.h"

namespace qenzor {

/// In the order in which classes are matched.
using QenClasses = ClassList<CUrlInfo, CAddedObjInfoSet, CLineObj, CPolyObj, CCmbLblObj, CRasLLObj,
                             CRasMMObj, CObjSet, CZIdObj, CZIdObjSet, CLayerData, CLayerSet,
                             CQenMapData, CMeshSegmentSet, CMeshSegment>;

}  // namespace qenzor
