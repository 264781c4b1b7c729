#include <algorithm>
#include <optional>
#include <unordered_map>

#include "qenzor/work/match_impl.h"

namespace qenzor::work {

namespace {

/// Rows that differ in more entries are not matched exactly: the memory for it grows with the
/// square, to 16 MiB here.
constexpr std::int64_t kMostEdits = 2048;
/// Nor are those in which more than these comparisons have not sufficed, about a second's.
constexpr std::uint64_t kMostSteps = std::uint64_t{1} << 27U;

/// Myers' way through the grid of both rows: with each edit, as far as possible on each diagonal.
class CShortestEdit {
 public:
  CShortestEdit(std::span<const std::uint32_t> a, std::span<const std::uint32_t> b)
      : m_a(a), m_b(b) {}

  std::optional<Matches> Find() {
    const std::int64_t most =
        std::min<std::int64_t>(kMostEdits, static_cast<std::int64_t>(m_a.size() + m_b.size()));
    for (std::int64_t edits = 0; edits <= most && m_steps < kMostSteps; ++edits)
      if (Extend(edits)) return WalkBack(edits);
    return std::nullopt;
  }

 private:
  using Reach = std::vector<std::int32_t>;  // by diagonal, -edits in front

  /// How far the way to the diagonal comes before it goes along it, by the one before.
  std::int64_t Enter(const Reach& before, std::int64_t edits, std::int64_t diagonal) const {
    if (edits == 0) return 0;
    const auto at = [&](std::int64_t k) -> std::int64_t {
      const std::int64_t i = k + edits - 1;
      return i < 0 || i >= static_cast<std::int64_t>(before.size())
                 ? -1
                 : before[static_cast<std::size_t>(i)];
    };
    return std::max(at(diagonal + 1), at(diagonal - 1) < 0 ? -1 : at(diagonal - 1) + 1);
  }

  bool Extend(std::int64_t edits) {
    const auto a_size = static_cast<std::int64_t>(m_a.size());
    const auto b_size = static_cast<std::int64_t>(m_b.size());
    Reach reach(static_cast<std::size_t>(2 * edits + 1), -1);
    bool done = false;
    for (std::int64_t k = -edits; k <= edits && !done; k += 2) {
      std::int64_t x = Enter(edits == 0 ? reach : m_reaches.back(), edits, k);
      if (x < 0 || x > a_size || x - k > b_size) continue;
      const std::int64_t from = x;
      while (x < a_size && x - k < b_size &&
             m_a[static_cast<std::size_t>(x)] == m_b[static_cast<std::size_t>(x - k)])
        ++x;
      m_steps += static_cast<std::uint64_t>(x - from + 1);
      reach[static_cast<std::size_t>(k + edits)] = static_cast<std::int32_t>(x);
      done = x == a_size && x - k == b_size;
    }
    m_reaches.push_back(std::move(reach));
    return done;
  }

  Matches WalkBack(std::int64_t edits) const {
    Matches matches;
    auto x = static_cast<std::int64_t>(m_a.size());
    std::int64_t k = x - static_cast<std::int64_t>(m_b.size());
    for (; edits >= 0; --edits) {
      const Reach& before = m_reaches[static_cast<std::size_t>(edits > 0 ? edits - 1 : 0)];
      const std::int64_t entered = Enter(before, edits, k);
      for (; x > entered; --x)
        matches.emplace_back(static_cast<std::uint32_t>(x - 1),
                             static_cast<std::uint32_t>(x - 1 - k));
      if (edits == 0) break;
      const std::int64_t above = k + 1 + edits - 1;
      const bool is_down = above < static_cast<std::int64_t>(before.size()) &&
                           before[static_cast<std::size_t>(above)] == entered;
      k += is_down ? 1 : -1;
      x = is_down ? entered : entered - 1;
    }
    std::reverse(matches.begin(), matches.end());
    return matches;
  }

  std::span<const std::uint32_t> m_a;
  std::span<const std::uint32_t> m_b;
  std::vector<Reach> m_reaches;
  std::uint64_t m_steps = 0;
};

Matches MatchNth(std::span<const std::uint32_t> a, std::span<const std::uint32_t> b) {
  struct Places {
    std::vector<std::uint32_t> At;
    std::size_t Next = 0;
  };
  std::unordered_map<std::uint32_t, Places> places;
  for (std::uint32_t i = 0; i < b.size(); ++i) places[b[i]].At.push_back(i);
  Matches pairs;
  std::vector<std::uint32_t> targets;
  for (std::uint32_t i = 0; i < a.size(); ++i) {
    const auto found = places.find(a[i]);
    if (found == places.end() || found->second.Next == found->second.At.size()) continue;
    targets.push_back(found->second.At[found->second.Next++]);
    pairs.emplace_back(i, targets.back());
  }
  Matches matches;
  for (const std::uint32_t at : LongestGrowing(targets)) matches.push_back(pairs[at]);
  return matches;
}

}  // namespace

Matches MatchRows(std::span<const std::uint32_t> a, std::span<const std::uint32_t> b) {
  std::optional<Matches> exact = CShortestEdit(a, b).Find();
  return exact.has_value() ? std::move(*exact) : MatchNth(a, b);
}

std::vector<std::uint32_t> LongestGrowing(std::span<const std::uint32_t> numbers) {
  std::vector<std::uint32_t> ends;  // by length: the position of the smallest end
  std::vector<std::uint32_t> before(numbers.size());
  for (std::uint32_t i = 0; i < numbers.size(); ++i) {
    const auto longer = std::lower_bound(
        ends.begin(), ends.end(), numbers[i],
        [&](std::uint32_t at, std::uint32_t number) { return numbers[at] < number; });
    if (longer != ends.begin()) before[i] = *(longer - 1);
    if (longer == ends.end())
      ends.push_back(i);
    else
      *longer = i;
  }
  std::vector<std::uint32_t> positions(ends.size());
  if (ends.empty()) return positions;
  std::uint32_t at = ends.back();
  for (std::size_t i = ends.size(); i-- > 0; at = before[at]) positions[i] = at;
  return positions;
}

}  // namespace qenzor::work
