#pragma once

#include <cstdint>
#include <limits>
#include <utility>

#include "qenzor/platform/file.h"
#include "tests/support/bytes.h"

namespace qenzor::testing {

/// A file in memory that goes wrong at one of its calls, counted from 0 over reads and writes: a
/// read delivers half of what is asked and nothing after that, a write throws and so does every
/// later one.
class FaultyFile : public CMemFile {
 public:
  static constexpr std::uint32_t kNever = std::numeric_limits<std::uint32_t>::max();

  explicit FaultyFile(std::uint32_t fault_at) : m_faultAt(fault_at) {}
  FaultyFile(const Bytes& bytes, std::uint32_t fault_at)
      : CMemFile(bytes.vector()), m_faultAt(fault_at) {}

  std::uint32_t Read(void* data, std::uint32_t size) override {
    const std::uint32_t call = m_calls++;
    if (call < m_faultAt) return CMemFile::Read(data, size);
    return call == m_faultAt ? CMemFile::Read(data, size / 2) : 0;
  }
  void Write(const void* data, std::uint32_t size) override {
    if (m_calls++ >= m_faultAt) throw CFileException("the disk is full");
    CMemFile::Write(data, size);
  }

  std::uint32_t GetCalls() const { return m_calls; }

 private:
  std::uint32_t m_faultAt;
  std::uint32_t m_calls = 0;
};

/// A file whose position stops at its end.
class ClampedFile : public CMemFile {
 public:
  explicit ClampedFile(const Bytes& bytes) : CMemFile(bytes.vector()) {}

  std::uint64_t Seek(std::int64_t offset, SeekPosition from) override {
    const std::uint64_t position = CMemFile::Seek(offset, from);
    if (position <= GetLength()) return position;
    return CMemFile::Seek(static_cast<std::int64_t>(GetLength()), begin);
  }
};

/// A file whose reads throw from the given call on, counted from 0.
class ThrowingFile : public CMemFile {
 public:
  struct Thrown {};

  ThrowingFile(const Bytes& bytes, std::uint32_t throw_at)
      : CMemFile(bytes.vector()), m_throwAt(throw_at) {}

  std::uint32_t Read(void* data, std::uint32_t size) override {
    if (m_calls++ >= m_throwAt) throw Thrown();
    return CMemFile::Read(data, size);
  }

 private:
  std::uint32_t m_throwAt;
  std::uint32_t m_calls = 0;
};

}  // namespace qenzor::testing
