#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <exception>
#include <memory>
#include <string_view>
#include <vector>

#include "qenzor/platform/export.h"
#include "qenzor/platform/strings.h"

namespace qenzor {

/// Thrown when a file does not take what is written to it, or cannot be moved or closed.
class QENZOR_EXPORT CFileException : public std::exception {
 public:
  explicit CFileException(const char* what) noexcept : m_what(what) {}
  const char* what() const noexcept override;

 private:
  const char* m_what;
};

/// A file on disk, and the interface of everything that chunks are read from and written to.
/// Reading never throws here: a short count is the sign of the end or of an error. Writing throws
/// CFileException; after the first failure every later write throws too. A derived class overrides
/// the virtual operations; the library asks nothing else of it.
class QENZOR_EXPORT CFile {
 public:
  enum OpenFlags : std::uint32_t {
    modeRead = 0x0000,
    modeWrite = 0x0001,
    modeCreate = 0x1000,  ///< create the file, or empty an existing one
    typeBinary = 0x8000,
  };
  enum SeekPosition { begin, current, end };

  CFile() noexcept;
  virtual ~CFile();  ///< closes; an error of that close is lost, so writers call Close first
  CFile(const CFile&) = delete;
  CFile& operator=(const CFile&) = delete;

  /// Opens the file at the path, closing what was open. False when that fails.
  virtual bool Open(const CString& path, std::uint32_t flags);
  /// Reads up to size bytes; returns how many were delivered.
  virtual std::uint32_t Read(void* data, std::uint32_t size);
  /// Writes all of size bytes or throws CFileException.
  virtual void Write(const void* data, std::uint32_t size);
  virtual std::uint64_t GetLength() const;
  virtual std::uint64_t GetPosition() const;
  /// Moves the position and returns the new one; it may lie past the end.
  /// Throws CFileException when the file cannot be moved there.
  virtual std::uint64_t Seek(std::int64_t offset, SeekPosition from);
  virtual void Flush();
  virtual void Close();

  /// Room for a block of up to size bytes in the file's own buffer, or null where the file lends
  /// none and Write is the way. What is put there counts once EndBlock is called with the end of
  /// the block; no other operation may come in between. Throws as Write does.
  std::uint8_t* BeginBlock(std::uint32_t size) {
    return m_lentEnd - m_next >= static_cast<std::ptrdiff_t>(size) ? m_next : MakeRoom(size);
  }
  void EndBlock(std::uint8_t* block_end) noexcept { m_next = block_end; }

 protected:
  /// Bytes gathered before they go to the disk.
  static constexpr std::uint32_t kBufferSize = 256 * 1024;

  /// Makes the write buffer and, if lend is set, lets BeginBlock hand out room in it.
  void MakeBuffer(bool lend);
  /// Sends what the buffer holds through WriteThrough.
  void EmptyBuffer();
  /// Takes bytes past the buffer; throws CFileException on failure.
  virtual void WriteThrough(const void* data, std::uint32_t size);
  bool HasFailed() const noexcept { return m_failed; }

 private:
  std::uint8_t* MakeRoom(std::uint32_t size);
  void CloseHandle() noexcept;

  std::FILE* m_file = nullptr;
  std::unique_ptr<std::uint8_t[]> m_buffer;
  std::uint8_t* m_next = nullptr;
  std::uint8_t* m_end = nullptr;
  std::uint8_t* m_lentEnd = nullptr;
  bool m_failed = false;
};

/// The file that a document is written to: whole blocks are put together in its buffer.
class QENZOR_EXPORT CDocumentFile final : public CFile {
 public:
  bool Open(const CString& path, std::uint32_t flags) override;
  /// Closes; true when everything written has reached the file.
  bool Finish() noexcept;
};

/// A file in memory, over a byte vector that grows with what is written.
class QENZOR_EXPORT CMemFile : public CFile {
 public:
  CMemFile() = default;
  explicit CMemFile(std::vector<std::uint8_t> bytes) : m_bytes(std::move(bytes)) {}

  bool Open(const CString& path, std::uint32_t flags) override;  ///< always false: there is no path
  std::uint32_t Read(void* data, std::uint32_t size) override;
  void Write(const void* data, std::uint32_t size) override;
  std::uint64_t GetLength() const override { return m_bytes.size(); }
  std::uint64_t GetPosition() const override { return m_position; }
  std::uint64_t Seek(std::int64_t offset, SeekPosition from) override;
  void Flush() override {}
  void Close() override {}

  const std::vector<std::uint8_t>& GetBytes() const noexcept { return m_bytes; }

 private:
  std::vector<std::uint8_t> m_bytes;
  std::uint64_t m_position = 0;
};

/// A text file for writing: every line feed of WriteString reaches the file as CR LF. Buffered;
/// its text goes to the file that it opens, or to a sink of the caller's that outlives it.
class QENZOR_EXPORT CStdioFile final : public CFile {
 public:
  CStdioFile() = default;
  explicit CStdioFile(CFile& sink);
  ~CStdioFile() override;

  bool Open(const CString& path, std::uint32_t flags) override;
  void WriteString(std::string_view text);
  void Flush() override;
  void Close() override;

  /// Room for size bytes, at most kMaxBlock; never null. What is put there is not translated.
  std::uint8_t* BeginText(std::uint32_t size);
  static constexpr std::uint32_t kMaxBlock = kBufferSize;

 private:
  void WriteThrough(const void* data, std::uint32_t size) override;

  CFile* m_sink = nullptr;
};

}  // namespace qenzor
