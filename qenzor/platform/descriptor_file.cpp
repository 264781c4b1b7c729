#include <cassert>
#include <cerrno>
#include <utility>

#include "qenzor/platform/descriptor_file_impl.h"
#include "qenzor/platform/descriptor_impl.h"

namespace qenzor {

void CDescriptor::Reset(int descriptor) noexcept {
  static_cast<void>(Close());
  m_descriptor = descriptor;
}

bool CDescriptor::Close() noexcept {
  const int file = std::exchange(m_descriptor, descriptor::kNone);
  return file == descriptor::kNone || descriptor::Close(file);
}

void CDescriptorFile::Attach(int descriptor) {
  assert(descriptor >= 0 && m_descriptor < 0);
  AllowWriting();
  LendBuffer();
  m_descriptor = descriptor;
  // Want of memory shows here, and not in the middle of what is written.
  static_cast<void>(BeginBlock(1));
}

std::uint32_t CDescriptorFile::Read(void* /*data*/, std::uint32_t /*size*/) { return 0; }

bool CDescriptorFile::Finish() noexcept {
  try {
    if (m_error == 0) Flush();
  } catch (const CFileException&) {
    return false;
  }
  return m_error == 0 && !HasFailed();
}

void CDescriptorFile::WriteThrough(const void* data, std::uint32_t size) {
  if (m_error == 0 && descriptor::Write(m_descriptor, data, size)) {
    m_sent += size;
    return;
  }
  if (m_error == 0) m_error = errno;
  throw CFileException("the file does not take what is written");
}

}  // namespace qenzor
