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
  /// The bytes of a value, which takes none of them when there are too few.
  const std::uint8_t* TakeValue(std::uint32_t size) noexcept { return Take(size); }
  static constexpr bool IsWhole() noexcept { return true; }
  std::uint32_t GetConsumed() const noexcept {
    return static_cast<std::uint32_t>(m_next - m_begin);
  }

 private:
  const std::uint8_t* m_begin;
  const std::uint8_t* m_next;
  std::uint32_t m_left;
};

/// The same from an open file: where they lie if it lends them, else through a buffer of the call,
/// which grows with what arrives and never with what is asked for.
class CFileSource {
 public:
  explicit CFileSource(CFile& file) : m_file(file) {}

  /// The next size bytes, valid until the next call; null when the file delivers fewer.
  const std::uint8_t* Take(std::uint64_t size) {
    return size <= kMostOfValue ? Finish(TakeValue(static_cast<std::uint32_t>(size)))
                                : TakeLarge(size);
  }
  /// The bytes of a value, at most 64 KiB. A value takes what there is: of fewer bytes the rest is
  /// zero, and the source is not whole from then on.
  const std::uint8_t* TakeValue(std::uint32_t size) {
    m_consumed += size;
    const std::uint8_t* lent = m_file.TakeBlock(size);
    return lent != nullptr ? lent : ReadValue(size);
  }
  bool IsWhole() const noexcept { return m_whole; }
  std::uint32_t GetConsumed() const noexcept { return m_consumed; }

 private:
  static constexpr std::uint32_t kMostOfValue = 64 * 1024;

  const std::uint8_t* Finish(const std::uint8_t* bytes) const noexcept {
    return m_whole ? bytes : nullptr;
  }
  const std::uint8_t* ReadValue(std::uint32_t size) {
    std::uint8_t* bytes = m_small.data();
    if (size > m_small.size()) {
      m_large.resize(size);
      bytes = m_large.data();
    }
    const std::uint32_t count = m_file.Read(bytes, size);
    if (count < size) {
      std::fill(bytes + count, bytes + size, std::uint8_t{0});
      m_whole = false;
    }
    return bytes;
  }
  const std::uint8_t* TakeLarge(std::uint64_t size) {
    // The points of one object come at once.
    constexpr auto kStep = std::uint64_t{256} * 1024;
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
  bool m_whole = true;
  std::array<std::uint8_t, 16> m_small;
  std::vector<std::uint8_t> m_large;
};

}  // namespace qenzor
