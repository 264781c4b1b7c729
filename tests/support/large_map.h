#pragma once

#include <vector>

#include "qenzor/qen/obj_set.h"
#include "qenzor/qen/qen.h"
#include "tests/support/qen_bytes.h"

namespace qenzor::testing {

/// The bytes of a map of so many lines of up to so many points, of which one in a hundred has a
/// URL.
inline Bytes LargeMapBytes(std::size_t lines, std::size_t points) {
  std::vector<Bytes> objects;
  for (std::size_t i = 0; i < lines; ++i)
    objects.push_back(LineBytes(Points(1 + i * 7919 % points, {1, -2}),
                                i % 100 == 99 ? InfoSetBytes(u"http://a.b/") : Bytes()));
  return QenInfoBytes().Add(MapDataBytes(objects));
}

/// The lines of such a map, which still owns them.
inline CObjSet& LinesOf(CQen& map) {
  CLayerSet& layers = *map.MapData->MeshSegmentSet->GetElem(0)->LayerSet;
  return *layers.GetElem(0)->ZIdObjSet->GetElem(0)->ObjSet;
}

}  // namespace qenzor::testing
