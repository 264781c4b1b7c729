#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "failure.h"
#include "qenzor/check/check.h"

namespace tool {

using qenzor::BinaryKind;

/// A file as a command gets it; "-" names standard input.
struct Input {
  std::string Name;  ///< as messages call it
  std::string Path;
  bool IsRegular = false;  ///< can be read a second time
  std::uint64_t Size = 0;  ///< of the whole file, in bytes
  std::vector<std::uint8_t> Bytes;
};

/// Nothing tells what kind of document the file is.
class CUnknownKind : public CFailure {
 public:
  using CFailure::CFailure;
};

enum class Need {
  kFront,  ///< enough bytes to tell the kind, where the file can be read a second time
  kAll,    ///< of a binary document, all of them
};

/// Reads a file that is a document of the kind asked for, or looks like one if none is. Throws
/// CFailure when it cannot be read, does not look like one, or is longer than one can be: what
/// never ends is given up early.
Input ReadInput(const std::string& path, const std::string& asked, Need need);
/// The front of a file that shall be XML, or all of what cannot be read a second time. Of what is
/// no XML at all, the front stands for the file.
Input ReadXmlInput(const std::string& path);

/// What a file holds.
struct DocumentKind {
  BinaryKind Kind;
  bool IsXml;
};

/// The kind from the content, then from the extension; a kind asked for ("qen", "zor") comes first.
/// Throws CUnknownKind when nothing tells it.
DocumentKind FindKind(const Input& input, const std::string& asked);

/// The kind that XML text seems to be of from its first element, or the one asked for.
std::optional<BinaryKind> FindXmlKind(const Input& input, const std::string& asked);

}  // namespace tool
