#pragma once

#include <gtest/gtest.h>

#include <string>

#include "qenzor/catalogue.h"

namespace qenzor::testing {

template <class Rows>
struct ChunksOf;
template <class... Rows>
struct ChunksOf<ClassList<Rows...>> {
  using Types = ::testing::Types<typename Rows::Chunk...>;
};

/// Every chunk class that has the other two forms, for typed tests.
using EveryClass = ChunksOf<Catalogue>::Types;

/// Names typed tests after their class.
struct ClassNames {
  template <class Chunk>
  static std::string GetName(int /*index*/) {
    return std::string(Chunk::kTag);
  }
};

}  // namespace qenzor::testing
