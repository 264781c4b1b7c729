#pragma once

#include <cstdint>
#include <functional>
#include <span>
#include <vector>

#include "qenzor/check/check.h"
#include "qenzor/core/result.h"

namespace qenzor {

/// A stretch of a damaged document that was not kept, or a size that was made right. It and what it
/// points to are good until the sink returns.
struct QENZOR_EXPORT Loss {
  std::uint64_t Offset = 0;  ///< in bytes, from the front of the file
  std::uint64_t Size = 0;    ///< in bytes; 0 where a size was wrong and nothing is missing
  const PathNode* Path = nullptr;
  CString Reason;  ///< one sentence without a full stop
};

/// Is told of each loss, in the order of the file but for what is missing at its end.
using LossSink = std::function<void(const Loss&)>;

/// A document that reading takes.
struct QENZOR_EXPORT Salvaged {
  std::vector<std::uint8_t> Bytes;
  std::uint64_t Losses = 0;  ///< how many were told
};

/// Makes of a damaged binary document one that reading takes, of all that can be read of it: chunks
/// that are whole stay as they are, of the others what is whole inside them, and sizes are made
/// right. Whole chunks of unknown classes are kept too. In sets whose elements go by their
/// position, an empty element stands where one is lost before others: one of its kind, or a
/// LineDrawInfo where the kind cannot be told. A document without errors gives the same bytes and
/// no loss. A failure where the file info or the root chunk is gone. Time and memory are linear in
/// the bytes.
QENZOR_EXPORT Result<Salvaged> SalvageBinary(std::span<const std::uint8_t> bytes, BinaryKind kind,
                                             const LossSink& lose);

}  // namespace qenzor
