#include "files.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

namespace tool {

namespace {

namespace fs = std::filesystem;
using Visit = std::function<void(const std::string&, bool)>;

// NOLINTNEXTLINE(misc-no-recursion): as deep as folders are
void VisitFolder(const fs::path& folder, const Visit& f) {
  std::error_code error;
  std::vector<fs::directory_entry> entries;
  for (fs::directory_iterator it(folder, error), end; !error && it != end; it.increment(error))
    entries.push_back(*it);
  // A folder that cannot be read is told of as a file that cannot be.
  if (error) return f(folder.string(), false);
  std::ranges::sort(entries, {}, [](const fs::directory_entry& entry) { return entry.path(); });
  for (const fs::directory_entry& entry : entries) {
    std::error_code ignored;
    if (entry.is_directory(ignored) && !entry.is_symlink(ignored))
      VisitFolder(entry.path(), f);
    else if (entry.is_regular_file(ignored))
      f(entry.path().string(), true);
  }
}

}  // namespace

void ForEachFile(const std::vector<std::string>& paths, bool recursive, const Visit& f) {
  for (const std::string& path : paths) {
    std::error_code ignored;
    if (recursive && path != "-" && fs::is_directory(path, ignored))
      VisitFolder(path, f);
    else
      f(path, false);
  }
}

}  // namespace tool
