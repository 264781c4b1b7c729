#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <cassert>
#include <cerrno>
#include <cstdio>

#include "qenzor/platform/descriptor_impl.h"

#ifdef _WIN32
#include <io.h>
#else
#include <poll.h>
#include <unistd.h>
#endif

namespace qenzor::descriptor {

namespace {

#ifdef _WIN32

constexpr int kRead = _O_RDONLY | _O_BINARY | _O_NOINHERIT;
constexpr int kUpdate = _O_RDWR | _O_BINARY | _O_NOINHERIT;
constexpr int kCreate = _O_WRONLY | _O_CREAT | _O_TRUNC | _O_BINARY | _O_NOINHERIT;
constexpr int kMode = _S_IREAD | _S_IWRITE;

using Status = struct _stat64;
bool GetStatus(int file, Status& status) { return ::_fstat64(file, &status) == 0; }
Kind KindOf(const Status& status) {
  return (status.st_mode & _S_IFREG) != 0   ? Kind::kPlain
         : (status.st_mode & _S_IFIFO) != 0 ? Kind::kPipe
                                            : Kind::kOther;
}

int OpenFile(const char* path, int flags) { return ::_open(path, flags, kMode); }
int CloseFile(int file) { return ::_close(file); }
std::int64_t ReadFile(int file, void* data, std::uint32_t size) {
  return ::_read(file, data, size);
}
std::int64_t WriteFile(int file, const void* data, std::uint32_t size) {
  return ::_write(file, data, size);
}
std::int64_t SeekFile(int file, std::int64_t offset, int from) {
  return ::_lseeki64(file, offset, from);
}

#else

constexpr int kRead = O_RDONLY | O_CLOEXEC;
constexpr int kUpdate = O_RDWR | O_CLOEXEC;
constexpr int kCreate = O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC;
constexpr mode_t kMode = 0666;

using Status = struct stat;
bool GetStatus(int file, Status& status) { return ::fstat(file, &status) == 0; }
Kind KindOf(const Status& status) {
  return S_ISREG(status.st_mode)                                ? Kind::kPlain
         : S_ISFIFO(status.st_mode) || S_ISSOCK(status.st_mode) ? Kind::kPipe
                                                                : Kind::kOther;
}

// NOLINTNEXTLINE(*-vararg)
int OpenFile(const char* path, int flags) { return ::open(path, flags, kMode); }
int CloseFile(int file) { return ::close(file); }
std::int64_t ReadFile(int file, void* data, std::uint32_t size) { return ::read(file, data, size); }
std::int64_t WriteFile(int file, const void* data, std::uint32_t size) {
  const std::int64_t count = ::write(file, data, size);
  if (count >= 0 || errno != EAGAIN) return count;
  // Somebody made it one that does not wait. It is waited for, and tried again as after a signal.
  pollfd ready{file, POLLOUT, 0};
  static_cast<void>(::poll(&ready, 1, -1));
  errno = EINTR;
  return -1;
}
std::int64_t SeekFile(int file, std::int64_t offset, int from) {
  return ::lseek(file, offset, from);
}

#endif

/// No system takes more at once.
constexpr std::uint32_t kMostAtOnce = std::uint32_t{1} << 30;

/// Calls again as long as signals come between.
template <class Call>
auto Insist(Call call) {
  auto result = call();
  while (result < 0 && errno == EINTR) result = call();
  return result;
}

}  // namespace

int Open(const CString& path, Access access) noexcept {
  const int flags = access == Access::kRead ? kRead : access == Access::kUpdate ? kUpdate : kCreate;
  return Insist([&] { return OpenFile(path.c_str(), flags); });
}

// Whatever close says, the descriptor is gone: calling it again might close another file.
bool Close(int file) noexcept {
  assert(file >= 0);
  return CloseFile(file) == 0 || errno == EINTR;
}

std::int64_t Read(int file, void* data, std::uint32_t size) noexcept {
  assert(data != nullptr || size == 0);
  return Insist([&] { return ReadFile(file, data, std::min(size, kMostAtOnce)); });
}

bool Write(int file, const void* data, std::uint32_t size) noexcept {
  assert(data != nullptr || size == 0);
  const auto* bytes = static_cast<const std::uint8_t*>(data);
  while (size > 0) {
    const std::int64_t count =
        Insist([&] { return WriteFile(file, bytes, std::min(size, kMostAtOnce)); });
    if (count == 0) errno = EIO;  // a device that takes nothing and does not say why
    if (count <= 0) return false;
    bytes += count;
    size -= static_cast<std::uint32_t>(count);
  }
  return true;
}

bool Seek(int file, std::int64_t position) noexcept {
  return SeekFile(file, position, SEEK_SET) >= 0;
}

Kind GetKind(int file) noexcept {
  Status status{};
  return GetStatus(file, status) ? KindOf(status) : Kind::kOther;
}

std::int64_t GetLength(int file) noexcept {
  Status status{};
  if (GetStatus(file, status) && KindOf(status) == Kind::kPlain) return status.st_size;
  const std::int64_t here = SeekFile(file, 0, SEEK_CUR);
  if (here < 0) return -1;
  const std::int64_t length = SeekFile(file, 0, SEEK_END);
  return SeekFile(file, here, SEEK_SET) == here ? length : -1;
}

}  // namespace qenzor::descriptor
