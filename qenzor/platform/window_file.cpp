#include <algorithm>
#include <cassert>
#include <cerrno>
#include <cstring>
#include <limits>
#include <new>

#include "qenzor/platform/descriptor_impl.h"
#include "qenzor/platform/window_file_impl.h"

namespace qenzor {

bool CWindowFile::Open(const CString& path, std::uint32_t flags) {
  constexpr std::uint64_t kMost = std::numeric_limits<std::uint32_t>::max();
  if (!CFile::Open(path, flags)) return false;
  const auto kind = descriptor::GetKind(GetDescriptor());
  m_isLengthKnown = kind == descriptor::Kind::kPlain;
  if (kind != descriptor::Kind::kOther && Measure(m_isLengthKnown ? GetLength() : kMost))
    return true;
  Close();
  return false;
}

bool CWindowFile::OpenMemory(std::span<const std::uint8_t> bytes) {
  assert(m_memory == nullptr && GetDescriptor() < 0);
  AllowReading();
  m_memory = bytes.data();
  m_isLengthKnown = true;
  return Measure(bytes.size());
}

bool CWindowFile::Measure(std::uint64_t length) {
  m_length = length;
  m_isTooLong = length > std::numeric_limits<std::uint32_t>::max();
  if (m_isTooLong) return false;
  if (length > kSize)
    ReadAsMemory(kSize, kBehind);
  else
    ReadAsMemory(std::max(static_cast<std::uint32_t>(length), std::uint32_t{1}), 0);
  if (TakeBlock(0) == nullptr) throw std::bad_alloc();
  return true;
}

std::uint32_t CWindowFile::GetLeft() const noexcept {
  assert(CFile::GetPosition() <= m_length);
  return static_cast<std::uint32_t>(m_length - CFile::GetPosition());
}

std::span<const std::uint8_t> CWindowFile::Peek(std::uint32_t size) {
  if (!m_isLengthKnown) return {};
  size = std::min(size, GetLeft());
  const std::uint8_t* bytes = TakeBlock(size);
  if (bytes == nullptr) return {};
  CFile::Seek(-std::int64_t{size}, current);
  return {bytes, size};
}

std::uint32_t CWindowFile::ReadThrough(void* data, std::uint32_t size) noexcept {
  const std::uint64_t position = GetSystemPosition();
  const auto wanted =
      static_cast<std::uint32_t>(std::min<std::uint64_t>(size, m_length - position));
  if (wanted == 0) return 0;
  std::uint32_t count = wanted;
  if (m_memory != nullptr) {
    std::memcpy(data, m_memory + position, wanted);
    AddRead(wanted);
  } else {
    errno = 0;
    count = CFile::ReadThrough(data, wanted);
    if (count == 0) {
      m_error = errno;
      m_length = position;  // a pipe ends here; a file, too, which has become shorter
    }
  }
  if (!m_watch || m_watch(position + count)) return count;
  m_length = GetSystemPosition();  // nothing more comes
  return 0;
}

}  // namespace qenzor
