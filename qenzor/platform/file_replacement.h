#pragma once

#include <memory>

#include "qenzor/platform/file.h"

namespace qenzor {

/// Replaces a file as a whole: until Finish has succeeded, and after any failure, the path leads to
/// the file that was there before, or to none. Where the system supports files without a name,
/// nothing else is left in the folder either, however the process ends; elsewhere, and in the
/// instant between the last two steps, a file named ".qenzor-…" may remain.
///
/// Symbolic links are followed, even where they lead to nothing yet. A regular file keeps its
/// permissions, except those that let programs run as somebody else, and its owner where the system
/// allows it; a read-only file is refused. If the folder takes no new file, or the file cannot be
/// exchanged (because it is a mount point, say), the old content is overwritten once all of the new
/// one is there. Anything but a regular file (a device, a pipe), and whatever this process has
/// open, as named by /dev/stdout, is written to directly. Objects are independent of each other and
/// may live on different threads.
class QENZOR_EXPORT CFileReplacement {
 public:
  CFileReplacement();
  ~CFileReplacement();  ///< without Finish nothing has happened
  CFileReplacement(const CFileReplacement&) = delete;
  CFileReplacement& operator=(const CFileReplacement&) = delete;

  /// Prepares to write what the path is to lead to; false on failure.
  bool Open(const CString& path);
  /// Prepares to write to a descriptor, which stays the caller's.
  bool OpenDescriptor(int descriptor);
  /// Where to write, from front to back; valid after a successful opening, while this object lives.
  CFile& GetFile() noexcept;
  /// Ends the writing and puts the file in its place. With sync, the file and its folder have
  /// reached the disk before this is true. False, also for what could not be written before.
  bool Finish(bool sync = true);
  /// Why the last operation failed, or the file did not take what was written to it, as "cannot be
  /// written: No space left on device".
  CString GetError() const;

 private:
  struct State;

  bool OpenFile();
  bool Publish(bool sync);
  bool Fail(int error);

  std::unique_ptr<State> m_state;
  CString m_error;
};

/// Removes the temporary files that CFileReplacement has in folders, and keeps this process from
/// making more. Meant for the handler of a signal that ends the process: it only calls what may be
/// called there.
QENZOR_EXPORT void RemoveScratchFiles() noexcept;

}  // namespace qenzor
