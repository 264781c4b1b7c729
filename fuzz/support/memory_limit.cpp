#include "support/memory_limit.h"

#include <sanitizer/allocator_interface.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <limits>

#include "support/require.h"

namespace fuzz {
namespace {

constexpr std::int64_t kNone = std::numeric_limits<std::int64_t>::max();

std::int64_t s_live = 0;
std::int64_t s_limit = kNone;
std::int64_t s_start = 0;
std::int64_t s_peak = 0;

void OnMalloc(const volatile void* /*block*/, std::size_t size) {
  s_live += static_cast<std::int64_t>(size);
  if (s_limit == kNone) return;
  s_peak = std::max(s_peak, s_live);
  if (s_live <= s_limit) return;
  std::fprintf(stderr, "more memory than the input justifies: %lld bytes\n",
               static_cast<long long>(s_live - s_start));
  s_limit = kNone;  // the report needs memory, too
  Require(false);
}

void OnFree(const volatile void* block) {
  if (block != nullptr) s_live -= static_cast<std::int64_t>(__sanitizer_get_allocated_size(block));
}

}  // namespace

MemoryLimit::MemoryLimit(std::size_t bytes) {
  static const bool s_counts = __sanitizer_install_malloc_and_free_hooks(&OnMalloc, &OnFree) != 0;
  Require(s_counts);
  s_start = s_live;
  s_peak = s_live;
  s_limit = s_live + static_cast<std::int64_t>(bytes);
}

MemoryLimit::~MemoryLimit() { s_limit = kNone; }

std::size_t MemoryLimit::Peak() { return static_cast<std::size_t>(s_peak - s_start); }

}  // namespace fuzz
