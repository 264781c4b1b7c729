#pragma once

#include <algorithm>
#include <cerrno>
#include <stdexcept>
#include <string>
#include <system_error>

namespace tool {

/// What the program says on standard error: one line, whatever a file may be called.
inline std::string Complaint(std::string what) {
  std::replace_if(
      what.begin(), what.end(), [](unsigned char c) { return c < ' ' || c == 0x7F; }, '?');
  return "qenzor: " + what + '\n';
}

/// Why a command did not do its work, in one line: the file, what is wrong, where.
class CFailure : public std::runtime_error {
 public:
  CFailure(const std::string& file, const std::string& what)
      : std::runtime_error(file + ": " + what) {}
};

/// What the system said last: "No such file or directory".
inline std::string SystemReason() { return std::generic_category().message(errno); }

/// The command line asks for what makes no sense.
class CWrongUsage : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

}  // namespace tool
