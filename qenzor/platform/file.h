#pragma once

#include <cstddef>
#include <cstdint>
#include <exception>
#include <string_view>
#include <utility>
#include <vector>

#include "qenzor/platform/code_page.h"
#include "qenzor/platform/export.h"
#include "qenzor/platform/file_buffer.h"
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
/// CFileException; after the first failure every later write throws too. Reads and writes may
/// follow each other in any order. A derived class overrides the virtual operations; the library
/// asks nothing else of it.
class QENZOR_EXPORT CFile {
 public:
  enum OpenFlags : std::uint32_t {
    modeRead = 0x0000,
    modeWrite = 0x0001,   ///< write, and read, an existing file
    modeCreate = 0x1000,  ///< with modeWrite: create the file, or empty an existing one; no reading
    typeBinary = 0x8000,
  };
  enum SeekPosition { begin, current, end };

  CFile() noexcept;
  virtual ~CFile();  ///< closes; an error of that close is lost, so writers call Close first
  CFile(const CFile&) = delete;
  CFile& operator=(const CFile&) = delete;

  /// Opens the file at the path, closing what was open. False when either fails.
  virtual bool Open(const CString& path, std::uint32_t flags);
  /// Reads up to size bytes; returns how many were delivered.
  virtual std::uint32_t Read(void* data, std::uint32_t size);
  /// Writes all of size bytes or throws CFileException.
  virtual void Write(const void* data, std::uint32_t size);
  virtual std::uint64_t GetLength() const;
  virtual std::uint64_t GetPosition() const;
  /// Moves the position and returns the new one; it may lie past the end. What cannot be moved, as
  /// a pipe, is read on to get forward. Throws CFileException when there is no way there.
  virtual std::uint64_t Seek(std::int64_t offset, SeekPosition from);
  virtual void Flush();
  virtual void Close();

  /// The next size bytes of the file, taken as Read takes them but left where the file holds them;
  /// valid until the next operation. Null, and nothing taken, where the file lends none or has not
  /// so many in one piece: Read is the way then.
  const std::uint8_t* TakeBlock(std::uint32_t size) {
    const std::uint8_t* bytes = m_buffer.TakeLent(size);
    return bytes != nullptr ? bytes : FetchBlock(size);
  }

  /// Room for a block of up to size bytes in the file's own buffer, or null where the file lends
  /// none and Write is the way. What is put there counts once EndBlock is called with the end of
  /// the block; no other operation may come in between. Throws as Write does.
  std::uint8_t* BeginBlock(std::uint32_t size) {
    std::uint8_t* room = m_buffer.LendRoom(size);
    return room != nullptr ? room : MakeRoom(size);
  }
  void EndBlock(std::uint8_t* block_end) noexcept { m_buffer.EndRoom(block_end); }

  /// Whether chunks are read from this as from a block of memory that holds all of its bytes.
  bool ReadsAsMemory() const noexcept { return m_readsAsMemory; }

 protected:
  /// Lets TakeBlock and BeginBlock give out the inside of the buffer; only for a class whose own
  /// Read and Write nobody overrides, which would not hear of what is taken and put there.
  void LendBuffer() noexcept { m_buffer.SetLending(true); }
  /// Lets a class that is never opened write through a WriteThrough of its own, or read.
  void AllowWriting() noexcept { m_writes = true; }
  void AllowReading() noexcept { m_reads = true; }
  /// Makes this a file that ReadsAsMemory, which reads ahead so many bytes and keeps so many of
  /// those that it has passed.
  void ReadAsMemory(std::uint32_t size, std::uint32_t behind) noexcept;
  /// The system's file, for whoever asks it what is not asked here; negative when none is open.
  int GetDescriptor() const noexcept { return m_file; }
  /// Sends what was written and is still in the buffer through WriteThrough.
  void EmptyBuffer();
  /// Takes bytes past the buffer; throws CFileException on failure.
  virtual void WriteThrough(const void* data, std::uint32_t size);
  /// Reads up to size bytes past the buffer, as many as come at once; 0 at the end and on failure.
  virtual std::uint32_t ReadThrough(void* data, std::uint32_t size) noexcept;
  bool HasFailed() const noexcept { return m_failed; }
  /// Counts what a ReadThrough of its own has read.
  void AddRead(std::uint32_t size) noexcept { m_systemPosition += size; }
  /// Where the system's file stands, ahead of the user or behind him.
  std::uint64_t GetSystemPosition() const noexcept { return m_systemPosition; }

 private:
  bool StartReading() noexcept;
  void StartWriting();
  bool Refill() noexcept;
  const std::uint8_t* FetchBlock(std::uint32_t size) noexcept;
  std::uint8_t* MakeRoom(std::uint32_t size);
  void MoveTo(std::uint64_t position);
  bool CloseDescriptor() noexcept;

  CFileBuffer m_buffer;
  int m_file;
  std::uint64_t m_systemPosition = 0;
  bool m_reads = false;
  bool m_writes = false;
  bool m_failed = false;
  bool m_readsAsMemory = false;
};

/// The file that a document is written to or read from: whole blocks are put together, or looked
/// at, in its buffer.
class QENZOR_EXPORT CDocumentFile final : public CFile {
 public:
  bool Open(const CString& path, std::uint32_t flags) override;
  /// Closes; true when everything written has reached the file.
  bool Finish() noexcept;
};

/// A file in memory, over a byte vector that grows with what is written. What memory does not hold
/// throws CFileException.
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
/// its text goes to the file that it opens, or to a sink of the caller's that outlives it. Opening
/// a file hands over to the sink what it still holds for it.
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
  static constexpr std::uint32_t kMaxBlock = CFileBuffer::kWriteSize;

  /// How converters shall put text into bytes; WriteString takes bytes.
  void SetEncoding(TextEncoding encoding) noexcept { m_encoding = encoding; }
  TextEncoding GetEncoding() const noexcept { return m_encoding; }

 private:
  void WriteThrough(const void* data, std::uint32_t size) override;

  CFile* m_sink = nullptr;
  TextEncoding m_encoding = TextEncoding::kCodePage;
};

}  // namespace qenzor
