#include <algorithm>

#include "qenzor/core/source_impl.h"

namespace qenzor {

const std::uint8_t* CFileSource::ReadValue(std::uint32_t size) {
  std::uint8_t* bytes = m_small.data();
  if (size > m_small.size()) {
    m_large.resize(size);
    bytes = m_large.data();
  }
  const std::uint32_t count = m_file.Read(bytes, size);
  if (count < size) {
    m_got = count;
    std::fill(bytes + count, bytes + size, std::uint8_t{0});
    m_whole = false;
  }
  return bytes;
}

const std::uint8_t* CFileSource::TakeLarge(std::uint64_t size) {
  if (m_window != nullptr && m_window->IsLengthKnown()) return nullptr;
  // The points of one object come at once.
  constexpr auto kStep = std::uint64_t{256} * 1024;
  m_large.clear();
  while (m_large.size() < size) {
    const std::size_t have = m_large.size();
    const auto step = static_cast<std::uint32_t>(std::min(size - have, kStep));
    m_large.resize(have + step);
    m_got = m_file.Read(m_large.data() + have, step);
    if (m_got != step) {
      m_got += have;
      return nullptr;
    }
  }
  m_consumed += static_cast<std::uint32_t>(size);
  return m_large.data();
}

}  // namespace qenzor
