#include "qenzor/platform/file_replacement.h"

#include <fcntl.h>
#include <unistd.h>

#include <cassert>
#include <cerrno>
#include <filesystem>
#include <system_error>

#include "qenzor/platform/output_target_impl.h"
#include "qenzor/platform/scratch_file_impl.h"

namespace qenzor {

namespace {

constexpr mode_t kPermissions = 0777;     // without those to run as somebody else
constexpr mode_t kNewPermissions = 0666;  // less what the process's mask says

/// Whether a folder that takes no new file may hold one that can be written.
bool IsFolderClosed(int error) noexcept {
  return error == EACCES || error == EPERM || error == EROFS;
}

/// Whether the system does not let the file be exchanged, though its content may be.
bool IsFixed(int error) noexcept {
  return error == EBUSY || error == EXDEV || IsFolderClosed(error);
}

/// Brings the folder's names to the disk. One that cannot be opened, or a system that knows nothing
/// of the kind, is no failure.
bool SyncFolder(const CString& folder) noexcept {
  // NOLINTNEXTLINE(*-vararg)
  const CDescriptor opened(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  return !opened.IsOpen() || ::fsync(opened.Get()) == 0 || errno != EIO;
}

CString DescribeError(int error) {
  const CString what = "cannot be written";
  return error == 0 ? what : what + ": " + std::generic_category().message(error);
}

}  // namespace

struct CFileReplacement::State {
  OutputTarget Target;
  CScratchFile Scratch;
  bool HasScratch = false;
  bool InPlace = false;  ///< the scratch file stands elsewhere
  CDescriptor Direct;    ///< what is written to as it stands
  CDescriptorFile File;
};

CFileReplacement::CFileReplacement() = default;
CFileReplacement::~CFileReplacement() = default;

CFile& CFileReplacement::GetFile() noexcept {
  assert(m_state != nullptr);
  return m_state->File;
}

CString CFileReplacement::GetError() const {
  return m_error.empty() && m_state != nullptr ? DescribeError(m_state->File.GetError()) : m_error;
}

bool CFileReplacement::Fail(int error) {
  m_error = DescribeError(error);
  m_state.reset();
  return false;
}

bool CFileReplacement::Open(const CString& path) {
  using Kind = OutputTarget::Kind;
  m_error.clear();
  m_state = std::make_unique<State>();
  OutputTarget& target = m_state->Target;
  if (!FindOutputTarget(path, target)) return Fail(errno);
  if (target.What == Kind::kDescriptor) return OpenDescriptor(target.Descriptor);
  if (target.What == Kind::kFolder) {
    m_error = "is a folder";
    return false;
  }
  if (target.What != Kind::kOther) return OpenFile();
  // NOLINTNEXTLINE(*-vararg)
  m_state->Direct.Reset(::open(target.Path.c_str(), O_WRONLY | O_NOCTTY | O_CLOEXEC));
  if (!m_state->Direct.IsOpen()) return Fail(errno);
  m_state->File.Attach(m_state->Direct.Get());
  return true;
}

bool CFileReplacement::OpenDescriptor(int descriptor) {
  m_error.clear();
  m_state = std::make_unique<State>();
  // NOLINTNEXTLINE(*-vararg)
  m_state->Direct.Reset(::fcntl(descriptor, F_DUPFD_CLOEXEC, 0));
  if (!m_state->Direct.IsOpen()) return Fail(errno);
  m_state->File.Attach(m_state->Direct.Get());
  return true;
}

bool CFileReplacement::OpenFile() {
  const OutputTarget& target = m_state->Target;
  const bool is_new = target.What == OutputTarget::Kind::kNew;
  if (!is_new) {
    // Nothing is forbidden to some users, but what an owner forbade himself is respected.
    if ((target.Status.st_mode & S_IWUSR) == 0) {
      m_error = "is read-only";
      return false;
    }
    if (::faccessat(AT_FDCWD, target.Path.c_str(), W_OK, AT_EACCESS) != 0) return Fail(errno);
  }
  CScratchFile& scratch = m_state->Scratch;
  const mode_t permissions = is_new ? kNewPermissions : S_IRUSR | S_IWUSR;
  m_state->HasScratch = scratch.Create(target.Folder, permissions);
  if (!m_state->HasScratch && !is_new && IsFolderClosed(errno)) {
    m_state->InPlace = true;
    std::error_code error;
    const CString folder = std::filesystem::temp_directory_path(error).string();
    m_state->HasScratch = !folder.empty() && scratch.Create(folder, permissions);
  }
  if (!m_state->HasScratch) return Fail(errno);
  m_state->File.Attach(scratch.GetDescriptor());
  return true;
}

bool CFileReplacement::Finish(bool sync) {
  assert(m_state != nullptr);
  CDescriptorFile& file = m_state->File;
  if (!file.Finish()) return Fail(file.GetError());
  const bool done = m_state->HasScratch ? Publish(sync) : m_state->Direct.Close();
  return done || Fail(errno);
}

bool CFileReplacement::Publish(bool sync) {
  const OutputTarget& target = m_state->Target;
  CScratchFile& scratch = m_state->Scratch;
  if (m_state->InPlace) return scratch.CopyOver(target.Path);
  const int file = scratch.GetDescriptor();
  const bool is_new = target.What == OutputTarget::Kind::kNew;
  if (!is_new) {
    // Whose file it is comes first: a change of that takes permissions away.
    static_cast<void>(::fchown(file, target.Status.st_uid, target.Status.st_gid) == 0);
    if (::fchmod(file, target.Status.st_mode & kPermissions) != 0) return false;
  }
  if (sync && ::fsync(file) != 0) return false;
  if (!scratch.MoveTo(target.Path))
    return !is_new && IsFixed(errno) && scratch.CopyOver(target.Path);
  return !sync || SyncFolder(target.Folder);
}

}  // namespace qenzor
