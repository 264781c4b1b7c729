#include "qenzor/platform/file.h"

#include <algorithm>
#include <cassert>
#include <cstring>
#include <limits>
#include <new>
#include <typeinfo>
#include <utility>

#include "qenzor/platform/descriptor_impl.h"

namespace qenzor {

namespace {

constexpr auto kMaxPosition = static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max());

[[noreturn]] void ThrowUnreachable() {
  throw CFileException("the file cannot be moved to that position");
}

/// The position so far from the origin, which is one itself.
std::uint64_t PositionFrom(std::uint64_t origin, std::int64_t offset) {
  const std::uint64_t position = origin + static_cast<std::uint64_t>(offset);
  if (position > kMaxPosition) ThrowUnreachable();  // before the front, too
  return position;
}

}  // namespace

const char* CFileException::what() const noexcept { return m_what; }

CFile::CFile() noexcept : m_file(descriptor::kNone) {}

CFile::~CFile() {
  if (m_file != descriptor::kNone && !m_failed)
    static_cast<void>(descriptor::Write(m_file, m_buffer.GetFront(), m_buffer.GetWritten()));
  CloseDescriptor();
}

bool CFile::Open(const CString& path, std::uint32_t flags) {
  try {
    CFile::Close();
  } catch (const CFileException&) {
    return false;
  }
  using descriptor::Access;
  const Access access = (flags & modeWrite) == 0    ? Access::kRead
                        : (flags & modeCreate) != 0 ? Access::kCreate
                                                    : Access::kUpdate;
  m_file = descriptor::Open(path, access);
  if (m_file == descriptor::kNone) return false;
  m_reads = access != Access::kCreate;
  m_writes = access != Access::kRead;
  m_failed = false;
  m_isLossUntold = false;
  // A derived class would not hear of what is taken out of the buffer and put into it.
  if (typeid(*this) == typeid(CFile)) LendBuffer();
  return true;
}

void CFile::ReadAsMemory(std::uint32_t size, std::uint32_t behind) noexcept {
  m_readsAsMemory = true;
  m_buffer.SetReading(size, behind);
  LendBuffer();
}

/// False when what was written cannot be sent on.
bool CFile::StopWriting() noexcept try {
  EmptyBuffer();
  return true;
} catch (...) {
  m_isLossUntold = true;
  return false;
}

bool CFile::StartReading() noexcept {
  return m_buffer.GetState() == CFileBuffer::State::kReading ||
         (StopWriting() && m_reads && m_buffer.Start(CFileBuffer::State::kReading));
}

void CFile::StartWriting() {
  if (m_buffer.GetState() == CFileBuffer::State::kWriting) return;
  if (!m_writes || m_failed) {
    m_failed = true;
    throw CFileException("the file does not take what is written");
  }
  if (m_buffer.GetLeft() != 0) {
    const std::uint64_t position = GetPosition();
    if (!descriptor::Seek(m_file, static_cast<std::int64_t>(position))) ThrowUnreachable();
    m_systemPosition = position;
  }
  if (!m_buffer.Start(CFileBuffer::State::kWriting)) {
    m_failed = true;
    throw std::bad_alloc();
  }
}

std::uint32_t CFile::ReadThrough(void* data, std::uint32_t size) noexcept {
  const std::int64_t count = size == 0 ? 0 : descriptor::Read(m_file, data, size);
  if (count <= 0) return 0;
  m_systemPosition += static_cast<std::uint64_t>(count);
  return static_cast<std::uint32_t>(count);
}

bool CFile::Refill() noexcept {
  const CFileBuffer::Room room = m_buffer.MakeRoomToRead();
  const std::uint32_t count = ReadThrough(room.Begin, room.Size);
  m_buffer.AddRead(count);
  return count != 0;
}

const std::uint8_t* CFile::FetchBlock(std::uint32_t size) noexcept {
  if (!m_buffer.Lends() || size > m_buffer.GetMostTaken() || !StartReading()) return nullptr;
  while (m_buffer.GetLeft() < size)
    if (!Refill()) return nullptr;
  return m_buffer.TakeLent(size);
}

std::uint8_t* CFile::MakeRoom(std::uint32_t size) {
  if (!m_buffer.Lends() || size > CFileBuffer::kWriteSize) return nullptr;
  StartWriting();
  EmptyBuffer();
  StartWriting();
  return m_buffer.LendRoom(size);
}

void CFile::EmptyBuffer() {
  const std::uint32_t size = m_buffer.GetWritten();
  if (m_buffer.GetState() != CFileBuffer::State::kWriting) return;
  m_buffer.Start(CFileBuffer::State::kNeither);
  if (size == 0) return;
  try {
    WriteThrough(m_buffer.GetFront(), size);
  } catch (...) {
    m_failed = true;
    throw;
  }
}

void CFile::WriteThrough(const void* data, std::uint32_t size) {
  if (m_failed || m_file == descriptor::kNone || !descriptor::Write(m_file, data, size)) {
    m_failed = true;
    throw CFileException("the file does not take what is written");
  }
  m_systemPosition += size;
}

std::uint32_t CFile::Read(void* data, std::uint32_t size) {
  assert(data != nullptr || size == 0);
  if (!StopWriting() || !m_reads) return 0;
  // Without memory for a buffer everything goes past it, as does what it could not take at once.
  const std::uint32_t most = StartReading() ? m_buffer.GetMostTaken() : 0;
  auto* bytes = static_cast<std::uint8_t*>(data);
  std::uint32_t done = 0;
  while (done < size) {
    const std::uint32_t wanted = size - done;
    if (const std::uint32_t count = std::min(wanted, m_buffer.GetLeft()); count != 0) {
      std::memcpy(bytes + done, m_buffer.GetNext(), count);
      m_buffer.Move(count);
      done += count;
    } else if (wanted >= most) {
      m_buffer.Start(CFileBuffer::State::kReading);
      const std::uint32_t read = ReadThrough(bytes + done, wanted);
      if (read == 0) break;
      done += read;
    } else if (!Refill()) {
      break;
    }
  }
  return done;
}

