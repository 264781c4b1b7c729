#include <map>

#include "qenzor/work/differ_impl.h"

namespace qenzor::work {

ListMatch MatchContents(const std::vector<std::uint32_t>& before,
                        const std::vector<std::uint32_t>& after, std::uint32_t front) {
  ListMatch match{MatchRows(before, after),
                  std::vector<std::uint32_t>(before.size(), ListMatch::kNowhere),
                  std::vector<bool>(after.size())};
  std::vector<bool> is_kept(before.size());
  std::vector<bool> is_matched(after.size());
  for (auto& [i, j] : match.Kept) {
    is_kept[i] = is_matched[j] = true;
    i += front;
    j += front;
  }
  std::unordered_map<std::uint32_t, std::vector<std::uint32_t>> open;  // the first one at the end
  for (auto j = static_cast<std::uint32_t>(after.size()); j-- > 0;)
    if (!is_matched[j]) open[after[j]].push_back(j);
  for (std::uint32_t i = 0; i < before.size(); ++i) {
    if (is_kept[i]) continue;
    const auto found = open.find(before[i]);
    if (found == open.end() || found->second.empty()) continue;
    const std::uint32_t j = found->second.back();
    found->second.pop_back();
    match.MovedTo[i] = j + front;
    match.IsTaken[j] = true;
  }
  return match;
}

CDiffer::NumberedMatch CDiffer::MatchNumbers(CNumberedRow& before, CNumberedRow& after) {
  const std::size_t n = before.GetNumbers().size();
  const std::size_t m = after.GetNumbers().size();
  std::map<std::pair<std::uint64_t, std::uint32_t>, std::uint32_t> places;
  for (std::uint32_t j = 0; j < m; ++j)
    places.emplace(std::pair{after.GetNumbers()[j], after.NthOf(j)}, j);
  NumberedMatch match{std::vector<std::uint32_t>(n, ListMatch::kNowhere),
                      std::vector<bool>(n, true), std::vector<bool>(m)};
  std::vector<std::uint32_t> found;
  std::vector<std::uint32_t> targets;
  for (std::uint32_t i = 0; i < n; ++i) {
    const auto place = places.find({before.GetNumbers()[i], before.NthOf(i)});
    if (place == places.end()) continue;
    match.After[i] = place->second;
    match.IsFound[place->second] = true;
    found.push_back(i);
    targets.push_back(place->second);
  }
  for (const std::uint32_t at : LongestGrowing(targets)) match.IsMoved[found[at]] = false;
  return match;
}

Change CDiffer::NewChange(ChangeKind kind) const {
  Change change;
  change.Kind = kind;
  for (const OpenStep& step : m_place)
    change.Place.push_back(
        {step.Key, step.Number, step.Row == nullptr ? 0 : step.Row->NthOf(step.At)});
  return change;
}

void CDiffer::TellSet(std::string_view tag, CString before, CString after) {
  Change change = NewChange(ChangeKind::kSet);
  change.Field = m_path;
  change.Field += tag;
  change.Before = std::move(before);
  change.After = std::move(after);
  Tell(change);
}

void CDiffer::TellElement(ChangeKind kind, PlaceStep step, std::optional<std::uint32_t> position,
                          CString json) {
  Change change = NewChange(kind);
  change.Place.push_back(step);
  change.Position = position;
  (kind == ChangeKind::kAdd ? change.After : change.Before) = std::move(json);
  Tell(change);
}

void CDiffer::TellMove(PlaceStep step, std::optional<std::uint32_t> position, std::uint32_t to) {
  Change change = NewChange(ChangeKind::kMove);
  change.Place.push_back(step);
  change.Position = position;
  change.To = to;
  Tell(change);
}

}  // namespace qenzor::work
