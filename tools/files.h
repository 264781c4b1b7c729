#pragma once

#include <functional>
#include <string>
#include <vector>

namespace tool {

/// Calls f with each path and whether it was found in a folder. With recursive, folders stand for
/// the files in them and below, by their names in order; links to folders are not followed.
void ForEachFile(const std::vector<std::string>& paths, bool recursive,
                 const std::function<void(const std::string& path, bool in_folder)>& f);

}  // namespace tool
