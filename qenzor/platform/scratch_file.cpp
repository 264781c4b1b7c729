#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cassert>
#include <cerrno>
#include <cstdio>

#include "qenzor/platform/descriptor_impl.h"
#include "qenzor/platform/scratch_file_impl.h"

namespace qenzor {

namespace {

/// Makes sure of the room that the content will take, where the system can say.
bool ReserveRoom(int file, off_t size) noexcept {
#ifdef FALLOC_FL_KEEP_SIZE
  if (size != 0 && ::fallocate(file, FALLOC_FL_KEEP_SIZE, 0, size) != 0)
    return errno != ENOSPC && errno != EDQUOT && errno != EFBIG;
#endif
  return true;
}

bool CopyContent(int from, int to) {
  struct stat status {};
  if (::fstat(from, &status) != 0 || !ReserveRoom(to, status.st_size)) return false;
  // Not from the heap: nothing may be thrown while the other file is half written.
  std::array<std::uint8_t, 32768> block;
  for (off_t at = 0; at < status.st_size;) {
    const ssize_t count = ::pread(from, block.data(), block.size(), at);
    if (count <= 0 || !descriptor::Write(to, block.data(), static_cast<std::uint32_t>(count)))
      return false;
    at += count;
  }
  return ::ftruncate(to, status.st_size) == 0;
}

}  // namespace

CScratchFile::~CScratchFile() {
  if (!m_isNamed) return;
  m_name->Change([this] { return ::unlink(m_name->Get().c_str()) != 0; });
}

/// Where the system shows the open file, so that it can be given a name.
CString CScratchFile::SelfPath() const { return "/proc/self/fd/" + std::to_string(m_file.Get()); }

bool CScratchFile::Create(const CString& folder, unsigned permissions) {
  m_name = std::make_unique<CScratchName>(folder);
#ifdef O_TMPFILE
  // NOLINTNEXTLINE(*-vararg)
  m_file.Reset(::open(folder.c_str(), O_TMPFILE | O_RDWR | O_CLOEXEC, permissions));
  if (m_file.IsOpen() && ::access(SelfPath().c_str(), F_OK) == 0) return true;
#endif
  int error = ECANCELED;
  m_isNamed = m_name->Change([&] {
    // NOLINTNEXTLINE(*-vararg)
    m_file.Reset(::open(m_name->Get().c_str(), O_CREAT | O_EXCL | O_RDWR | O_CLOEXEC, permissions));
    error = errno;
    return m_file.IsOpen();
  });
  errno = error;
  return m_isNamed;
}

bool CScratchFile::MoveTo(const CString& path) {
  assert(m_file.IsOpen());
  const CString self = SelfPath();
  const auto link_as = [&](const CString& name) {
    return m_isNamed ||
           ::linkat(AT_FDCWD, self.c_str(), AT_FDCWD, name.c_str(), AT_SYMLINK_FOLLOW) == 0;
  };
  // A new name is taken in one step; in the place of another file it takes two.
  if (!m_isNamed && link_as(path)) return true;
  if (!m_isNamed && errno != EEXIST) return false;
  bool moved = false;
  int error = ECANCELED;
  m_isNamed = m_name->Change([&] {
    const char* const name = m_name->Get().c_str();
    const bool linked = link_as(m_name->Get());
    moved = linked && std::rename(name, path.c_str()) == 0;
    error = errno;
    if (linked && !moved) ::unlink(name);
    return false;
  });
  errno = error;
  return moved;
}

bool CScratchFile::CopyOver(const CString& path) {
  assert(m_file.IsOpen());
  bool copied = false;
  int error = ECANCELED;
  m_name->Change([&] {
    // NOLINTNEXTLINE(*-vararg)
    CDescriptor target(::open(path.c_str(), O_WRONLY | O_CLOEXEC));
    copied = target.IsOpen() && CopyContent(m_file.Get(), target.Get()) &&
             ::fsync(target.Get()) == 0 && target.Close();
    error = errno;
    return m_isNamed;
  });
  errno = error;
  return copied;
}

}  // namespace qenzor
