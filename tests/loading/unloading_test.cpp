#include <dlfcn.h>

#include "tests/support/resident_memory.h"

namespace qenzor::testing {
namespace {

/// Loads the plugin, uses it and unloads it.
bool UseThePlugin() {
  void* plugin = ::dlopen(QENZOR_TEST_PLUGIN, RTLD_NOW | RTLD_LOCAL);
  if (plugin == nullptr) return false;
  const auto use = reinterpret_cast<bool (*)()>(::dlsym(plugin, "UseTheLibrary"));
  const bool used = use != nullptr && use();
  return ::dlclose(plugin) == 0 && used;
}

TEST(Unloading, LeavesNothingBehind) {
  ExpectAtMost(2 * kMib, [] {
    constexpr std::ptrdiff_t kFailed = 1024 * kMib;
    for (int i = 0; i < 10; ++i)
      if (!UseThePlugin()) return kFailed;
    const std::ptrdiff_t before = ResidentBytes();
    for (int i = 0; i < 200; ++i)
      if (!UseThePlugin()) return kFailed;
    return ResidentBytes() - before;
  });
}

}  // namespace
}  // namespace qenzor::testing
