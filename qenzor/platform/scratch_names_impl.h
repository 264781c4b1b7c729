#pragma once

// The names that scratch files have while they are written, where RemoveScratchFiles finds them.

#include <atomic>
#include <cstdint>
#include <functional>

#include "qenzor/platform/strings.h"

namespace qenzor {

struct ScratchSlot;

/// A name for a scratch file, which no other has. More than 64 at once are not entered anywhere.
class CScratchName {
 public:
  explicit CScratchName(const CString& folder);
  ~CScratchName();  ///< leaves the file alone
  CScratchName(const CScratchName&) = delete;
  CScratchName& operator=(const CScratchName&) = delete;

  const CString& Get() const noexcept { return m_name; }
  /// Runs what makes, moves or removes the file, and says whether a file has the name then. This
  /// thread takes no signal meanwhile, and RemoveScratchFiles waits; once that has been called,
  /// nothing is run: false, with errno.
  bool Change(const std::function<bool()>& change) noexcept;

 private:
  CString m_name;
  ScratchSlot* m_slot = nullptr;
};

}  // namespace qenzor
