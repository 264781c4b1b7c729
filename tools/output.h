#pragma once

#include <functional>
#include <string>

#include "input.h"
#include "qenzor/core/result.h"
#include "qenzor/platform/file.h"

namespace tool {

/// Calls save with the path as the library knows it; "-" is standard output. A regular file is
/// replaced when all of it stands on the disk: until then, and after any failure or signal, it is
/// as it was. Throws CFailure, which names the input where that holds what cannot be stored.
void SaveOutput(const Input& input, const std::string& path,
                const std::function<qenzor::Result<void>(const std::string&)>& save);

/// The same for what write puts into the file that takes the path's place.
void WriteOutput(const std::string& path,
                 const std::function<qenzor::Result<void>(qenzor::CFile&)>& write);

/// From now on SIGINT, SIGTERM and SIGHUP remove every scratch file before they end the process.
void WatchSignals();

}  // namespace tool
