#include "class_tables_impl.h"
#include "qenzor/qen/all.h"

namespace qenzor::python {

void InitQenClasses() {
  AddRecord<QenFileInfo>("QenFileInfo");
  AddChunks(QenClasses{});
}

PyTypeObject*& MapObjectType() { return g_type<CAbstractObj>; }
const ClassInfo& QenInfoClass() { return g_info<QenFileInfo>; }
const ClassInfo& QenRootClass(bool editable) {
  return editable ? g_info<CQenMapDataEdit> : g_info<CQenMapData>;
}

Place PlaceBelow(const Place& above, const Object& object) {
  Place place = above;
  if (object.Info == &g_info<CMeshSegment>)
    place.Segment = static_cast<const CMeshSegment*>(object.At)->MeshSegmentNo;
  else if (object.Info == &g_info<CLayerData>)
    place.Layer = static_cast<const CLayerData*>(object.At)->LayerNo;
  else if (object.Info == &g_info<CZIdObj>)
    place.SetZId(static_cast<const CZIdObj*>(object.At)->ZId);
  return place;
}

}  // namespace qenzor::python
