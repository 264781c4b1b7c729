#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace tool {

/// Something that the library would refuse (an error) or drop without a word (a warning).
struct Finding {
  bool IsError = false;
  std::uint64_t Offset = 0;  ///< in the file
  std::string Path;          ///< of chunks below the root, positions from 0
  std::string Reason;
};

/// What a walk over a document's bytes has found.
struct CheckResult {
  std::vector<Finding> Findings;
  /// The z-ids that the document names (a map's z-id objects, a draw-data document's draw
  /// attributes), each with the place where it stands first.
  struct Place {
    std::uint64_t Offset;
    std::string Path;
  };
  std::map<std::uint64_t, Place> ZIds;

  const Finding* FirstError() const;
};

enum class BinaryKind { kQen, kZor };

/// Walks the bytes of a document without the help of the library's readers. Time is linear in the
/// bytes, and no byte outside them is looked at.
CheckResult CheckBytes(std::span<const std::uint8_t> bytes, BinaryKind kind);

}  // namespace tool
