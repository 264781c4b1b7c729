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
  kNameWraps = 1026,
  // XML.
  kXmlRefused = 1040,
  kXmlUnstorable = 1041,
  // What the values of a document mean to each other.
  kIdentEnd = 1060,
  kIdentName = 1061,
  kMagic = 1062,
  kVersion = 1063,
  kMeshEmpty = 1064,
  kRectEmpty = 1065,
  kSegmentOutsideMesh = 1066,
  kRepeatedSegment = 1067,
  kRepeatedLayer = 1068,
  kRepeatedKey = 1069,
  kDrawInfoIndex = 1070,
  kMarkIndex = 1071,
  kDrawInfoUnused = 1072,
  kMarkUnused = 1073,
  kBandReversed = 1074,
  kBandGap = 1075,
  kBandOverlap = 1076,
  // What a map and its draw data say about each other.
  kZIdNotDrawn = 1080,
  kZIdNowhere = 1081,
  kFitsNothing = 1082,
};

/// The place of a code in the table.
std::size_t PositionOf(Code code) noexcept;

}  // namespace qenzor::check
