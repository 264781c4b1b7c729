#include "qenzor/platform/file.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <utility>

namespace qenzor {

namespace {

#ifdef _WIN32
int SeekFile(std::FILE* file, std::int64_t offset, int from) {
  return _fseeki64(file, offset, from);
}
std::int64_t TellFile(std::FILE* file) { return _ftelli64(file); }
#else
int SeekFile(std::FILE* file, std::int64_t offset, int from) { return fseeko(file, offset, from); }
std::int64_t TellFile(std::FILE* file) { return ftello(file); }
#endif

}  // namespace

const char* CFileException::what() const noexcept { return m_what; }

CFile::CFile() noexcept = default;

CFile::~CFile() {
  if (m_file != nullptr && !m_failed && m_next != m_buffer.get())
    static_cast<void>(
        std::fwrite(m_buffer.get(), 1, static_cast<std::size_t>(m_next - m_buffer.get()), m_file));
  CloseHandle();
}

bool CFile::Open(const CString& path, std::uint32_t flags) {
  CloseHandle();
  const bool writes = (flags & modeWrite) != 0;
  m_file = std::fopen(path.c_str(), !writes ? "rb" : (flags & modeCreate) != 0 ? "wb" : "r+b");
  if (m_file == nullptr) return false;
  m_failed = false;
  if (!writes) return true;
  static_cast<void>(std::setvbuf(m_file, nullptr, _IONBF, 0));
  MakeBuffer(false);
  return true;
}

void CFile::MakeBuffer(bool lend) {
  if (m_buffer == nullptr) m_buffer = std::make_unique_for_overwrite<std::uint8_t[]>(kBufferSize);
  m_next = m_buffer.get();
  m_end = m_next + kBufferSize;
  m_lentEnd = lend ? m_end : m_next;
}

std::uint8_t* CFile::MakeRoom(std::uint32_t size) {
  if (m_lentEnd != m_end || size > kBufferSize || m_buffer == nullptr) return nullptr;
  EmptyBuffer();
  return m_next;
}

void CFile::EmptyBuffer() {
  const auto size = static_cast<std::uint32_t>(m_next - m_buffer.get());
  m_next = m_buffer.get();
  if (size != 0) WriteThrough(m_buffer.get(), size);
}

void CFile::WriteThrough(const void* data, std::uint32_t size) {
  if (m_failed || m_file == nullptr || std::fwrite(data, 1, size, m_file) != size) {
    m_failed = true;
    throw CFileException("the file does not take what is written");
  }
}

std::uint32_t CFile::Read(void* data, std::uint32_t size) {
  return m_file == nullptr ? 0 : static_cast<std::uint32_t>(std::fread(data, 1, size, m_file));
}

void CFile::Write(const void* data, std::uint32_t size) {
  if (size == 0) return;
  if (m_failed || size > static_cast<std::size_t>(m_end - m_next)) {
    EmptyBuffer();
    if (m_failed || size > static_cast<std::size_t>(m_end - m_next)) {
      WriteThrough(data, size);
      return;
    }
  }
  std::memcpy(m_next, data, size);
  m_next += size;
}

std::uint64_t CFile::GetLength() const {
  if (m_file == nullptr) return 0;
  const std::int64_t here = TellFile(m_file);
  if (here < 0 || SeekFile(m_file, 0, SEEK_END) != 0) return 0;
  const std::int64_t length = TellFile(m_file);
  static_cast<void>(SeekFile(m_file, here, SEEK_SET));
  const auto buffered = static_cast<std::uint64_t>(m_next - m_buffer.get());
  return length < 0 ? 0
                    : std::max(static_cast<std::uint64_t>(length),
                               static_cast<std::uint64_t>(here) + buffered);
}

std::uint64_t CFile::GetPosition() const {
  const std::int64_t here = m_file == nullptr ? -1 : TellFile(m_file);
  const auto buffered = static_cast<std::uint64_t>(m_next - m_buffer.get());
  return here < 0 ? buffered : static_cast<std::uint64_t>(here) + buffered;
}

std::uint64_t CFile::Seek(std::int64_t offset, SeekPosition from) {
  if (m_buffer != nullptr) EmptyBuffer();
  const int origin = from == begin ? SEEK_SET : from == current ? SEEK_CUR : SEEK_END;
  if (m_file == nullptr || SeekFile(m_file, offset, origin) != 0)
    throw CFileException("the file cannot be moved to that position");
  return GetPosition();
}

void CFile::Flush() {
  if (m_buffer != nullptr) EmptyBuffer();
}

void CFile::Close() {
  try {
    Flush();
  } catch (...) {
    CloseHandle();
    throw;
  }
  std::FILE* file = std::exchange(m_file, nullptr);
  if (file != nullptr && std::fclose(file) != 0) {
    m_failed = true;
    throw CFileException("the file could not be closed");
  }
}

void CFile::CloseHandle() noexcept {
  if (m_file != nullptr) static_cast<void>(std::fclose(std::exchange(m_file, nullptr)));
  m_next = m_buffer.get();
}

bool CDocumentFile::Open(const CString& path, std::uint32_t flags) {
  if (!CFile::Open(path, flags)) return false;
  if ((flags & modeWrite) != 0) MakeBuffer(true);
  return true;
}

bool CDocumentFile::Finish() noexcept {
  try {
    Close();
  } catch (const CFileException&) {
    return false;
  }
  return !HasFailed();
}

bool CMemFile::Open(const CString& /*path*/, std::uint32_t /*flags*/) { return false; }

std::uint32_t CMemFile::Read(void* data, std::uint32_t size) {
  if (m_position >= m_bytes.size()) return 0;
  const auto count =
      static_cast<std::uint32_t>(std::min<std::uint64_t>(size, m_bytes.size() - m_position));
  if (count != 0) std::memcpy(data, m_bytes.data() + m_position, count);
  m_position += count;
  return count;
}

void CMemFile::Write(const void* data, std::uint32_t size) {
  if (size == 0) return;
  if (m_position + size > m_bytes.size()) m_bytes.resize(m_position + size);
  std::memcpy(m_bytes.data() + m_position, data, size);
  m_position += size;
}

std::uint64_t CMemFile::Seek(std::int64_t offset, SeekPosition from) {
  const std::uint64_t origin = from == begin ? 0 : from == current ? m_position : m_bytes.size();
  if (offset < 0 && static_cast<std::uint64_t>(-(offset + 1)) + 1 > origin)
    throw CFileException("the file cannot be moved to that position");
  m_position = origin + static_cast<std::uint64_t>(offset);
  return m_position;
}

CStdioFile::CStdioFile(CFile& sink) : m_sink(&sink) { MakeBuffer(true); }

CStdioFile::~CStdioFile() {
  if (m_sink == nullptr || HasFailed()) return;
  try {
    EmptyBuffer();
  } catch (const std::exception&) {
    return;
  }
}

bool CStdioFile::Open(const CString& path, std::uint32_t flags) {
  m_sink = nullptr;
  if (!CFile::Open(path, flags | modeWrite)) return false;
  MakeBuffer(true);
  return true;
}

std::uint8_t* CStdioFile::BeginText(std::uint32_t size) {
  std::uint8_t* room = BeginBlock(size);
  if (room == nullptr) throw CFileException("the text file is not open");
  return room;
}

void CStdioFile::WriteString(std::string_view text) {
  while (!text.empty()) {
    const std::size_t length = std::min<std::size_t>(text.find('\n'), text.size());
    Write(text.data(), static_cast<std::uint32_t>(length));
    text.remove_prefix(length);
    if (text.empty()) return;
    Write("\r\n", 2);
    text.remove_prefix(1);
  }
}

void CStdioFile::Flush() {
  CFile::Flush();
  if (m_sink != nullptr) m_sink->Flush();
}

void CStdioFile::Close() {
  if (m_sink == nullptr)
    CFile::Close();
  else
    Flush();
}

void CStdioFile::WriteThrough(const void* data, std::uint32_t size) {
  if (m_sink == nullptr)
    CFile::WriteThrough(data, size);
  else
    m_sink->Write(data, size);
}

}  // namespace qenzor
