#pragma once

#include <filesystem>

namespace qenzor::bench {

/// A temporary folder, removed with all that is in it. It lies in memory if there is enough of
/// that: no disk is to be measured.
class ScratchFolder {
 public:
  ScratchFolder();
  ~ScratchFolder();
  ScratchFolder(const ScratchFolder&) = delete;
  ScratchFolder& operator=(const ScratchFolder&) = delete;

  const std::filesystem::path& Path() const { return m_path; }

 private:
  std::filesystem::path m_path;
};

}  // namespace qenzor::bench
