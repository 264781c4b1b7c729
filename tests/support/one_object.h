#pragma once

#include <memory>
#include <utility>

#include "qenzor/qen/all.h"
#include "qenzor/zor/all.h"

namespace qenzor::testing {

/// A map with one object, which stands at kObjectPlace.
template <class ObjectEdit>
void PutIntoMap(CQenEdit& map, std::unique_ptr<ObjectEdit> object) {
  map.MapData = std::make_unique<CQenMapDataEdit>();
  map.MapData->MeshSegmentSet = std::make_unique<CMeshSegmentSetEdit>();
  auto* segment = new CMeshSegmentEdit;
  map.MapData->MeshSegmentSet->AddElem(0, segment);
  segment->LayerSet = std::make_unique<CLayerSetEdit>();
  auto* layer = new CLayerDataEdit;
  segment->LayerSet->AddElem(0, layer);
  layer->ZIdObjSet = std::make_unique<CZIdObjSetEdit>();
  auto* z_id_obj = new CZIdObjEdit;
  layer->ZIdObjSet->AddElem(0, z_id_obj);
  z_id_obj->ObjSet = std::make_unique<CObjSetEdit>();
  z_id_obj->ObjSet->AddElem(0, object.release());
}

inline const CString kObjectPlace =
    "MeshSegmentSet/MeshSegment[0]/LayerSet/LayerData[0]/ZIdObjSet/ZIdObj[0]/ObjSet/";

/// A map with a line of one point.
inline void PutPoint(CQenEdit& map, CPoint point) {
  auto line = std::make_unique<CLineObjEdit>();
  line->Pt.push_back(point);
  PutIntoMap(map, std::move(line));
}

template <class DrawInfoEdit>
void PutDrawInfo(CZorEdit& drawing, std::unique_ptr<DrawInfoEdit> draw_info) {
  drawing.DrawData.DrawInfoSet = std::make_shared<CDrawInfoSetEdit>();
  drawing.DrawData.DrawInfoSet->AddElem(0, draw_info.release());
}

inline CMarkDataEdit& PutMark(CZorEdit& drawing) {
  drawing.DrawData.MarkDataSet = std::make_shared<CMarkDataSetEdit>();
  auto* mark = new CMarkDataEdit;
  drawing.DrawData.MarkDataSet->AddElem(0, mark);
  return *mark;
}

/// The indices of the one draw attribute.
inline CList<std::uint32_t>& PutIndices(CZorEdit& drawing) {
  auto atter = std::make_unique<CDrawAtterEdit>();
  atter->DrawInfoIdxSet = std::make_unique<CDrawInfoIdxSetEdit>();
  auto& indices = atter->DrawInfoIdxSet->DrawInfoIdx;
  drawing.DrawData.DrawAtterSet = std::make_shared<CDrawAtterSetEdit>();
  drawing.DrawData.DrawAtterSet->AddElem(atter.release());
  return indices;
}

}  // namespace qenzor::testing
