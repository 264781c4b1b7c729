#include <algorithm>
#include <limits>

#include "qenzor/platform/descriptor_impl.h"
#include "qenzor/platform/window_file_impl.h"

namespace qenzor {

bool CWindowFile::Open(const CString& path, std::uint32_t flags) {
  constexpr std::uint64_t kMost = std::numeric_limits<std::uint32_t>::max();
  if (!CFile::Open(path, flags)) return false;
  const auto kind = descriptor::GetKind(GetDescriptor());
  m_isLengthKnown = kind == descriptor::Kind::kPlain;
  m_length = m_isLengthKnown ? GetLength() : kMost;
  if (kind == descriptor::Kind::kOther || m_length > kMost) {
    Close();
    return false;
  }
  if (m_length > kSize)
    ReadAsMemory(kSize, kBehind);
  else
    ReadAsMemory(std::max(static_cast<std::uint32_t>(m_length), std::uint32_t{1}), 0);
  return true;
}

std::uint32_t CWindowFile::GetLeft() const noexcept {
  return static_cast<std::uint32_t>(m_length - CFile::GetPosition());
}

std::uint32_t CWindowFile::ReadThrough(void* data, std::uint32_t size) noexcept {
  const std::uint64_t left = m_length - GetSystemPosition();
  return CFile::ReadThrough(data, static_cast<std::uint32_t>(std::min<std::uint64_t>(size, left)));
}

}  // namespace qenzor
