#pragma once

#include <span>

#include "qenzor/platform/watched_file_impl.h"

namespace qenzor {

/// A file that is read as if all of its bytes lay in memory, of which only a window does. Chunks
/// may look at whatever bytes remain, and go back a little: see kBehind.
class CWindowFile final : public CFile {
 public:
  /// The window slides over a file that does not fit into it.
  static constexpr std::uint32_t kSize = 256 * 1024;
  /// How far a chunk may go back from the end of its fields: what 16 bits cannot tell.
  static constexpr std::uint32_t kBehind = 64 * 1024;

  /// Opens a plain file or a pipe. False for devices, and for more bytes than 32 bits can count.
  /// Throws std::bad_alloc where there is no memory for the window, which is not found out later.
  bool Open(const CString& path, std::uint32_t flags) override;
  /// Makes these bytes, which stay the caller's, the content. False for more than 32 bits can
  /// count; throws likewise.
  bool OpenMemory(std::span<const std::uint8_t> bytes);
  /// Whether opening failed because there is too much.
  bool IsTooLong() const noexcept { return m_isTooLong; }
  /// Reports the reading to the watch, which must not throw.
  void SetWatch(ReadWatch watch) { m_watch = std::move(watch); }
  /// Why nothing more came, as errno has it; 0 where the content ended.
  int GetError() const noexcept { return m_error; }

  /// The bytes that remain; of a pipe, which does not tell, the most that there can be.
  std::uint32_t GetLeft() const noexcept;
  /// Shows up to size of the bytes that follow, none of which is taken; valid until the next
  /// operation. Nothing where waiting for them might take a while.
  std::span<const std::uint8_t> Peek(std::uint32_t size);
  bool IsLengthKnown() const noexcept { return m_isLengthKnown; }
  /// Whether so many remain for certain.
  bool Has(std::uint64_t size) const noexcept { return m_isLengthKnown && size <= GetLeft(); }

 protected:
  std::uint32_t ReadThrough(void* data, std::uint32_t size) noexcept override;

 private:
  bool Measure(std::uint64_t length);

  ReadWatch m_watch;
  const std::uint8_t* m_memory = nullptr;
  std::uint64_t m_length = 0;
  int m_error = 0;
  bool m_isLengthKnown = false;
  bool m_isTooLong = false;
};

/// The file as the one that is read as memory; null where it is another.
inline CWindowFile* AsWindow(CFile& file) noexcept {
  return file.ReadsAsMemory() ? static_cast<CWindowFile*>(&file) : nullptr;
}

}  // namespace qenzor
