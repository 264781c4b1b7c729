#pragma once

#include <cstdint>
#include <functional>
#include <limits>
#include <stop_token>

#include "qenzor/platform/standard.h"

namespace qenzor {

/// How a document is read.
struct ReadOptions {
  static constexpr std::uint64_t kNoLimit = std::numeric_limits<std::uint64_t>::max();

  /// A longer file is refused (FailureKind::kTooLarge).
  std::uint64_t MostBytes = kNoLimit;
  /// The document may take so many bytes of memory, else it is refused (FailureKind::kTooLarge).
  /// Counted while it is read: its objects, arrays, lists and texts, by the 16 KiB where they are
  /// cut from slabs; for an edit form also those of the document that it is made from. What reading
  /// itself needs for a while, 256 KiB or for XML 4 MiB, is not counted.
  std::uint64_t MostMemory = kNoLimit;
  /// Called now and then, on the reading thread, with the number of bytes read and that of all
  /// bytes; the latter is 0 where it is not known, as for a pipe. Must not throw.
  std::function<void(std::uint64_t done, std::uint64_t all)> Progress;
  /// Asks to stop (FailureKind::kCancelled).
  std::stop_token Stop;
};

}  // namespace qenzor