void CFile::Write(const void* data, std::uint32_t size) {
  assert(data != nullptr || size == 0);
  if (size == 0) return;
  StartWriting();
  if (size > m_buffer.GetRoom()) {
    EmptyBuffer();
    StartWriting();
    if (size > m_buffer.GetRoom()) {
      WriteThrough(data, size);
      return;
    }
  }
  m_buffer.Put(data, size);
}

std::uint64_t CFile::GetLength() const {
  const std::int64_t length = m_file == descriptor::kNone ? 0 : descriptor::GetLength(m_file);
  const std::uint64_t stored = length < 0 ? 0 : static_cast<std::uint64_t>(length);
  return m_buffer.GetWritten() == 0 ? stored : std::max(stored, GetPosition());
}

std::uint64_t CFile::GetPosition() const {
  return m_systemPosition + m_buffer.GetWritten() - m_buffer.GetLeft();
}

std::uint64_t CFile::Seek(std::int64_t offset, SeekPosition from) {
  EmptyBuffer();
  if (!m_reads && !m_writes) ThrowUnreachable();
  MoveTo(PositionFrom(from == begin ? 0 : from == current ? GetPosition() : GetLength(), offset));
  return GetPosition();
}

void CFile::MoveTo(std::uint64_t position) {
  const auto ahead = static_cast<std::int64_t>(position - GetPosition());
  if (-ahead <= m_buffer.GetPassed() && ahead <= m_buffer.GetLeft()) {
    m_buffer.Move(ahead);
  } else if (descriptor::Seek(m_file, static_cast<std::int64_t>(position))) {
    m_buffer.Start(CFileBuffer::State::kNeither);
    m_systemPosition = position;
  } else {
    if (ahead < 0 || !StartReading()) ThrowUnreachable();
    while (GetPosition() + m_buffer.GetLeft() < position) {
      m_buffer.Move(m_buffer.GetLeft());
      if (!Refill()) ThrowUnreachable();
    }
    m_buffer.Move(static_cast<std::int64_t>(position - GetPosition()));
  }
}

/// Throws for what was lost where nothing could be thrown, once.
void CFile::TellLoss() {
  if (std::exchange(m_isLossUntold, false))
    throw CFileException("the file did not take what was written");
}

void CFile::Flush() {
  EmptyBuffer();
  TellLoss();
}

void CFile::Close() {
  try {
    EmptyBuffer();
  } catch (...) {
    CloseDescriptor();
    throw;
  }
  if (!CloseDescriptor()) {
    m_failed = true;
    throw CFileException("the file could not be closed");
  }
  TellLoss();
}

bool CFile::CloseDescriptor() noexcept {
  const int file = std::exchange(m_file, descriptor::kNone);
  m_buffer.Start(CFileBuffer::State::kNeither);
  m_systemPosition = 0;
  m_reads = false;
  m_writes = false;
  return file == descriptor::kNone || descriptor::Close(file);
}

bool CDocumentFile::Open(const CString& path, std::uint32_t flags) {
  if (!CFile::Open(path, flags)) return false;
  LendBuffer();
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
  assert(data != nullptr || size == 0);
  if (m_position >= m_bytes.size()) return 0;
  const auto count =
      static_cast<std::uint32_t>(std::min<std::uint64_t>(size, m_bytes.size() - m_position));
  if (count != 0) std::memcpy(data, m_bytes.data() + m_position, count);
  m_position += count;
  return count;
}

void CMemFile::Write(const void* data, std::uint32_t size) {
  assert(data != nullptr || size == 0);
  if (size == 0) return;
  const std::uint64_t past = PositionFrom(m_position, size);
  try {
    if (past > m_bytes.size()) m_bytes.resize(past);
  } catch (const std::exception&) {
    throw CFileException("memory does not hold what is written");
  }
  std::memcpy(m_bytes.data() + m_position, data, size);
  m_position = past;
}

std::uint64_t CMemFile::Seek(std::int64_t offset, SeekPosition from) {
  m_position = PositionFrom(from == begin     ? 0
                            : from == current ? m_position
                                              : m_bytes.size(),
                            offset);
  return m_position;
}

CStdioFile::CStdioFile(CFile& sink) : m_sink(&sink) {
  AllowWriting();
  LendBuffer();
}

CStdioFile::~CStdioFile() {
  if (m_sink == nullptr || HasFailed()) return;
  try {
    EmptyBuffer();
  } catch (const std::exception&) {
    return;
  }
}

bool CStdioFile::Open(const CString& path, std::uint32_t flags) {
  try {
    Close();
  } catch (const std::exception&) {
    return false;
  }
  m_sink = nullptr;
  LendBuffer();
  return CFile::Open(path, flags | modeWrite);
}

std::uint8_t* CStdioFile::BeginText(std::uint32_t size) {
  std::uint8_t* room = BeginBlock(size);
  if (room == nullptr) throw CFileException("the text file does not take what is written");
  return room;
}

void CStdioFile::WriteString(std::string_view text) {
  while (!text.empty()) {
    const std::size_t length = std::min(text.find('\n'), text.size());
    for (std::size_t left = length; left > 0;) {
      const auto size = static_cast<std::uint32_t>(std::min<std::size_t>(left, kMaxBlock));
      Write(text.data(), size);
      text.remove_prefix(size);
      left -= size;
    }
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
