#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "qenzor/check/check.h"

namespace tool {

using qenzor::BinaryKind;

/// A file that has been read whole; "-" names standard input.
struct Input {
  std::string Name;  ///< as messages call it
  std::string Path;
  bool IsRegular = false;  ///< can be read a second time
  std::vector<std::uint8_t> Bytes;
};

/// Throws CFailure when the file cannot be read.
Input ReadInput(const std::string& path);

/// What a file holds.
struct DocumentKind {
  BinaryKind Kind;
  bool IsXml;
};

/// The kind from the content, then from the extension; a kind asked for ("qen", "zor") comes first.
/// Throws CFailure when nothing tells it.
DocumentKind FindKind(const Input& input, const std::string& asked);

/// The kind that XML text seems to be of from its first element, or the one asked for.
std::optional<BinaryKind> FindXmlKind(const Input& input, const std::string& asked);

}  // namespace tool
