// In this program no random numbers can be had from the system.

#include <gtest/gtest.h>

#include <random>
#include <stdexcept>
#include <string>

#include "qenzor/platform/map.h"
#include "tests/support/document_kinds.h"

#ifdef __GLIBCXX__

/// What the constructor of std::random_device calls.
// NOLINTNEXTLINE(bugprone-reserved-identifier,readability-identifier-naming)
extern "C" void _ZNSt13random_device7_M_initERKNSt7__cxx1112basic_stringIcSt11char_traitsIcESaIcEEE(
    void* /*device*/, const std::string& /*token*/) {
  throw std::runtime_error("no random numbers");
}

namespace qenzor::testing {
namespace {

TEST(WithoutRandomNumbers, KeyedSetsAreReadAndSearchedAllTheSame) {
  EXPECT_THROW(std::random_device(), std::runtime_error);
  CMap<std::uint64_t, int> map(8191);
  for (int i = 0; i < 1000; ++i) EXPECT_TRUE(map.Set(static_cast<std::uint64_t>(i) * 7919, i));
  ASSERT_NE(map.Find(7919), nullptr);
  EXPECT_EQ(*map.Find(7919), 1);
  const Bytes bytes = ZorKind::DocumentBytes();
  CZor draw;
  EXPECT_TRUE(draw.Read(bytes.data(), bytes.size()));
}

}  // namespace
}  // namespace qenzor::testing

#endif
