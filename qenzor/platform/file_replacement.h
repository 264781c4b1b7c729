#pragma once

#include <memory>

#include "qenzor/platform/file.h"

namespace qenzor {

/// Writes a file that takes the place of another as a whole: until Finish has succeeded, and after
/// any failure, the path leads to the file that was there before, or to none. Nothing else is left
/// in its folder either, whatever ends the process, where the system knows files without a name;
/// one of the name ".qenzor-…" where it knows none, or in the instant between the last two steps.
///
/// Symbolic links are followed, also to a name that is missing. A regular file keeps its
/// permissions, but not those by which programs run as somebody else, and its owner where that is
/// allowed; one that its owner made read-only is refused. Where the folder takes no new file, or
/// the file cannot be exchanged (it is mounted there, say), the content is written over that of the
/// file once all of it is there. What is no regular file (a device, a pipe), and what this process
/// has open, as /dev/stdout names it, is written to as it stands. Objects are independent of each
/// other, on whatever threads.
class QENZOR_EXPORT CFileReplacement {
 public:
  CFileReplacement();
  ~CFileReplacement();  ///< without Finish nothing has happened
  CFileReplacement(const CFileReplacement&) = delete;
  CFileReplacement& operator=(const CFileReplacement&) = delete;

  /// Makes ready to write what the path shall lead to. False when it cannot.
  bool Open(const CString& path);
  /// Makes ready to write to a descriptor, which stays the caller's.
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

/// Removes what CFileReplacement has in folders under names of its own, and keeps it from making
/// more, in this process. For the handler of a signal that ends the process: it calls nothing that
/// must not be called there.
QENZOR_EXPORT void RemoveScratchFiles() noexcept;

}  // namespace qenzor
