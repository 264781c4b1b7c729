#pragma once

#include <memory>

#include "qenzor/platform/descriptor_file_impl.h"
#include "qenzor/platform/scratch_names_impl.h"

namespace qenzor {

/// A file that is written before it is given its name. Where the system can, it has none until
/// then; elsewhere it has one of its own, which goes with the object. Operations that give false
/// leave the reason in errno.
class CScratchFile {
 public:
  CScratchFile() = default;
  ~CScratchFile();
  CScratchFile(const CScratchFile&) = delete;
  CScratchFile& operator=(const CScratchFile&) = delete;

  /// Makes the file, with these permissions as far as the process's mask lets it.
  bool Create(const CString& folder, unsigned permissions);
  int GetDescriptor() const noexcept { return m_file.Get(); }
  /// Gives the file the path, in its own folder, as its name; in one step the file that has it now
  /// loses it. Afterwards, or after a failure, it has no other name.
  bool MoveTo(const CString& path);
  /// Writes the content over that of the file at the path. No signal that this process handles
  /// comes in between.
  bool CopyOver(const CString& path);

 private:
  CString SelfPath() const;

  CDescriptor m_file;
  std::unique_ptr<CScratchName> m_name;
  bool m_isNamed = false;
};

}  // namespace qenzor
