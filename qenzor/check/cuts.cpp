#include <algorithm>
#include <tuple>

#include "qenzor/check/cuts_impl.h"

namespace qenzor::check {

namespace {

auto SideOf(const AreaCut& cut) {
  return std::tie(cut.ZId, cut.Layer, cut.IsMeridian, cut.Edge, cut.IsBeyond);
}
auto KeyOf(const AreaCut& cut) { return std::tuple_cat(SideOf(cut), std::tie(cut.Low)); }
auto KeyOf(const LineCut& cut) { return std::tie(cut.ZId, cut.Layer, cut.Place.x, cut.Place.y); }

constexpr auto kByKey = [](const auto& a, const auto& b) { return KeyOf(a) < KeyOf(b); };

/// Makes one of two parts that have a point in common.
bool Extend(AreaCut& cut, const AreaCut& other) {
  if (SideOf(cut) != SideOf(other) || other.Low > cut.High || other.High < cut.Low) return false;
  cut.Low = std::min(cut.Low, other.Low);
  cut.High = std::max(cut.High, other.High);
  return true;
}

}  // namespace

void CCuts::Add(const AreaCut& cut) {
  if (m_areas.empty() || !Extend(m_areas.back(), cut)) m_areas.push_back(cut);
}

void CCuts::Sort() {
  std::ranges::sort(m_areas, kByKey);
  std::ranges::sort(m_lines, kByKey);
  std::size_t kept = 0;
  for (const AreaCut& cut : m_areas)
    if (kept == 0 || !Extend(m_areas[kept - 1], cut)) m_areas[kept++] = cut;
  m_areas.resize(kept);
}

bool CCuts::IsMet(AreaCut cut) const {
  cut.IsBeyond = !cut.IsBeyond;
  const auto after = std::ranges::upper_bound(m_areas, cut, kByKey);
  if (after == m_areas.begin()) return false;
  const AreaCut& found = *std::prev(after);
  return SideOf(found) == SideOf(cut) && cut.High <= found.High;
}

bool CCuts::IsMet(const LineCut& cut) const {
  const auto [first, last] = std::equal_range(m_lines.begin(), m_lines.end(), cut, kByKey);
  return last - first > 1;
}

}  // namespace qenzor::check
