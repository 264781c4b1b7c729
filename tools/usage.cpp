#include "usage.h"

#include <algorithm>

namespace tool {

namespace {

/// How many letters of two words are not in the other one.
std::size_t Difference(std::string a, std::string b) {
  std::ranges::sort(a);
  std::ranges::sort(b);
  std::string rest;
  std::ranges::set_symmetric_difference(a, b, std::back_inserter(rest));
  return rest.size();
}

}  // namespace

std::string DescribeUnknownCommand(const std::string& word,
                                   const std::vector<std::string>& commands) {
  constexpr std::size_t kFar = 4;
  const auto nearest = std::ranges::min_element(
      commands, {}, [&word](const std::string& command) { return Difference(word, command); });
  std::string text = "there is no command " + word;
  if (nearest != commands.end() && Difference(word, *nearest) < kFar)
    text += "; did you mean " + *nearest + '?';
  text += " The commands are";
  for (std::size_t i = 0; i < commands.size(); ++i)
    text += (i == 0 ? " " : i + 1 == commands.size() ? " and " : ", ") + commands[i];
  return text;
}

}  // namespace tool
