#pragma once

#include "qenzor/platform/file.h"

namespace qenzor {

/// An open descriptor of the system's; -1 is none.
class CDescriptor {
 public:
  CDescriptor() noexcept = default;
  explicit CDescriptor(int descriptor) noexcept : m_descriptor(descriptor) {}
  ~CDescriptor() { static_cast<void>(Close()); }
  CDescriptor(const CDescriptor&) = delete;
  CDescriptor& operator=(const CDescriptor&) = delete;

  int Get() const noexcept { return m_descriptor; }
  bool IsOpen() const noexcept { return m_descriptor >= 0; }
  void Reset(int descriptor) noexcept;
  /// False, with errno, when the system says only now that something was not written.
  bool Close() noexcept;

 private:
  int m_descriptor = -1;
};

/// A descriptor of somebody else's as a file that is written from front to back. A failure sticks.
class CDescriptorFile final : public CFile {
 public:
  /// Throws std::bad_alloc.
  void Attach(int descriptor);

  std::uint32_t Read(void* data, std::uint32_t size) override;  ///< always 0
  std::uint64_t GetLength() const override { return GetPosition(); }
  std::uint64_t GetPosition() const override { return m_sent + CFile::GetPosition(); }

  /// Sends what is gathered; true when everything written has been taken.
  bool Finish() noexcept;
  int GetError() const noexcept { return m_error; }  ///< as errno has it; 0 for none

 private:
  void WriteThrough(const void* data, std::uint32_t size) override;

  int m_descriptor = -1;
  int m_error = 0;
  std::uint64_t m_sent = 0;
};

}  // namespace qenzor
