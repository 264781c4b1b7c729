#pragma once

#include <functional>
#include <utility>

#include "qenzor/platform/file.h"

namespace qenzor {

/// Hears how many bytes have been read; false keeps more from coming.
using ReadWatch = std::function<bool(std::uint64_t done)>;

/// Another file, whose reader is watched.
class CWatchedFile final : public CFile {
 public:
  /// The watch hears at once of more than most bytes.
  CWatchedFile(CFile& file, std::uint64_t most, ReadWatch watch)
      : m_file(file), m_watch(std::move(watch)), m_front(file.GetPosition()), m_most(most) {}

  std::uint32_t Read(void* data, std::uint32_t size) override {
    return MayRead(size) ? m_file.Read(data, size) : 0;
  }
  std::uint64_t GetLength() const override { return m_file.GetLength(); }
  std::uint64_t GetPosition() const override { return m_file.GetPosition(); }
  std::uint64_t Seek(std::int64_t offset, SeekPosition from) override {
    return m_file.Seek(offset, from);
  }

 private:
  /// The watch is asked every so many bytes only.
  static constexpr std::uint64_t kStep = std::uint64_t{64} * 1024;

  bool MayRead(std::uint32_t size) {
    const std::uint64_t done = m_file.GetPosition() - m_front + size;
    if (m_mayRead && (done >= m_next || done > m_most)) {
      m_next = done + kStep;
      m_mayRead = m_watch(done);
    }
    return m_mayRead;
  }

  CFile& m_file;
  ReadWatch m_watch;
  std::uint64_t m_front;
  std::uint64_t m_most;
  std::uint64_t m_next = 0;
  bool m_mayRead = true;
};

}  // namespace qenzor
