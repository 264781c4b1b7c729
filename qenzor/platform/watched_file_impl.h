#pragma once

#include <functional>
#include <utility>

#include "qenzor/platform/file.h"

namespace qenzor {

/// Called with the number of bytes read so far; false ends the reading.
using ReadWatch = std::function<bool(std::uint64_t done)>;

/// Another file, whose reader is watched.
class CWatchedFile final : public CFile {
 public:
  /// The watch is called at once when more than most bytes have been read.
  CWatchedFile(CFile& file, std::uint64_t most, ReadWatch watch)
      : m_file(file), m_watch(std::move(watch)), m_front(file.GetPosition()), m_most(most) {}

  std::uint32_t Read(void* data, std::uint32_t size) override {
    if (!m_mayRead) return 0;
    const std::uint64_t before = m_file.GetPosition() - m_front;
    // One byte more than may be read tells that there is more.
    if (m_most >= before && size > m_most - before)
      size = static_cast<std::uint32_t>(m_most - before) + 1;
    const std::uint32_t count = m_file.Read(data, size);
    const std::uint64_t done = before + count;
    if (done >= m_next || done > m_most) {
      m_next = done + kStep;
      m_mayRead = m_watch(done);
    }
    return m_mayRead ? count : 0;
  }
  std::uint64_t GetLength() const override { return m_file.GetLength(); }
  std::uint64_t GetPosition() const override { return m_file.GetPosition(); }
  std::uint64_t Seek(std::int64_t offset, SeekPosition from) override {
    return m_file.Seek(offset, from);
  }

 private:
  /// The watch is asked every so many bytes only.
  static constexpr std::uint64_t kStep = std::uint64_t{64} * 1024;

  CFile& m_file;
  ReadWatch m_watch;
  std::uint64_t m_front;
  std::uint64_t m_most;
  std::uint64_t m_next = 0;
  bool m_mayRead = true;
};

}  // namespace qenzor
