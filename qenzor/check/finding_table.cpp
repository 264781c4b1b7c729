// The one table of everything that checks find: the documentation, the list that the tool prints
// and every finding's own severity come from it.

#include <algorithm>
#include <array>
#include <cassert>

#include "qenzor/check/finding_code_impl.h"

namespace qenzor {

namespace {

using check::Code;

constexpr FindingKind Kind(Code code, std::string_view name, Severity severity,
                           std::string_view meaning, std::string_view proposal) {
  return {static_cast<std::uint16_t>(code), name, severity, meaning, proposal};
}

constexpr std::array kKinds{
    Kind(Code::kUnreadable, "file-unreadable", Severity::kError,
         "The file cannot be opened or read.", "See that it is there and may be read."),
    Kind(Code::kNotRecognised, "file-not-recognised", Severity::kError,
         "Neither the content nor the name tells that the file is a map project or draw data.",
         "Name the kind with --kind if it is one."),
    Kind(Code::kOutOfMemory, "out-of-memory", Severity::kError,
         "The memory did not suffice to check the file.", "Check it where there is more."),
    Kind(Code::kTruncated, "truncated", Severity::kError,
         "The file ends before what its sizes and counts announce.",
         "Get the whole file, or let the tool salvage what is there."),
    Kind(Code::kChunkOverrun, "chunk-overrun", Severity::kError,
         "A chunk's data size reaches past the end of the chunk that holds it.",
         "Set one of the two sizes right."),
    Kind(Code::kFieldOverrun, "field-overrun", Severity::kError,
         "The fields of a chunk take more bytes than the chunk has.",
         "Set the count in front of them or the chunk's data size right."),
    Kind(Code::kRemainder, "chunk-remainder", Severity::kError,
         "Bytes at the end of a chunk's data are too few to be a chunk.",
         "Remove them, or set the data size right."),
    Kind(Code::kTooDeep, "chunk-too-deep", Severity::kError, "Chunks nest deeper than is read.",
         "Remove the chunks inside; no document needs them."),
    Kind(Code::kStoredTextTooLong, "stored-text-too-long", Severity::kError,
         "A text takes more bytes than reading accepts in its place.", "Shorten the text."),
    Kind(
        Code::kRootId, "root-id", Severity::kWarning,
        "The outermost chunk does not have the id of the document's kind; it is read all the same.",
        "See that the file is of this kind, and set the id right."),
    Kind(Code::kBytesAfterRoot, "bytes-after-root", Severity::kWarning,
         "Bytes behind the outermost chunk are dropped.",
         "Remove them; if they matter, the outermost chunk's data size is wrong."),
    Kind(Code::kUnknownChunk, "chunk-unknown", Severity::kWarning,
         "A chunk has an id that no class has; it is dropped with all that it holds.",
         "Remove it, or set its id right."),
    Kind(Code::kMisplacedChunk, "chunk-misplaced", Severity::kWarning,
         "A chunk stands where its class has no place; it is dropped with all that it holds.",
         "Move it to where it belongs."),
    Kind(Code::kRepeatedChunk, "chunk-repeated", Severity::kWarning,
         "A chunk stands a second time in a place that takes one; the earlier one is dropped.",
         "Keep one of them, or put what both hold into one."),
    Kind(Code::kSetCount, "set-count", Severity::kWarning,
         "A set declares another number of elements than it holds; what it holds counts.",
         "Write the document anew, which sets the number right."),
    Kind(Code::kTextOddSize, "text-odd-size", Severity::kWarning,
         "A text has an odd number of bytes; the last one is dropped.",
         "Write the text in whole units of two bytes."),
    Kind(Code::kTextWithoutMark, "text-without-mark", Severity::kWarning,
         "A text does not begin with a byte-order mark and is read as empty.",
         "Put FF FE in front of it."),
    Kind(Code::kTextZeroUnit, "text-zero-unit", Severity::kWarning,
         "A text holds a zero unit; what follows it is dropped.",
         "End the text where it ends; it needs no terminator."),
    Kind(Code::kTooManyPoints, "too-many-points", Severity::kWarning,
         "A list has more points than all readers can count.", "Divide the object."),
    Kind(Code::kNameWraps, "name-too-long", Severity::kWarning,
         "A name is so long that a 16-bit count of bytes wraps; the end of the fields is read as "
         "sub-chunks.",
         "Shorten the name."),
    Kind(Code::kXmlRefused, "xml-refused", Severity::kError,
         "The text is not well-formed XML, or exceeds what is parsed.",
         "Mend the text at the place given."),
    Kind(Code::kXmlUnstorable, "xml-unstorable", Severity::kError,
         "The XML holds what a binary document has no room for.", "Shorten or divide it."),
    Kind(Code::kIdentEnd, "ident-end", Severity::kWarning,
         "The identification does not end in the bytes 0D 0A 1A.",
         "Set them; other bytes hint at a copy in text mode."),
    Kind(Code::kIdentName, "ident-name", Severity::kNote,
         "The six characters of the identification are not the usual ones.",
         "Nothing need be done if the map's users expect them."),
    Kind(Code::kMagic, "magic", Severity::kWarning, "The magic number is not 0x4041.",
         "Set it to 0x4041; XML knows no other."),
    Kind(Code::kVersion, "version", Severity::kWarning, "The version is not 1.0.",
         "See that the file is meant for readers of this version."),
    Kind(Code::kMeshEmpty, "mesh-empty", Severity::kWarning,
         "The mesh has no segments in one direction; nothing has its place on the map.",
         "Set the number of segments, 1 at least."),
    Kind(Code::kRectEmpty, "rect-empty", Severity::kWarning,
         "The map's rectangle has no extent; nothing has its place on the map.",
         "Set west below east and south below north."),
    Kind(Code::kSegmentOutsideMesh, "segment-outside-mesh", Severity::kWarning,
         "A segment's number lies beyond the mesh; its objects lie outside the map.",
         "Enlarge the mesh, or correct the number; the first segment is 0."),
    Kind(Code::kRepeatedSegment, "segment-repeated", Severity::kWarning,
         "Two segments have one number.",
         "Put the layers of both into one, or correct the number."),
    Kind(Code::kRepeatedLayer, "layer-repeated", Severity::kWarning,
         "Two layers of a segment have one number.",
         "Put the objects of both into one, or correct the number."),
    Kind(Code::kRepeatedKey, "z-id-repeated", Severity::kWarning,
         "Two draw attributes have one z-id; the earlier one is dropped.",
         "Put the draw info indices of both into one."),
    Kind(Code::kDrawInfoIndex, "draw-info-index", Severity::kWarning,
         "A draw attribute names a draw info that does not exist.",
         "Correct the index; the first draw info is 0."),
    Kind(Code::kMarkIndex, "mark-index", Severity::kWarning,
         "A label's draw info names a mark that does not exist.",
         "Correct the index, or say in its flags that it shows no mark; the first mark is 0."),
    Kind(Code::kDrawInfoUnused, "draw-info-unused", Severity::kWarning,
         "No draw attribute names the draw info.",
         "Remove what is not needed, and count indices anew, or name it."),
    Kind(Code::kMarkUnused, "mark-unused", Severity::kWarning,
         "No label's draw info names the mark.",
         "Remove what is not needed, and count indices anew, or name it."),
    Kind(Code::kBandReversed, "scale-band-reversed", Severity::kWarning,
         "A range of scales has its ends the wrong way round; it holds at no scale.",
         "Exchange DenomMin and DenomMax."),
    Kind(Code::kBandGap, "scale-band-gap", Severity::kWarning,
         "Between two ranges of scales nothing is drawn.",
         "Let one range end at the denominator at which the next begins."),
    Kind(Code::kBandOverlap, "scale-band-overlap", Severity::kWarning,
         "Two ranges of scales overlap; the one that stands first holds.",
         "Let one range end at the denominator at which the next begins."),
    Kind(Code::kZIdNotDrawn, "z-id-not-drawn", Severity::kWarning,
         "Objects of the map have a z-id without a draw attribute; they are not drawn.",
         "Add a draw attribute with that z-id."),
    Kind(Code::kZIdNowhere, "z-id-nowhere", Severity::kWarning,
         "A draw attribute has a z-id that no object of the map has.",
         "Remove it, or correct its z-id."),
    Kind(
        Code::kFitsNothing, "attribute-fits-nothing", Severity::kWarning,
        "None of a draw attribute's draw infos draws an object of the kinds that the map has under "
        "its z-id.",
        "Name draw infos of the objects' own kinds."),
};

static_assert(std::ranges::is_sorted(kKinds, {}, &FindingKind::Code));

}  // namespace

std::span<const FindingKind> FindingKinds() noexcept { return kKinds; }

std::size_t check::PositionOf(Code code) noexcept {
  const auto* const found =
      std::ranges::lower_bound(kKinds, static_cast<std::uint16_t>(code), {}, &FindingKind::Code);
  assert(found != kKinds.end() && found->Code == static_cast<std::uint16_t>(code));
  return static_cast<std::size_t>(found - kKinds.begin());
}

}  // namespace qenzor
