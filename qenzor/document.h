#pragma once

#include <cstdint>
#include <functional>
#include <stop_token>

#include "qenzor/platform/standard.h"
#include "qenzor/text/xml_options.h"

namespace qenzor {

/// How a document is read.
struct ReadOptions {
  /// A longer file is refused (FailureKind::kTooLarge).
  std::uint64_t MostBytes = 0xFFFFFFFF;
  /// Hears now and then how many bytes have been read, of how many; 0 where that is not known, as
  /// for a pipe. Called on the reading thread; must not throw.
  std::function<void(std::uint64_t done, std::uint64_t all)> Progress;
  /// Asks to stop (FailureKind::kCancelled).
  std::stop_token Stop;
};

/// How a document is saved.
struct SaveOptions {
  /// Whether the file and its folder have to have reached the disk before saving has succeeded.
  bool Sync = true;
  /// What XML is written in.
  XmlEncoding Encoding = XmlEncoding::kShiftJis;
};

}  // namespace qenzor
