#ifdef __linux__
#ifndef _GNU_SOURCE
#define _GNU_SOURCE  // NOLINT(bugprone-reserved-identifier): for leases
#endif
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

#include <algorithm>
#include <csignal>
#include <limits>
#include <memory>
#include <new>
#include <utility>

#include "qenzor/platform/file_bytes.h"

namespace qenzor {

#ifdef __linux__

namespace {

/// Below this a mapping saves nothing.
constexpr std::uint32_t kMinMapped = 1024 * 1024;

/// The size of a plain file; 0 for any other, and beyond 32 bits.
std::uint32_t SizeOf(int file) noexcept {
  struct stat status {};
  if (file < 0 || ::fstat(file, &status) != 0 || !S_ISREG(status.st_mode)) return 0;
  return status.st_size <= std::numeric_limits<std::uint32_t>::max()
             ? static_cast<std::uint32_t>(status.st_size)
             : 0;
}

/// Keeps writers waiting until the file is closed. The signal that one waits is of a kind that does
/// nothing to a program that does not ask for it.
bool TakeLease(int file) noexcept {
  // NOLINTNEXTLINE(*-vararg)
  return ::fcntl(file, F_SETSIG, SIGURG) == 0 && ::fcntl(file, F_SETLEASE, F_RDLCK) == 0;
}

/// Whether reading the memory will not have to wait for a device, which may fail.
bool IsResident(void* memory, std::size_t size) noexcept {
  const auto page = static_cast<std::size_t>(::sysconf(_SC_PAGESIZE));
  const std::size_t pages = (size + page - 1) / page;
  const std::unique_ptr<unsigned char[]> states(new (std::nothrow) unsigned char[pages]);
  return states != nullptr && ::mincore(memory, size, states.get()) == 0 &&
         std::all_of(states.get(), states.get() + pages,
                     [](unsigned char state) { return (state & 1U) != 0; });
}

}  // namespace

CFileBytes::CFileBytes(const CString& path) noexcept
    : m_file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK)) {  // NOLINT(*-vararg)
  const std::uint32_t size = SizeOf(m_file);
  if (size >= kMinMapped)
    Map();
  else if (size > 0)
    Read(size);
}

void CFileBytes::Read(std::uint32_t size) noexcept {
  std::unique_ptr<std::uint8_t[]> copy(new (std::nothrow) std::uint8_t[size]);
  if (copy == nullptr || ::read(m_file, copy.get(), size) != static_cast<ssize_t>(size)) return;
  m_copy = std::move(copy);
  m_bytes = m_copy.get();
  m_size = size;
}

void CFileBytes::Map() noexcept {
  // The size that counts is the one under the lease.
  const std::uint32_t size = TakeLease(m_file) ? SizeOf(m_file) : 0;
  if (size < kMinMapped) return;
  void* memory = ::mmap(nullptr, size, PROT_READ, MAP_PRIVATE | MAP_POPULATE, m_file, 0);
  if (memory == MAP_FAILED) return;
  if (!IsResident(memory, size)) {
    ::munmap(memory, size);
    return;
  }
  m_bytes = static_cast<const std::uint8_t*>(memory);
  m_size = size;
}

CFileBytes::~CFileBytes() {
  // NOLINTNEXTLINE(cppcoreguidelines-pro-type-const-cast): the system takes back what it gave
  if (IsMapped()) ::munmap(const_cast<std::uint8_t*>(m_bytes), m_size);
  if (m_file >= 0) ::close(m_file);
}

#else

CFileBytes::CFileBytes(const CString& /*path*/) noexcept {}
CFileBytes::~CFileBytes() = default;

#endif

}  // namespace qenzor
