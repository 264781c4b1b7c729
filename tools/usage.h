#pragma once

#include <string>
#include <vector>

namespace tool {

/// Says that no command has that name, which are there, and which one is likely meant.
std::string DescribeUnknownCommand(const std::string& word,
                                   const std::vector<std::string>& commands);

}  // namespace tool
