#include <cassert>
#include <cstdint>
#include <memory>

#include "qenzor/platform/pages_impl.h"

#ifdef __linux__
#include <sys/mman.h>
#include <unistd.h>
#endif

namespace qenzor {

void PopulatePages(void* memory, std::size_t size) noexcept {
#ifdef MADV_POPULATE_WRITE
  assert(memory != nullptr);
  const auto page = static_cast<std::size_t>(::sysconf(_SC_PAGESIZE));
  auto* const end = static_cast<std::uint8_t*>(memory) + size;
  void* from = memory;
  std::size_t whole = size;
  if (std::align(page, page, from, whole) == nullptr) return;
  whole = static_cast<std::size_t>(end - static_cast<std::uint8_t*>(from)) / page * page;
  ::madvise(from, whole, MADV_POPULATE_WRITE);
#else
  static_cast<void>(memory);
  static_cast<void>(size);
#endif
}

}  // namespace qenzor
