#include "output.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <csignal>
#include <cstdio>
#include <filesystem>
#include <system_error>

#include "failure.h"

namespace tool {

namespace {

/// The scratch file that exists, for the signal handler, which can use nothing better than this.
// NOLINTBEGIN(cppcoreguidelines-avoid-non-const-global-variables): a handler knows nothing else
std::array<char, PATH_MAX> g_scratch{};
volatile std::sig_atomic_t g_has_scratch = 0;
// NOLINTEND(cppcoreguidelines-avoid-non-const-global-variables)

extern "C" void OnSignal(int signal) {
  if (g_has_scratch != 0) ::unlink(g_scratch.data());
  static_cast<void>(::raise(signal));  // the handler was reset: this ends the process
}

class CSignalBlock {
 public:
  CSignalBlock() {
    sigset_t all;
    sigfillset(&all);
    pthread_sigmask(SIG_BLOCK, &all, &m_before);
  }
  ~CSignalBlock() { pthread_sigmask(SIG_SETMASK, &m_before, nullptr); }
  CSignalBlock(const CSignalBlock&) = delete;
  CSignalBlock& operator=(const CSignalBlock&) = delete;

 private:
  sigset_t m_before{};
};

/// Standard output as a file to write to. A failure sticks: sets do not look at what became of
/// their elements.
class CStdoutFile final : public qenzor::CFile {
 public:
  void Write(const void* data, std::uint32_t size) override {
    if (m_bad || std::fwrite(data, 1, size, stdout) != size) {
      m_bad = true;
      throw qenzor::CFileException("standard output does not take what is written");
    }
  }
  bool Finish() { return !m_bad && std::fflush(stdout) == 0; }

 private:
  bool m_bad = false;
};

std::string FolderOf(const std::string& path) {
  const std::size_t slash = path.rfind('/');
  if (slash == std::string::npos) return ".";
  return slash == 0 ? "/" : path.substr(0, slash);
}

/// The permissions of the file that is replaced, or those of a new one.
mode_t ModeFor(const struct stat& target, bool exists) {
  if (exists) return target.st_mode & 07777;
  const mode_t mask = ::umask(0);
  ::umask(mask);
  return 0666 & ~mask;
}

template <class File>
bool Fill(File& file, const std::function<bool(qenzor::CFile&)>& write) {
  bool written = false;
  try {
    written = write(file);
  } catch (const qenzor::CFileException&) {
    written = false;
  }
  return file.Finish() && written;
}

[[noreturn]] void FailWriting(const std::string& name, int error) {
  throw CFailure(name, error == 0 ? "cannot be written"
                                  : "cannot be written: " + std::generic_category().message(error));
}

}  // namespace

CScratchFile::CScratchFile(const std::string& folder) : m_path(folder + "/.qenzor-XXXXXX") {
  const CSignalBlock block;
  const int handle = ::mkstemp(m_path.data());
  if (handle < 0) FailWriting(folder, errno);
  ::close(handle);
  if (m_path.size() < g_scratch.size()) {
    *std::copy(m_path.begin(), m_path.end(), g_scratch.begin()) = '\0';
    g_has_scratch = 1;
  }
}

CScratchFile::~CScratchFile() {
  const CSignalBlock block;
  if (!m_path.empty()) ::unlink(m_path.c_str());
  g_has_scratch = 0;
}

bool CScratchFile::MoveTo(const std::string& path) {
  const CSignalBlock block;
  if (::rename(m_path.c_str(), path.c_str()) != 0) return false;
  m_path.clear();
  g_has_scratch = 0;
  return true;
}

void WatchSignals() {
  // A file that grows past a limit is a failed write like any other.
  static_cast<void>(std::signal(SIGXFSZ, SIG_IGN));
  struct sigaction action {};
  action.sa_handler = &OnSignal;
  action.sa_flags = static_cast<int>(SA_RESETHAND);
  for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
    struct sigaction before {};
    ::sigaction(signal, nullptr, &before);
    if (before.sa_handler != SIG_IGN) ::sigaction(signal, &action, nullptr);
  }
}

void WriteOutput(const std::string& path, const std::function<bool(qenzor::CFile&)>& write) {
  errno = 0;
  if (path == "-") {
    CStdoutFile out;
    if (!Fill(out, write)) FailWriting("standard output", errno);
    return;
  }
  struct stat target {};
  const bool exists = ::stat(path.c_str(), &target) == 0;
  if (exists && S_ISDIR(target.st_mode)) throw CFailure(path, "is a folder");
  const auto write_to = [&](const std::string& file_path) {
    using qenzor::CFile;
    qenzor::CDocumentFile file;
    errno = 0;
    if (!file.Open(file_path, CFile::modeCreate | CFile::modeWrite | CFile::typeBinary) ||
        !Fill(file, write))
      FailWriting(path, errno);
  };
  if (exists && !S_ISREG(target.st_mode)) {
    write_to(path);
    return;
  }
  // Through a symbolic link, the file that it names is replaced.
  std::error_code error;
  const std::string final_path = exists ? std::filesystem::canonical(path, error).string() : path;
  if (error) throw CFailure(path, error.message());
  errno = 0;
  CScratchFile scratch(FolderOf(final_path));
  write_to(scratch.GetPath());
  if (::chmod(scratch.GetPath().c_str(), ModeFor(target, exists)) != 0 ||
      !scratch.MoveTo(final_path))
    FailWriting(path, errno);
}

}  // namespace tool
