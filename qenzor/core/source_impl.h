#pragma once

#include <array>
#include <cassert>
#include <cstdint>
#include <vector>

#include "qenzor/core/read_log_impl.h"
#include "qenzor/platform/window_file_impl.h"

namespace qenzor {

/// The bytes of one primitive block in memory: the only place that touches them, and none past the
/// end given.
class CMemSource {
 public:
  CMemSource(const void* data, std::uint32_t size)
      : m_begin(static_cast<const std::uint8_t*>(data)), m_next(m_begin), m_left(size) {
    assert(data != nullptr || size == 0);
  }

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
  /// Whether so many bytes are left for certain.
  bool Has(std::uint64_t size) const noexcept { return size <= m_left; }
  // Nobody asks why memory cannot be read.
  static constexpr bool Misses(std::string_view /*tag*/, std::uint64_t /*size*/) { return false; }
  static constexpr bool Refuses(std::string_view /*tag*/, std::uint32_t /*size*/,
                                std::uint32_t /*most*/) {
    return false;
  }
  std::uint32_t GetConsumed() const noexcept {
    return static_cast<std::uint32_t>(m_next - m_begin);
  }

 private:
  const std::uint8_t* m_begin;
  const std::uint8_t* m_next;
  std::uint32_t m_left;
};

/// The same from an open file: where they lie if it lends them, else through a buffer of the call,
/// which grows with what arrives and never with what is asked for. A file that is read as memory
/// gives the same as memory would, piece by piece.
class CFileSource {
 public:
  /// The most bytes that a value has, and those that an array may be read by.
  static constexpr std::uint32_t kPiece = 64 * 1024;

  explicit CFileSource(CFile& file) : m_file(file), m_window(AsWindow(file)) {}

  /// The next size bytes, valid until the next call; null when the file delivers fewer, and for
  /// more than kPiece when it Has them: they are to be taken in pieces.
  const std::uint8_t* Take(std::uint64_t size) {
    return size <= kPiece ? Finish(TakeValue(static_cast<std::uint32_t>(size))) : TakeLarge(size);
  }
  /// The bytes of a value, at most 64 KiB. A value takes what there is: of fewer bytes the rest is
  /// zero, and the source is not whole from then on.
  const std::uint8_t* TakeValue(std::uint32_t size) {
    assert(size <= kPiece);
    m_consumed += size;
    const std::uint8_t* lent = m_file.TakeBlock(size);
    return lent != nullptr || m_window != nullptr ? lent : ReadValue(size);
  }
  bool IsWhole() const noexcept { return m_whole; }
  /// Says that a field of size bytes did not come whole, or is longer than it may be; false.
  bool Misses(std::string_view tag, std::uint64_t size) const {
    return NoteShortField(m_file, tag, size, m_window != nullptr ? m_window->GetLeft() : m_got);
  }
  bool Refuses(std::string_view tag, std::uint32_t size, std::uint32_t most) const {
    return NoteTooLongText(m_file, tag, size, most);
  }
  bool Has(std::uint64_t size) const noexcept { return m_window != nullptr && m_window->Has(size); }
  bool ReadsAsMemory() const noexcept { return m_window != nullptr; }
  /// Goes back to where only so many bytes were consumed.
  void GoBackTo(std::uint32_t consumed) {
    assert(consumed <= m_consumed && ReadsAsMemory());
    if (consumed == m_consumed) return;
    m_file.Seek(std::int64_t{consumed} - std::int64_t{m_consumed}, CFile::current);
    m_consumed = consumed;
  }
  std::uint32_t GetConsumed() const noexcept { return m_consumed; }

 private:
  const std::uint8_t* Finish(const std::uint8_t* bytes) const noexcept {
    return m_whole ? bytes : nullptr;
  }
  const std::uint8_t* ReadValue(std::uint32_t size);
  const std::uint8_t* TakeLarge(std::uint64_t size);

  CFile& m_file;
  CWindowFile* m_window;
  std::uint32_t m_consumed = 0;
  bool m_whole = true;
  std::uint64_t m_got = 0;  ///< of the field that did not come whole
  std::array<std::uint8_t, 16> m_small;
  std::vector<std::uint8_t> m_large;
};

}  // namespace qenzor
