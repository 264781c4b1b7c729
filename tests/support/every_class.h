#pragma once

#include <gtest/gtest.h>

#include "qenzor/catalogue.h"
#include "tests/support/class_names.h"

namespace qenzor::testing {

template <class Rows>
struct ChunksOf;
template <class... Rows>
struct ChunksOf<ClassList<Rows...>> {
  using Types = ::testing::Types<typename Rows::Chunk...>;
};

/// Every chunk class that has the other two forms, for typed tests.
using EveryClass = ChunksOf<Catalogue>::Types;

}  // namespace qenzor::testing
