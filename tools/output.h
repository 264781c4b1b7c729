#pragma once

#include <functional>
#include <string>

#include "qenzor/platform/file.h"

namespace tool {

/// Has write fill the file at the path, "-" being standard output. A regular file is replaced by a
/// rename when all of it stands on the disk: until then, and after any failure or signal, it is as
/// it was. Throws CFailure.
void WriteOutput(const std::string& path, const std::function<bool(qenzor::CFile&)>& write);

/// A file in the folder for temporary files, gone when the object goes, or the process by a signal.
class CScratchFile {
 public:
  explicit CScratchFile(const std::string& folder);
  ~CScratchFile();
  CScratchFile(const CScratchFile&) = delete;
  CScratchFile& operator=(const CScratchFile&) = delete;

  const std::string& GetPath() const { return m_path; }
  /// Gives the file its final name; false when that fails.
  bool MoveTo(const std::string& path);

 private:
  std::string m_path;
};

/// From now on SIGINT, SIGTERM and SIGHUP remove the scratch file before they end the process.
void WatchSignals();

}  // namespace tool
