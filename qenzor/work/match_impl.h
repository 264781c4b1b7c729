#pragma once

#include <cstdint>
#include <span>
#include <utility>
#include <vector>

namespace qenzor::work {

/// Pairs of positions in two rows, both growing.
using Matches = std::vector<std::pair<std::uint32_t, std::uint32_t>>;

/// Pairs positions that hold the same: a longest common subsequence of the rows, or where that
/// would cost too much, the longest that takes the n-th of equal entries to the n-th.
Matches MatchRows(std::span<const std::uint32_t> a, std::span<const std::uint32_t> b);

/// The positions of a longest growing subsequence of different numbers.
std::vector<std::uint32_t> LongestGrowing(std::span<const std::uint32_t> numbers);

}  // namespace qenzor::work
