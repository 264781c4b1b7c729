#pragma once

#include <cstdlib>

namespace fuzz {

/// Ends the run: a property does not hold.
inline void Require(bool holds) {
  if (!holds) std::abort();
}

}  // namespace fuzz
