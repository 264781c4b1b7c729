#pragma once

#include <functional>
#include <string>

#include "qenzor/platform/file.h"

namespace tool {

/// Has write fill the file at the path, "-" being standard output. A regular file is replaced when
/// all of it stands on the disk: until then, and after any failure or signal, it is as it was.
/// Throws CFailure.
void WriteOutput(const std::string& path, const std::function<bool(qenzor::CFile&)>& write);

/// From now on SIGINT, SIGTERM and SIGHUP remove every scratch file before they end the process.
void WatchSignals();

}  // namespace tool
