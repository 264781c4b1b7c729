#pragma once

#include <cstdint>
#include <memory>

#include "qenzor/platform/export.h"
#include "qenzor/platform/strings.h"

namespace qenzor {

/// A whole file as memory: a small one read, a large one mapped, without a copy. A mapped file that
/// another program cuts short would end this process, so it is mapped only under a lease, for which
/// writers wait, and only if all of it could be brought into memory.
class QENZOR_EXPORT CFileBytes {
 public:
  explicit CFileBytes(const CString& path) noexcept;
  ~CFileBytes();
  CFileBytes(const CFileBytes&) = delete;
  CFileBytes& operator=(const CFileBytes&) = delete;

  /// The file's bytes, valid while this object lives; null where the file has to be read otherwise:
  /// it is no plain file, or large and not this user's, being written, longer than 32 bits tell, or
  /// on a system that knows no leases.
  const std::uint8_t* GetBytes() const noexcept { return m_bytes; }
  bool IsMapped() const noexcept { return m_bytes != nullptr && m_copy == nullptr; }
  std::uint32_t GetSize() const noexcept { return m_size; }

 private:
  void Read(std::uint32_t size) noexcept;
  void Map() noexcept;

  const std::uint8_t* m_bytes = nullptr;
  std::unique_ptr<std::uint8_t[]> m_copy;  ///< where they are not mapped
  std::uint32_t m_size = 0;
  int m_file = -1;
};

}  // namespace qenzor
