// What threads leave behind when they end.

#include <memory>
#include <thread>

#include "qenzor/qen/line_obj.h"
#include "tests/support/large_map.h"
#include "tests/support/resident_memory.h"

namespace qenzor::testing {
namespace {

/// Uses the library when its thread has ended, after whatever the library keeps for a thread has
/// been destroyed: it was there first.
struct LateUser {
  LateUser() = default;
  ~LateUser() {
    if (Document != nullptr) static_cast<void>(CQen().Read(Document->data(), Document->size()));
    Object = std::make_unique<CLineObj>();
    Object->Pt.Reset(10);
    Object.reset();
  }
  LateUser(const LateUser&) = delete;
  LateUser& operator=(const LateUser&) = delete;

  const Bytes* Document = nullptr;
  std::unique_ptr<CLineObj> Object;
};

TEST(ThreadEnd, DestructorsThatUseTheLibraryLeaveNothingBehind) {
  const Bytes bytes = LargeMapBytes(200, 20);
  ExpectAtMost(20 * kMib, [&] {
    const auto run = [&] {
      static thread_local LateUser t_user;
      t_user.Document = &bytes;
      CQen map;
      static_cast<void>(map.Read(bytes.data(), bytes.size()));
    };
    std::thread(run).join();
    const std::ptrdiff_t before = ResidentBytes();
    for (int i = 0; i < 5000; ++i) std::thread(run).join();
    return ResidentBytes() - before;
  });
}

}  // namespace
}  // namespace qenzor::testing
