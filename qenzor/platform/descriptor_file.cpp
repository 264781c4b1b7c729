#include <poll.h>
#include <unistd.h>

#include <cerrno>
#include <utility>

#include "qenzor/platform/descriptor_file_impl.h"

namespace qenzor {

void CDescriptor::Reset(int descriptor) noexcept {
  static_cast<void>(Close());
  m_descriptor = descriptor;
}

bool CDescriptor::Close() noexcept {
  const int descriptor = std::exchange(m_descriptor, -1);
  return descriptor < 0 || ::close(descriptor) == 0 || errno == EINTR;
}

bool WriteAll(int descriptor, const void* data, std::size_t size) noexcept {
  const auto* bytes = static_cast<const std::uint8_t*>(data);
  while (size != 0) {
    const ssize_t count = ::write(descriptor, bytes, size);
    if (count >= 0) {
      bytes += count;
      size -= static_cast<std::size_t>(count);
    } else if (errno == EAGAIN) {
      pollfd ready{descriptor, POLLOUT, 0};
      if (::poll(&ready, 1, -1) < 0 && errno != EINTR) return false;
    } else if (errno != EINTR) {
      return false;
    }
  }
  return true;
}

void CDescriptorFile::Attach(int descriptor) {
  AllowWriting();
  LendBuffer();
  m_descriptor = descriptor;
}

std::uint32_t CDescriptorFile::Read(void* /*data*/, std::uint32_t /*size*/) { return 0; }

bool CDescriptorFile::Finish() noexcept {
  try {
    if (m_error == 0) Flush();
  } catch (const CFileException&) {
    return false;
  }
  return m_error == 0;
}

void CDescriptorFile::WriteThrough(const void* data, std::uint32_t size) {
  if (m_error == 0 && WriteAll(m_descriptor, data, size)) {
    m_sent += size;
    return;
  }
  if (m_error == 0) m_error = errno;
  throw CFileException("the file does not take what is written");
}

}  // namespace qenzor
