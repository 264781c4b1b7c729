#include "qenzor/work/change_document.h"

#include <algorithm>
#include <array>
#include <map>

#include "qenzor/work/failures_impl.h"
#include "qenzor/work/json_text_impl.h"

namespace qenzor {

namespace {

using work::AppendJsonString;
using work::AppendNumber;

void AppendKey(CString& out, std::string_view key) {
  if (out.back() != '{') out += ',';
  AppendJsonString(out, key);
  out += ':';
}

void AppendStep(CString& out, const PlaceStep& step) {
  AppendKey(out, step.Key);
  if (step.Number == PlaceStep::kEnd && work::IsIndexKey(step.Key)) {
    out += "\"end\"";
    return;
  }
  if (step.Nth == PlaceStep::kAll) {
    out += "\"all\"";
    return;
  }
  const bool is_string = step.Nth > 0 || work::IsWideKey(step.Key);
  if (is_string) out += '"';
  AppendNumber(out, step.Number);
  if (step.Nth > 0) {
    out += '#';
    AppendNumber(out, step.Nth);
  }
  if (is_string) out += '"';
}

void AppendValue(CString& out, std::string_view key, std::string_view json) {
  if (json.empty()) return;
  AppendKey(out, key);
  out += json;
}

void AppendIndex(CString& out, std::string_view key, const std::optional<std::uint32_t>& index) {
  if (!index.has_value()) return;
  AppendKey(out, key);
  AppendNumber(out, *index);
}

/// Which positions of a list are given up, and which are taken anew.
struct ListMoves {
  std::vector<std::uint64_t> Removed;
  std::vector<std::uint64_t> Claimed;

  void Sort() {
    std::sort(Removed.begin(), Removed.end());
    std::sort(Claimed.begin(), Claimed.end());
  }
  /// Where an element that stays in the list stands afterwards.
  std::uint64_t After(std::uint64_t before) const {
    const auto gone = std::lower_bound(Removed.begin(), Removed.end(), before) - Removed.begin();
    const std::uint64_t rank = before - static_cast<std::uint64_t>(gone);
    // Of the claimed ones those stand in front that have no more than so many free ones before.
    std::size_t low = 0;
    std::size_t high = Claimed.size();
    while (low < high) {
      const std::size_t middle = (low + high) / 2;
      if (Claimed[middle] - middle <= rank)
        low = middle + 1;
      else
        high = middle;
    }
    return rank + low;
  }
};

using ListKey = std::pair<std::string_view, std::vector<std::array<std::uint64_t, 2>>>;

/// Tells the lists of indexed elements apart.
ListKey ListOf(const Change& change) {
  ListKey key{change.Place.back().Key, {}};
  for (const PlaceStep& step : change.Place) key.second.push_back({step.Number, step.Nth});
  key.second.pop_back();
  return key;
}

bool IsIndexed(const Change& change) {
  return !change.Place.empty() && work::IsIndexKey(change.Place.back().Key);
}

/// What the change lacks to be turned round; empty when nothing does.
std::string_view FindLack(const Change& change) {
  for (const PlaceStep& step : change.Place)
    if (step.Nth == PlaceStep::kAll) return step.Key;
  switch (change.Kind) {
    case ChangeKind::kSet:
      return change.Before.empty() ? "from" : "";
    case ChangeKind::kDelete:
      return change.Before.empty() ? "value" : "";
    case ChangeKind::kMove:
      return change.Position.has_value() || IsIndexed(change) ? "" : "position";
    case ChangeKind::kAdd:
      return IsIndexed(change) && change.Place.back().Number == PlaceStep::kEnd ? "index" : "";
  }
  return "";
}

void Reverse(Change& change, const std::map<ListKey, ListMoves>& lists) {
  if (change.Kind == ChangeKind::kAdd)
    change.Kind = ChangeKind::kDelete;
  else if (change.Kind == ChangeKind::kDelete)
    change.Kind = ChangeKind::kAdd;
  std::swap(change.Before, change.After);
  if (change.Kind == ChangeKind::kMove && !IsIndexed(change)) std::swap(change.Position, change.To);
  if (!IsIndexed(change)) return;
  std::uint64_t& index = change.Place.back().Number;
  if (change.Kind == ChangeKind::kMove)
    index = std::exchange(*change.To, static_cast<std::uint32_t>(index));
  else if (change.Kind == ChangeKind::kSet)
    if (const auto list = lists.find(ListOf(change)); list != lists.end())
      index = list->second.After(index);
}

}  // namespace

CString RenderChange(const Change& change) {
  constexpr std::array<std::string_view, 4> kOps{"set", "add", "delete", "move"};
  CString out = "{";
  AppendKey(out, "op");
  AppendJsonString(out, kOps.at(static_cast<std::size_t>(change.Kind)));
  for (const PlaceStep& step : change.Place) AppendStep(out, step);
  AppendIndex(out, "position", change.Position);
  switch (change.Kind) {
    case ChangeKind::kSet:
      AppendKey(out, "field");
      AppendJsonString(out, change.Field);
      AppendValue(out, "from", change.Before);
      AppendValue(out, "to", change.After);
      break;
    case ChangeKind::kAdd:
      AppendValue(out, "value", change.After);
      break;
    case ChangeKind::kDelete:
      AppendValue(out, "value", change.Before);
      break;
    case ChangeKind::kMove:
      AppendIndex(out, "to", change.To);
      break;
  }
  return out + '}';
}

CString RenderChangesFront(ClassFamily document) {
  return CString(R"({"format":"qenzor-changes","version":1,"document":")") +
         (document == ClassFamily::kQen ? "qen" : "zor") + R"(","changes":[)";
}

CString RenderChanges(const ChangeDocument& changes) {
  CString out = RenderChangesFront(changes.Document);
  std::string_view before = "\n";
  for (const Change& change : changes.Changes) {
    out.append(before).append(RenderChange(change));
    before = ",\n";
  }
  return out.append(kChangesEnd);
}

Result<void> ReverseChanges(ChangeDocument& changes) {
  std::map<ListKey, ListMoves> lists;
  for (std::size_t i = 0; i < changes.Changes.size(); ++i) {
    const Change& change = changes.Changes[i];
    if (const std::string_view lack = FindLack(change); !lack.empty())
      return work::ContentFailure(
          "/changes/" + std::to_string(i),
          "does not tell \"" + CString(lack) + "\", so it cannot be turned round");
    if (!IsIndexed(change) || change.Kind == ChangeKind::kSet) continue;
    ListMoves& list = lists[ListOf(change)];
    if (change.Kind != ChangeKind::kAdd) list.Removed.push_back(change.Place.back().Number);
    if (change.Kind == ChangeKind::kAdd) list.Claimed.push_back(change.Place.back().Number);
    if (change.Kind == ChangeKind::kMove) list.Claimed.push_back(change.To.value_or(0));
  }
  for (auto& [key, list] : lists) list.Sort();
  for (Change& change : changes.Changes) Reverse(change, lists);
  return {};
}

}  // namespace qenzor
