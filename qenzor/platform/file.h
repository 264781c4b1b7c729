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
/// CFileException; after the first failure every later write throws too, and what a Read could not
/// send on for its user is told by the next Flush or Close. Reads and writes may follow each other
/// in any order. A derived class overrides the virtual operations; the library asks nothing else of
/// it.
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
  /// Moves the position, which may lie past the end, and returns it. A file that cannot seek, such
  /// as a pipe, is read forward instead. Throws CFileException when the position cannot be reached.
  virtual std::uint64_t Seek(std::int64_t offset, SeekPosition from);
  virtual void Flush();
  virtual void Close();

  /// Takes the next size bytes as Read does, but without a copy: the result points into the file's
  /// buffer and is valid until the next operation. Null, with nothing taken, if the file does not
  /// lend its buffer or does not hold that many bytes in one piece; use Read then.
  const std::uint8_t* TakeBlock(std::uint32_t size) {
    const std::uint8_t* bytes = m_buffer.TakeLent(size);
    return bytes != nullptr ? bytes : FetchBlock(size);
  }

  /// Room for a block of up to size bytes in the file's own buffer; null if the file does not lend
  /// it, so that Write has to be used. Calling EndBlock with the end of the block writes it; no
  /// other operation may come in between. Throws as Write does.
  std::uint8_t* BeginBlock(std::uint32_t size) {
    std::uint8_t* room = m_buffer.LendRoom(size);
    return room != nullptr ? room : MakeRoom(size);
  }
  void EndBlock(std::uint8_t* block_end) noexcept { m_buffer.EndRoom(block_end); }

  /// Whether chunks are read from this as from a block of memory that holds all of its bytes.
  bool ReadsAsMemory() const noexcept { return m_readsAsMemory; }

 protected:
  /// Lets TakeBlock and BeginBlock hand out the buffer itself. Only for classes whose Read and
  /// Write nobody overrides: an override would miss those bytes.
  void LendBuffer() noexcept { m_buffer.SetLending(true); }
  /// Lets a class that is never opened write or read through functions of its own.
  void AllowWriting() noexcept { m_writes = true; }
  void AllowReading() noexcept { m_reads = true; }
  /// Makes this a file that ReadsAsMemory, with this many bytes read ahead and this many kept
  /// behind the position.
  void ReadAsMemory(std::uint32_t size, std::uint32_t behind) noexcept;
  /// The system's descriptor, for questions that this class does not answer; negative when no file
  /// is open.
  int GetDescriptor() const noexcept { return m_file; }
  /// Sends what was written and is still in the buffer through WriteThrough.
  void EmptyBuffer();
  /// Takes bytes past the buffer; throws CFileException on failure.
  virtual void WriteThrough(const void* data, std::uint32_t size);
  /// Reads up to size bytes past the buffer, as many as come at once; 0 at the end and on failure.
  virtual std::uint32_t ReadThrough(void* data, std::uint32_t size) noexcept;
  bool HasFailed() const noexcept { return m_failed; }
  /// Counts the bytes that an overriding ReadThrough has read.
  void AddRead(std::uint32_t size) noexcept { m_systemPosition += size; }
  /// The position of the system's file: ahead of the user's while reading, behind it while writing.
  std::uint64_t GetSystemPosition() const noexcept { return m_systemPosition; }

 private:
  bool StopWriting() noexcept;
  bool StartReading() noexcept;
  void StartWriting();
  bool Refill() noexcept;
  const std::uint8_t* FetchBlock(std::uint32_t size) noexcept;
  std::uint8_t* MakeRoom(std::uint32_t size);
  void MoveTo(std::uint64_t position);
  bool CloseDescriptor() noexcept;
  void TellLoss();

  CFileBuffer m_buffer;
  int m_file;
  std::uint64_t m_systemPosition = 0;
  bool m_reads = false;
  bool m_writes = false;
  bool m_failed = false;
  bool m_isLossUntold = false;  ///< whether a write has failed where nothing could be thrown
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

/// A file in memory, over a byte vector that grows with what is written. Throws CFileException when
/// memory runs out.
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

/// A text file for writing: every line feed of WriteString reaches the file as CR LF. It is
/// buffered, and writes to the file that it opens or to a sink of the caller's, which must outlive
/// it. Opening a file first hands the sink what is still buffered for it.
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

  /// How converters are to encode text. WriteString takes bytes that are encoded already.
  void SetEncoding(TextEncoding encoding) noexcept { m_encoding = encoding; }
  TextEncoding GetEncoding() const noexcept { return m_encoding; }

 private:
  void WriteThrough(const void* data, std::uint32_t size) override;

  CFile* m_sink = nullptr;
  TextEncoding m_encoding = TextEncoding::kCodePage;
};

}  // namespace qenzor
