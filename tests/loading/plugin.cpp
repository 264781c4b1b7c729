// A part of somebody's program that is loaded and unloaded while that runs, and uses the library.

#include "qenzor/platform/code_page.h"
#include "tests/support/large_map.h"

extern "C" __attribute__((visibility("default"))) bool UseTheLibrary() {
  using namespace qenzor;
  const testing::Bytes bytes = testing::LargeMapBytes(5000, 20);
  CQen map;
  return map.Read(bytes.data(), bytes.size()) && WidenText(NarrowText(u"地図")) == u"地図";
}
