#include "qenzor/view/filters.h"

#include <algorithm>
#include <string>
#include <vector>

#include "qenzor/platform/file.h"
#include "qenzor/view/words_impl.h"

namespace qenzor {

namespace {

/// More than the z-ids of any map; a file beyond it was not meant.
constexpr std::uint64_t kMaxZIdFileBytes = std::uint64_t{256} << 20U;

Result<void> AddBox(std::optional<MapBox>& box, std::string_view text) {
  std::vector<double> edges;
  const bool numbers = ForEachWord(text, ',', [&](std::string_view word) {
    const auto edge = ParseWhole<double>(word);
    if (edge.has_value()) edges.push_back(*edge);
    return edge.has_value() && edges.size() <= 4;
  });
  if (!numbers || edges.size() != 4)
    return WrongUsage("bbox is four numbers W,S,E,N, not " + Quoted(text));
  if (edges[0] > edges[2]) return WrongUsage("bbox: the west edge lies east of the east edge");
  if (edges[1] > edges[3]) return WrongUsage("bbox: the south edge lies north of the north edge");
  box = MapBox{edges[0], edges[1], edges[2], edges[3]};
  return {};
}

template <class Number>
Result<void> AddNumbers(std::optional<std::set<Number>>& numbers, std::string_view name,
                        std::string_view text) {
  std::set<Number> added;
  std::string_view wrong;
  const bool all = ForEachWord(text, ',', [&](std::string_view word) {
    const auto number = ParseWhole<Number>(word);
    if (number.has_value()) added.insert(*number);
    wrong = word;
    return number.has_value();
  });
  if (!all)
    return WrongUsage(std::string(name) + " takes numbers from 0 to " +
                      std::to_string(std::numeric_limits<Number>::max()) +
                      " parted by commas, not " + Quoted(wrong));
  if (!numbers.has_value()) numbers.emplace();
  numbers->merge(added);
  return {};
}

Result<void> AddZIdFile(std::optional<std::set<std::uint64_t>>& z_ids, const std::string& path) {
  const auto failure = [&](FailureKind kind, std::string reason) {
    Failure failed;
    failed.Kind = kind;
    failed.Path = path;
    failed.Reason = std::move(reason);
    return failed;
  };
  CFile file;
  if (!file.Open(path, CFile::modeRead | CFile::typeBinary))
    return failure(FailureKind::kCannotOpen, "cannot be opened");
  std::string text;
  std::array<char, 65536> block;
  while (const std::uint32_t count = file.Read(block.data(), block.size())) {
    text.append(block.data(), count);
    if (text.size() > kMaxZIdFileBytes)
      return failure(FailureKind::kTooLarge, "is too long to be a list of z-ids");
  }
  std::set<std::uint64_t> added;
  if (Result<void> parsed = AddZIds(text, added); !parsed) {
    Failure failed = parsed.GetFailure();
    failed.Path = path;
    return failed;
  }
  if (!z_ids.has_value()) z_ids.emplace();
  z_ids->merge(added);
  return {};
}

Result<void> AddKinds(std::optional<std::bitset<kObjectKinds>>& kinds, std::string_view text) {
  std::bitset<kObjectKinds> added;
  std::string_view wrong;
  const bool all = ForEachWord(text, ',', [&](std::string_view word) {
    const auto* const name = std::find(kObjectKindNames.begin(), kObjectKindNames.end(), word);
    wrong = word;
    if (name == kObjectKindNames.end()) return false;
    added.set(static_cast<std::size_t>(name - kObjectKindNames.begin()));
    return true;
  });
  if (!all) {
    std::string reason = "objects is one or more of";
    for (const std::string_view name : kObjectKindNames) reason += ' ' + std::string(name);
    return WrongUsage(reason + " parted by commas, not " + Quoted(wrong));
  }
  kinds = kinds.value_or(std::bitset<kObjectKinds>()) | added;
  return {};
}

}  // namespace

Result<void> Filters::Add(std::string_view name, std::string_view text) {
  if (name == "bbox") return AddBox(Box, text);
  if (name == "layer") return AddNumbers(Layers, name, text);
  if (name == "segment") return AddNumbers(Segments, name, text);
  if (name == "zid" && text.starts_with('@')) return AddZIdFile(ZIds, std::string(text.substr(1)));
  if (name == "zid") return AddNumbers(ZIds, name, text);
  if (name == "objects") return AddKinds(Kinds, text);
  return WrongUsage("there is no filter " + Quoted(name));
}

Result<void> AddZIds(std::string_view text, std::set<std::uint64_t>& z_ids) {
  std::set<std::uint64_t> added;
  Failure failure;
  const bool all = ForEachWord(text, '\n', [&](std::string_view line) {
    ++failure.Line;
    line = line.substr(0, line.find('#'));
    constexpr std::string_view kBetween = " \t\r,";
    while (true) {
      const std::size_t begin = line.find_first_not_of(kBetween);
      if (begin == std::string_view::npos) return true;
      line.remove_prefix(begin);
      const std::string_view word = line.substr(0, line.find_first_of(kBetween));
      const auto z_id = ParseWhole<std::uint64_t>(word);
      if (!z_id.has_value()) {
        failure.Reason = Quoted(word) + " is not a number from 0 to 18446744073709551615";
        return false;
      }
      added.insert(*z_id);
      line.remove_prefix(word.size());
    }
  });
  if (!all) {
    failure.Kind = FailureKind::kWrongUsage;
    failure.Column = 1;
    return failure;
  }
  z_ids.merge(added);
  return {};
}

}  // namespace qenzor
