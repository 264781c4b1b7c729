#pragma once

#include <unistd.h>

#include <cstdio>
#include <span>
#include <string>

#include "support/require.h"

namespace fuzz {

/// A path for text: the converters read from one. It leads to memory where the system has such a
/// place. The bytes stand there until the next call.
inline const std::string& TextFile(std::span<const std::uint8_t> bytes) {
  static const std::string s_path = [] {
    const char* folder = access("/dev/shm", W_OK) == 0 ? "/dev/shm" : "/tmp";
    return std::string(folder) + "/qenzor-fuzz-" + std::to_string(getpid()) + ".xml";
  }();
  std::FILE* file = std::fopen(s_path.c_str(), "wb");
  Require(file != nullptr);
  Require(std::fwrite(bytes.data(), 1, bytes.size(), file) == bytes.size());
  Require(std::fclose(file) == 0);
  return s_path;
}

}  // namespace fuzz
