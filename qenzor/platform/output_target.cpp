#include <unistd.h>

#include <cerrno>
#include <charconv>
#include <filesystem>

#include "qenzor/platform/output_target_impl.h"

namespace qenzor {

namespace {

namespace fs = std::filesystem;

/// The number of the open descriptor that the name stands for; -1 if it stands for none.
int DescriptorOf(const fs::path& folder, const CString& name) {
  int descriptor = -1;
  const char* const end = name.data() + name.size();
  const auto [past, failure] = std::from_chars(name.data(), end, descriptor);
  if (failure != std::errc{} || past != end) return -1;
  std::error_code error;
  return folder == fs::canonical("/dev/fd", error) ? descriptor : -1;
}

OutputTarget::Kind KindOf(const struct stat& status) {
  return S_ISREG(status.st_mode) ? OutputTarget::Kind::kFile : OutputTarget::Kind::kOther;
}

bool Fail(int reason) {
  errno = reason;
  return false;
}

}  // namespace

bool FindOutputTarget(const CString& path, OutputTarget& target) {
  // As many links as the system itself follows.
  constexpr int kMaxLinks = 40;
  using Kind = OutputTarget::Kind;
  const bool exists = ::stat(path.c_str(), &target.Status) == 0;
  target.Path = path;
  if (exists && S_ISDIR(target.Status.st_mode)) {
    target.What = Kind::kFolder;
    return true;
  }
  if (path == "/dev/stdout") {  // also where there is no such file
    target.What = Kind::kDescriptor;
    target.Descriptor = STDOUT_FILENO;
    return true;
  }
  fs::path link = path;
  for (int links = 0; links <= kMaxLinks; ++links) {
    if (!link.has_filename()) return Fail(ENOENT);
    std::error_code error;
    const fs::path folder = fs::canonical(link.has_parent_path() ? link.parent_path() : ".", error);
    if (error) return Fail(error.value());
    target.Descriptor = DescriptorOf(folder, link.filename());
    if (target.Descriptor >= 0) {
      target.What = Kind::kDescriptor;
      return true;
    }
    link = folder / link.filename();
    struct stat status {};
    if (::lstat(link.c_str(), &status) != 0 && errno != ENOENT) return false;
    if (!S_ISLNK(status.st_mode)) {
      target.What = exists ? KindOf(target.Status) : Kind::kNew;
      target.Folder = folder;
      target.Path = link;
      return true;
    }
    const fs::path next = fs::read_symlink(link, error);
    if (error) return Fail(error.value());
    link = folder / next;
  }
  return Fail(ELOOP);
}

}  // namespace qenzor
