#pragma once

#include <cstdint>

#include "qenzor/check/finding.h"

namespace qenzor::check {

/// The codes, under the names that the checks know them by.
enum class Code : std::uint16_t {
  // The file as such.
  kUnreadable = 1001,
  kNotRecognised = 1002,
  kOutOfMemory = 1003,
  // The framing of binary documents.
  kTruncated = 1010,
  kChunkOverrun = 1011,
  kFieldOverrun = 1012,
  kRemainder = 1013,
  kTooDeep = 1014,
  kStoredTextTooLong = 1015,
  kRootId = 1016,
  kBytesAfterRoot = 1017,
  kUnknownChunk = 1018,
  kMisplacedChunk = 1019,
  kRepeatedChunk = 1020,
  kSetCount = 1021,
  kTextOddSize = 1022,
  kTextWithoutMark = 1023,
  kTextZeroUnit = 1024,
  kTooManyPoints = 1025,
  // XML.
  kXmlRefused = 1040,
  kXmlUnstorable = 1041,
  // What the values of a document mean to each other.
  kRepeatedKey = 1060,
  kDrawInfoIndex = 1061,
  kMarkIndex = 1062,
  kZIdNotDrawn = 1080,
  kZIdNowhere = 1081,
};

/// The place of a code in the table.
std::size_t PositionOf(Code code) noexcept;

}  // namespace qenzor::check
