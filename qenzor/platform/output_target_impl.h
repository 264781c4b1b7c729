#pragma once

#include <sys/stat.h>

#include "qenzor/platform/strings.h"

namespace qenzor {

/// What a path leads to, for whoever wants to write there.
struct OutputTarget {
  enum class Kind {
    kNew,         ///< nothing yet; symbolic links were followed to the name that is missing
    kFile,        ///< a regular file
    kFolder,      ///<
    kOther,       ///< a device, a pipe: what is written to it goes somewhere
    kDescriptor,  ///< one that this process has open, as /dev/stdout names one
  };

  Kind What = Kind::kNew;
  CString Folder;  ///< of the file or the name that is missing: absolute, without symbolic links
  CString Path;    ///< the file in it; of what is no file, as the caller named it
  struct stat Status {};
  int Descriptor = -1;
};

/// False, with errno, when the path leads nowhere.
bool FindOutputTarget(const CString& path, OutputTarget& target);

}  // namespace qenzor
