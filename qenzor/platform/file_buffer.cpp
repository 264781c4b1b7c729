#include "qenzor/platform/file_buffer.h"

#include <algorithm>
#include <cstring>
#include <new>

namespace qenzor {

CFileBuffer::CFileBuffer() noexcept = default;
CFileBuffer::~CFileBuffer() = default;

void CFileBuffer::SetReading(std::uint32_t size, std::uint32_t behind) noexcept {
  assert(m_state != State::kReading && behind < size);
  m_readSize = size;
  m_behind = behind;
}

void CFileBuffer::SetLending(bool lends) noexcept {
  m_lends = lends;
  UpdateLent();
}

bool CFileBuffer::Start(State state) noexcept {
  const std::uint32_t size = state == State::kNeither   ? 0
                             : state == State::kReading ? m_readSize
                                                        : kWriteSize;
  if (m_size < size) {
    m_bytes.reset(new (std::nothrow) std::uint8_t[size]);
    m_size = m_bytes == nullptr ? 0 : size;
  }
  const bool started = m_size >= size;
  m_state = started ? state : State::kNeither;
  m_next = m_bytes.get();
  m_end = m_state == State::kWriting ? m_next + m_size : m_next;
  UpdateLent();
  return started;
}

CFileBuffer::Room CFileBuffer::MakeRoomToRead() noexcept {
  assert(m_state == State::kReading);
  const std::uint32_t behind = std::min(GetPassed(), m_behind);
  const std::uint32_t left = GetLeft();
  std::memmove(m_bytes.get(), m_next - behind, behind + left);
  m_next = m_bytes.get() + behind;
  m_end = m_next + left;
  UpdateLent();
  return {m_end, m_size - behind - left};
}

void CFileBuffer::AddRead(std::uint32_t size) noexcept {
  assert(m_state == State::kReading && m_end + size <= m_bytes.get() + m_size);
  m_end += size;
  UpdateLent();
}

void CFileBuffer::Put(const void* data, std::uint32_t size) noexcept {
  assert(size <= GetRoom());
  std::memcpy(m_next, data, size);
  m_next += size;
}

void CFileBuffer::UpdateLent() noexcept {
  m_lentBytes = m_lends && m_state == State::kReading ? m_end : m_bytes.get();
  m_lentRoom = m_lends && m_state == State::kWriting ? m_end : m_bytes.get();
}

}  // namespace qenzor
