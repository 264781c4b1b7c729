#pragma once

#include <string>

namespace qenzor::testing {

/// Names typed tests after their class.
struct ClassNames {
  template <class Chunk>
  static std::string GetName(int /*index*/) {
    return std::string(Chunk::kTag);
  }
};

}  // namespace qenzor::testing
