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
  kOtherKind = 1004,
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
  kXmlRefused = 1030,
  kXmlWrongRoot = 1031,
  kXmlNoMapData = 1032,
  kXmlUnstorable = 1033,
  kXmlNotATag = 1034,
  kXmlEncoding = 1035,
  kXmlLooksUtf8 = 1036,
  kXmlNotInCodePage = 1037,
  kXmlAfterRoot = 1040,
  kXmlStrayText = 1041,
  kXmlUnknownElement = 1042,
  kXmlMisplacedElement = 1043,
  kXmlMissingElement = 1044,
  kXmlRepeatedElement = 1045,
  kXmlUnknownAttribute = 1046,
  kXmlMissingAttribute = 1047,
  kXmlValueNotRead = 1048,
  kXmlValueOutOfRange = 1049,
  kXmlCoordinate = 1050,
  kXmlFloatLeftOut = 1051,
  kXmlTextTooLong = 1052,
  kXmlListTooLong = 1053,
  kXmlBareAmpersand = 1054,
  kXmlCharacterReference = 1055,
  kXmlIdentLength = 1056,
  kXmlUrlText = 1057,
  kXmlNameNotInCodePage = 1058,
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
  kImageMissing = 1077,
  // What a map and its draw data say about each other.
  kZIdNotDrawn = 1080,
  kZIdNowhere = 1081,
  kFitsNothing = 1082,
  // What does not come back from XML.
  kRoundTripLink = 1090,
  kRoundTripCharacter = 1091,
  kRoundTripSpace = 1092,
  kRoundTripNumber = 1093,
  kRoundTripInfo = 1094,
  kRoundTripOther = 1095,
  // Where objects lie, and what shape they have.
  kTooFewPoints = 1100,
  kRingOpen = 1101,
  kRingCrosses = 1102,
  kRingCounterClockwise = 1103,
  kRepeatedPoint = 1104,
  kOutsideCell = 1105,
  kLabelOutsideMap = 1106,
  kCutNotMet = 1107,
};

/// The place of a code in the table.
std::size_t PositionOf(Code code) noexcept;

}  // namespace qenzor::check
