#pragma once

#include <array>
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <memory>
#include <string_view>

namespace qenzor::bench {

/// The bytes of a file.
struct FileBytes {
  std::unique_ptr<std::uint8_t[]> Data;
  std::size_t Size = 0;
};

/// Reads a whole file with plain fread. Throws std::runtime_error.
FileBytes ReadWholeFile(const std::filesystem::path& path);

/// A file that is written through a buffer of 64 KiB, the floor of all writing.
class PlainWriter {
 public:
  /// Creates or empties the file. Throws std::runtime_error, as writing does.
  explicit PlainWriter(const std::filesystem::path& path);
  ~PlainWriter();
  PlainWriter(const PlainWriter&) = delete;
  PlainWriter& operator=(const PlainWriter&) = delete;

  /// Room for size bytes, at most kSize; what was used of it is told to Advance.
  std::uint8_t* Room(std::size_t size) {
    if (kSize - m_used < size) Flush();
    return m_buffer.data() + m_used;
  }
  void Advance(std::size_t size) { m_used += size; }
  /// Writes a block of at most kSize bytes.
  void Put(const void* data, std::size_t size) {
    std::memcpy(Room(size), data, size);
    m_used += size;
  }
  void Flush();

  static constexpr std::size_t kSize = 64 * 1024;

 private:
  std::array<std::uint8_t, kSize> m_buffer;
  std::size_t m_used = 0;
  int m_file;
};

}  // namespace qenzor::bench
