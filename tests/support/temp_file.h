#pragma once

#include <gtest/gtest.h>
#include <unistd.h>

#include <atomic>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>

#include "tests/support/bytes.h"

namespace qenzor::testing {

/// A path of this test's own, whose file goes with the object.
class TempFile {
 public:
  TempFile() {
    static std::atomic<int> s_number{0};
    m_path = ::testing::TempDir() + "qenzor-" + std::to_string(::getpid()) + '-' +
             std::to_string(s_number++);
  }
  explicit TempFile(const Bytes& content) : TempFile() { Store(content); }
  explicit TempFile(std::string_view content) : TempFile() { Store(Bytes(content)); }
  ~TempFile() {
    std::error_code ignored;
    std::filesystem::remove(m_path, ignored);
  }
  TempFile(const TempFile&) = delete;
  TempFile& operator=(const TempFile&) = delete;

  const std::string& Path() const { return m_path; }
  std::string Text() const {
    std::ifstream file(m_path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
  }
  Bytes Content() const { return Bytes(Text()); }

 private:
  void Store(const Bytes& content) const {
    std::ofstream file(m_path, std::ios::binary);
    file.write(reinterpret_cast<const char*>(content.data()), content.size());
  }

  std::string m_path;
};

}  // namespace qenzor::testing
