#pragma once

#include <cstdint>

#include "qenzor/platform/export.h"
#include "qenzor/platform/strings.h"

namespace qenzor {

/// A large file as memory, without a copy of it. A mapped file that another program cuts short
/// would end this process, so it is mapped only under a lease, for which writers wait, and only if
/// all of it could be brought into memory. Whoever gets no mapping reads the file instead.
class QENZOR_EXPORT CMappedFile {
 public:
  explicit CMappedFile(const CString& path) noexcept;
  ~CMappedFile();
  CMappedFile(const CMappedFile&) = delete;
  CMappedFile& operator=(const CMappedFile&) = delete;

  /// The file's bytes, valid while this object lives; null where the file is not mapped: it is
  /// small, longer than 32 bits tell, not this user's, being written, or the system knows no
  /// leases.
  const std::uint8_t* GetBytes() const noexcept { return m_bytes; }
  std::uint32_t GetSize() const noexcept { return m_size; }

 private:
  const std::uint8_t* m_bytes = nullptr;
  std::uint32_t m_size = 0;
  int m_file = -1;
};

}  // namespace qenzor
