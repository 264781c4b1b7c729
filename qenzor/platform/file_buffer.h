#pragma once

#include <cassert>
#include <cstddef>
#include <cstdint>
#include <memory>

#include "qenzor/platform/export.h"

namespace qenzor {

/// The buffer between a file and its user. It holds bytes that were read ahead, or bytes that were
/// written but not yet passed on, or nothing. It can be lent, so that blocks are read from it and
/// assembled in it without a copy.
class QENZOR_EXPORT CFileBuffer {
 public:
  enum class State : std::uint8_t { kNeither, kReading, kWriting };
  static constexpr std::uint32_t kReadSize = 64 * 1024;
  static constexpr std::uint32_t kWriteSize = 256 * 1024;

  CFileBuffer() noexcept;
  ~CFileBuffer();
  CFileBuffer(const CFileBuffer&) = delete;
  CFileBuffer& operator=(const CFileBuffer&) = delete;

  /// The most bytes to read ahead, and how many to keep behind the user.
  void SetReading(std::uint32_t size, std::uint32_t behind) noexcept;
  /// Blocks up to this length are always lent in one piece, if that many bytes are there.
  std::uint32_t GetMostTaken() const noexcept { return m_readSize - m_behind; }
  /// Whether the buffer is lent from now on.
  void SetLending(bool lends) noexcept;
  bool Lends() const noexcept { return m_lends; }
  State GetState() const noexcept { return m_state; }
  /// Changes the state and forgets what the buffer holds. When memory runs out, false, and the
  /// buffer is in neither state.
  bool Start(State state) noexcept;

  // While reading.

  /// Bytes read ahead of the user.
  std::uint32_t GetLeft() const noexcept {
    return m_state == State::kReading ? static_cast<std::uint32_t>(m_end - m_next) : 0;
  }
  /// Bytes behind the user that are still there.
  std::uint32_t GetPassed() const noexcept {
    return m_state == State::kReading ? static_cast<std::uint32_t>(m_next - m_bytes.get()) : 0;
  }
  /// Moves the user forward or back within the bytes that are there.
  void Move(std::int64_t offset) noexcept {
    assert(-offset <= GetPassed() && offset <= GetLeft());
    m_next += offset;
  }
  const std::uint8_t* GetNext() const noexcept { return m_next; }
  /// Takes size bytes, if so many are left and the buffer lends them; else null.
  const std::uint8_t* TakeLent(std::uint32_t size) noexcept {
    if (m_lentBytes - m_next < static_cast<std::ptrdiff_t>(size)) return nullptr;
    const std::uint8_t* bytes = m_next;
    m_next += size;
    return bytes;
  }
  /// Brings what is left, and what is kept, to the front; behind it is room for more.
  struct Room {
    std::uint8_t* Begin;
    std::uint32_t Size;
  };
  Room MakeRoomToRead() noexcept;
  /// Says how much of that room was filled.
  void AddRead(std::uint32_t size) noexcept;

  // While writing.

  std::uint32_t GetRoom() const noexcept {
    return m_state == State::kWriting ? static_cast<std::uint32_t>(m_end - m_next) : 0;
  }
  std::uint32_t GetWritten() const noexcept {
    return m_state == State::kWriting ? static_cast<std::uint32_t>(m_next - m_bytes.get()) : 0;
  }
  const std::uint8_t* GetFront() const noexcept { return m_bytes.get(); }
  /// Copies bytes for which there is room.
  void Put(const void* data, std::uint32_t size) noexcept;
  /// Room for size bytes, if there is so much and the buffer lends it; else null.
  std::uint8_t* LendRoom(std::uint32_t size) const noexcept {
    return m_lentRoom - m_next < static_cast<std::ptrdiff_t>(size) ? nullptr : m_next;
  }
  /// Counts what was put into lent room up to here.
  void EndRoom(std::uint8_t* end) noexcept {
    assert(end == m_next || (m_state == State::kWriting && end > m_next && end <= m_end));
    m_next = end;
  }

 private:
  void UpdateLent() noexcept;

  std::unique_ptr<std::uint8_t[]> m_bytes;
  std::uint32_t m_size = 0;
  std::uint32_t m_readSize = kReadSize;
  std::uint32_t m_behind = 0;
  std::uint8_t* m_next = nullptr;
  std::uint8_t* m_end = nullptr;        ///< of the bytes read, or of the room
  std::uint8_t* m_lentBytes = nullptr;  ///< m_end while bytes are lent, else not behind m_next
  std::uint8_t* m_lentRoom = nullptr;   ///< the same for room
  State m_state = State::kNeither;
  bool m_lends = false;
};

}  // namespace qenzor
