#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <vector>

#include "qenzor/platform/file.h"

namespace qenzor {

/// The bytes of one primitive block in memory: the only place that touches them, and none past the
/// end given.
class CMemSource {
 public:
  CMemSource(const void* data, std::uint32_t size)
      : m_begin(static_cast<const std::uint8_t*>(data)), m_next(m_begin), m_left(size) {}

  /// The next size bytes, which stay valid while the memory does; null when there are fewer.
  const std::uint8_t* Take(std::uint64_t size) noexcept {
    if (size > m_left) return nullptr;
    const std::uint8_t* bytes = m_next;
    m_next += size;
    m_left -= static_cast<std::uint32_t>(size);
    return bytes;
  }
  std::uint32_t GetConsumed() const noexcept {
    return static_cast<std::uint32_t>(m_next - m_begin);
  }

 private:
  const std::uint8_t* m_begin;
  const std::uint8_t* m_next;
  std::uint32_t m_left;
};

/// The same from an open file. The bytes go through a buffer of the call, which grows with what
/// arrives and never with what is asked for.
class CFileSource {
 public:
  explicit CFileSource(CFile& file) : m_file(file) {}

  /// The next size bytes, valid until the next call; null when the file delivers fewer.
  const std::uint8_t* Take(std::uint64_t size) {
    if (size <= m_small.size()) {
      const auto count = static_cast<std::uint32_t>(size);
      m_consumed += count;
      return m_file.Read(m_small.data(), count) == count ? m_small.data() : nullptr;
    }
    return TakeLarge(size);
  }
  std::uint32_t GetConsumed() const noexcept { return m_consumed; }

 private:
  const std::uint8_t* TakeLarge(std::uint64_t size) {
    constexpr auto kStep = std::uint64_t{64} * 1024;
    m_large.clear();
    while (m_large.size() < size) {
      const std::size_t have = m_large.size();
      const auto step = static_cast<std::uint32_t>(std::min(size - have, kStep));
      m_large.resize(have + step);
      if (m_file.Read(m_large.data() + have, step) != step) return nullptr;
    }
    m_consumed += static_cast<std::uint32_t>(size);
    return m_large.data();
  }

  CFile& m_file;
  std::uint32_t m_consumed = 0;
  std::array<std::uint8_t, 16> m_small{};
  std::vector<std::uint8_t> m_large;
};

}  // namespace qenzor
