#pragma once

// What a class consists of, as data: made from its field list, for walks that meet documents whose
// bytes or elements cannot be trusted to make objects of.

#include <cstdint>
#include <span>
#include <string_view>

namespace qenzor::check {

enum class Shape : std::uint8_t {
  kUnsigned,
  kSigned,
  kFloat,
  kColor,
  kIdent,
  kMagic,
  kPoint,
  kRect,
  kText,
  kGroup,   ///< fields inside an element of their own
  kRecord,  ///< an element of an array, made of fields
  kChunk,   ///< a sub-chunk that may be absent
};

/// What a value means to the checks, where its shape does not say it.
enum class Role : std::uint8_t {
  kNone,
  kIdent,
  kMagic,
  kMajorVer,
  kMinorVer,
  kSegmentNumX,
  kSegmentNumY,
  kCompCoef,
  kIncRect,
  kScaleBand,
  kDenomMax,
  kDenomMin,
  kMeshSegmentNo,
  kLayerNo,
  kZId,
  kDrawInfoIdx,
  kMarkDataIdx,
  kImageName,
};

struct ClassSchema;

struct FieldSchema {
  std::string_view Tag;
  check::Shape Shape = Shape::kUnsigned;
  check::Role Role = Role::kNone;
  std::uint8_t Width = 0;       ///< bytes of a number, or of each coordinate, in the file
  std::uint8_t CountWidth = 0;  ///< bytes of an array's count; 0 for what is no array
  bool KeepsWhenEmpty = false;  ///< an element without text leaves the value alone
  bool IsCutInMemory = false;   ///< coordinates that have 16 bits in memory too
  std::uint32_t Size = 0;       ///< bytes of one value in the file; 0 when they vary
  std::uint32_t MaxBytes = 0;   ///< of a text: the longest that reading accepts
  std::span<const FieldSchema> Members{};  ///< of a group or a record
  const ClassSchema* Class = nullptr;      ///< of a sub-chunk
};

struct ClassSchema {
  std::uint32_t Id;
  std::string_view Tag;
  bool IsSet;
  bool IsKeyed;
  std::span<const FieldSchema> Fields;
  bool (*Accepts)(std::uint32_t id);  ///< whether a sub-chunk of the id is kept
  /// Where fields may reach past the data size: what of their bytes counts, from how many stand
  /// before the elements of their array and how many they are. Null for all other classes.
  std::uint32_t (*Consumed)(std::uint32_t before, std::uint32_t consumed);
};

/// The class of a chunk id, or of an element's tag; null when there is none.
const ClassSchema* FindClass(std::uint32_t id) noexcept;
const ClassSchema* FindClass(std::string_view tag) noexcept;

/// All classes by their chunk ids; null where there is none.
std::span<const ClassSchema* const> AllClasses() noexcept;

/// A document as a whole.
struct DocumentSchema {
  std::string_view Tag;      ///< of the XML root
  std::string_view InfoTag;  ///< of the file info in XML
  std::span<const FieldSchema> InfoFields;
  std::uint32_t InfoSize;  ///< bytes of the file info
  const ClassSchema* Root;
};

const DocumentSchema& QenSchema() noexcept;
const DocumentSchema& ZorSchema() noexcept;

}  // namespace qenzor::check
