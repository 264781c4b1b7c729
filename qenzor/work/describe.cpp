#include <array>
#include <span>

#include "qenzor/work/change.h"
#include "qenzor/work/json_read_impl.h"
#include "qenzor/work/json_text_impl.h"

namespace qenzor {

namespace {

using work::Json;

std::string_view WordOf(std::string_view key) {
  for (const PlaceName& name : work::kPlaceNames)
    if (name.Key == key) return name.Word;
  return key;
}

CString DescribePlace(std::span<const PlaceStep> place) {
  CString out;
  for (const PlaceStep& step : place) {
    if (!out.empty()) out += ", ";
    out.append(WordOf(step.Key)) += ' ';
    if (step.Nth == PlaceStep::kAll)
      out += "(all)";
    else if (step.Number == PlaceStep::kEnd && work::IsIndexKey(step.Key))
      out += "(at the end)";
    else
      out += std::to_string(step.Number);
    if (step.Nth > 0 && step.Nth < PlaceStep::kAll) out += '#' + std::to_string(step.Nth);
  }
  return out;
}

bool IsPoint(const Json& json) {
  return json.is_array() && json.size() == 2 && json[0].is_number() && json[1].is_number();
}
bool IsPoints(const Json& json) { return json.is_array() && !json.empty() && IsPoint(json[0]); }

CString CountOf(std::size_t count, const char* what) {
  return std::to_string(count) + ' ' + what + (count == 1 ? "" : "s");
}

/// A text or number as it is, anything long by its extent.
CString DescribeValue(const CString& text, const Json& json) {
  constexpr std::size_t kMostCharacters = 72;
  if (IsPoints(json)) return CountOf(json.size(), "point");
  if (text.size() <= kMostCharacters) return text;
  if (json.is_array()) return "a list of " + std::to_string(json.size());
  if (json.is_object()) return "an object";
  // Not in the middle of a character.
  std::size_t end = kMostCharacters;
  while (end > 0 && (static_cast<unsigned char>(text[end]) & 0xC0U) == 0x80) --end;
  return text.substr(0, end) + "…\"";
}

/// What an element holds: its class where it tells one, and its lists and texts.
CString DescribeElement(const CString& text) {
  const Json json = Json::parse(text, nullptr, false);
  if (!json.is_object()) return "element";
  CString out = json.value("class", std::string("element"));
  std::string_view before = " (";
  for (const auto& member : json.items()) {
    const Json& value = member.value();
    const bool is_text = value.is_string() && member.key() != "class";
    if (!is_text && (!value.is_array() || value.empty())) continue;
    out.append(before).append(member.key()) += ": ";
    out += DescribeValue(value.dump(), value);
    before = ", ";
  }
  return before == ", " ? out + ')' : out;
}

/// Where two rows of points part, and what stands there in both.
CString DescribeFirstDifference(const Json& before, const Json& after) {
  std::size_t at = 0;
  while (at < before.size() && at < after.size() && before[at] == after[at]) ++at;
  const auto point = [&](const Json& points) {
    return at < points.size() ? points[at].dump() : CString("none");
  };
  return "; first difference at point " + std::to_string(at) + ": " + point(before) + " → " +
         point(after);
}

CString DescribeSet(const Change& change) {
  const Json after = Json::parse(change.After, nullptr, false);
  CString out = change.Field + ": ";
  if (change.Before.empty()) return out + "→ " + DescribeValue(change.After, after);
  const Json before = Json::parse(change.Before, nullptr, false);
  out += DescribeValue(change.Before, before) + " → " + DescribeValue(change.After, after);
  if (IsPoints(before) && IsPoints(after)) out += DescribeFirstDifference(before, after);
  return out;
}

CString DescribeWhat(const Change& change) {
  switch (change.Kind) {
    case ChangeKind::kSet:
      return DescribeSet(change);
    case ChangeKind::kAdd:
      return "added " + DescribeElement(change.After);
    case ChangeKind::kDelete:
      return change.Before.empty() ? CString("deleted")
                                   : "deleted " + DescribeElement(change.Before);
    case ChangeKind::kMove: {
      const bool is_indexed = work::IsIndexKey(change.Place.back().Key);
      const CString from = !is_indexed && change.Position.has_value()
                               ? " from position " + std::to_string(*change.Position)
                               : "";
      return "moved" + from + " to " + (is_indexed ? "" : "position ") +
             std::to_string(change.To.value_or(0));
    }
  }
  return {};
}

}  // namespace

CString DescribeChange(const Change& change) {
  const CString place = DescribePlace(change.Place);
  return (place.empty() ? CString("document") : place) + ": " + DescribeWhat(change);
}

}  // namespace qenzor
