// Removes the raster layer, number 4, from a map:
//
//     readme_example samples/world.qen without_rasters.qen
//
// Shows the way of every change: read, turn into the edit form, change, turn back, write. What
// stands between the markers is the example of README.md; a test compares the two.

// [readme]
#include <memory>

#include "qenzor/qen/qen.h"

bool RemoveLayer(const std::string& from, const std::string& to, std::uint16_t number) {
  qenzor::CQen map;
  if (!map.Read(from)) return false;

  qenzor::CQenEdit edit;  // the same map as lists that can be changed
  edit.QenDataToEditData(&map);
  if (!edit.MapData || !edit.MapData->MeshSegmentSet) return false;
  for (const auto& segment : *edit.MapData->MeshSegmentSet->GetElemPtr()) {
    if (!segment->LayerSet) continue;
    for (std::uint32_t i = segment->LayerSet->GetElemCount(); i-- > 0;)
      if (segment->LayerSet->GetElem(i)->LayerNo == number) segment->LayerSet->DelElem(i);
  }
  edit.Revision += 1;

  const std::unique_ptr<qenzor::CQen> changed(edit.EditDataToQenData());
  return changed && changed->Write(to);
}
// [/readme]

#include <cstdlib>
#include <iostream>

int main(int argc, char** argv) {
  constexpr std::uint16_t kRasterLayer = 4;
  if (argc != 3 || !RemoveLayer(argv[1], argv[2], kRasterLayer)) {
    std::cerr << "usage: readme_example INPUT.qen OUTPUT.qen\n";
    return EXIT_FAILURE;
  }
  return EXIT_SUCCESS;
}
