#pragma once

#include <cstdio>
#include <cstdlib>

namespace fuzz {

/// Ends the run: a property does not hold. The line is that of the call.
inline void Require(bool holds, const char* file = __builtin_FILE(), int line = __builtin_LINE()) {
  if (holds) return;
  std::fprintf(stderr, "%s:%d: what is required does not hold\n", file, line);
  std::abort();
}

}  // namespace fuzz
