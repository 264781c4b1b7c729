#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

#include "qenzor/platform/export.h"
#include "qenzor/platform/strings.h"

namespace qenzor {

enum class Severity : std::uint8_t {
  kNote,     ///< worth knowing, nothing is wrong
  kWarning,  ///< something is lost without a word, or doubtful
  kError,    ///< reading, or making a document of the XML, refuses it
};

/// "note", "warning" or "error".
QENZOR_EXPORT std::string_view SeverityName(Severity severity) noexcept;

/// One kind of finding. All there are stand in one table.
struct FindingKind {
  std::uint16_t Code;  ///< stays what it is; written as Q and four digits
  std::string_view Name;
  qenzor::Severity Severity;
  std::string_view Meaning;   ///< one sentence: what is wrong, and what comes of it
  std::string_view Proposal;  ///< one sentence: what to do about it
};

/// All kinds, by ascending code.
QENZOR_EXPORT std::span<const FindingKind> FindingKinds() noexcept;
/// The kind with this code ("Q1042") or name ("xml-unknown-element"); null when there is none.
QENZOR_EXPORT const FindingKind* FindFindingKind(std::string_view code_or_name) noexcept;
/// The code as it is written: "Q1042".
QENZOR_EXPORT CString CodeText(const FindingKind& kind);

/// A chunk or element on the way from the root to where something was found.
struct PathNode {
  const PathNode* Parent = nullptr;       ///< null for the root
  std::string_view Tag;                   ///< empty for a chunk of an unknown class
  std::uint32_t Id = 0;                   ///< of the chunk
  std::optional<std::uint64_t> Index{};   ///< position in the set that holds it, from 0
  std::optional<std::uint64_t> Number{};  ///< the segment or layer number, or z-id, that it bears
};

/// The path as "MeshSegmentSet/MeshSegment[0]/LayerSet": the root is named only when it stands
/// alone, and of more than a dozen levels the middle is left out. Empty for null.
QENZOR_EXPORT CString RenderPath(const PathNode* node);

/// Something found in a document. It and what it points to are good until the sink returns.
struct QENZOR_EXPORT Finding {
  const FindingKind* Kind = nullptr;
  std::uint64_t Offset = 0;  ///< in bytes, from the front of the file
  std::uint32_t Line = 0;    ///< of XML text, from 1; 0 for binary documents
  std::uint32_t Column = 0;  ///< in bytes, from 1; a tab is one
  const PathNode* Path = nullptr;
  CString Reason;  ///< one sentence without a full stop

  /// The numbers of the segment and the layer, and the z-id, that the place belongs to.
  std::optional<std::uint64_t> GetSegment() const noexcept;
  std::optional<std::uint64_t> GetLayer() const noexcept;
  std::optional<std::uint64_t> GetZId() const noexcept;
  /// The position, in the set that holds it, of the innermost element that the place belongs to.
  std::optional<std::uint64_t> GetIndex() const noexcept;
};

/// Takes findings as they are made.
class QENZOR_EXPORT CFindingSink {
 public:
  virtual ~CFindingSink() = default;
  /// False to hear of no more.
  virtual bool Take(const Finding& finding) = 0;
};

}  // namespace qenzor
