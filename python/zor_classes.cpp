#include "class_tables_impl.h"
#include "qenzor/zor/all.h"

namespace qenzor::python {

void InitZorClasses() {
  AddRecord<ZorFileInfo>("ZorFileInfo");
  AddChunks(ZorClasses{});
}

const ClassInfo& ZorInfoClass() { return g_info<ZorFileInfo>; }
const ClassInfo& ZorRootClass(bool editable) {
  return editable ? g_info<CZorDrawDataEdit> : g_info<CZorDrawData>;
}

}  // namespace qenzor::python
