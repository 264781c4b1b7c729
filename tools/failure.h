#pragma once

#include <stdexcept>
#include <string>

namespace tool {

/// Why a command did not do its work, in one line: the file, what is wrong, where.
class CFailure : public std::runtime_error {
 public:
  CFailure(const std::string& file, const std::string& what)
      : std::runtime_error(file + ": " + what) {}
};

}  // namespace tool
