#pragma once

#include <cstdint>
#include <functional>
#include <set>
#include <span>
#include <string_view>
#include <vector>

#include "qenzor/check/finding.h"
#include "qenzor/platform/map.h"
#include "qenzor/text/xml_options.h"
#include "qenzor/view/frame.h"

namespace qenzor {

/// The two kinds of document.
enum class BinaryKind : std::uint8_t { kQen, kZor };

/// The z-ids that a document names: of a map's objects, or of draw attributes.
class QENZOR_EXPORT CZIdTable {
 public:
  /// Kinds has a bit for the chunk id of each kind of object under the z-id.
  void Add(std::uint64_t z_id, std::uint32_t kinds = 0) {
    if (std::uint32_t* const known = m_z_ids.Find(z_id); known != nullptr)
      *known |= kinds;
    else
      m_z_ids.Set(z_id, kinds);
  }
  bool Has(std::uint64_t z_id) const noexcept { return m_z_ids.Find(z_id) != nullptr; }
  std::uint32_t KindsOf(std::uint64_t z_id) const noexcept {
    const std::uint32_t* const kinds = m_z_ids.Find(z_id);
    return kinds == nullptr ? 0 : *kinds;
  }

 private:
  CMap<std::uint64_t, std::uint32_t> m_z_ids{1};
};

struct CheckOptions {
  /// Of each kind so many findings are told to the sink, and the others only counted.
  std::uint64_t MaxDetails = 1000;
  /// Kinds, by their code, that are neither told nor counted.
  std::set<std::uint16_t> Skipped;
  /// Stops at the first error.
  bool FirstErrorOnly = false;
  /// What XML text is read as.
  XmlEncoding Encoding = XmlEncoding::kShiftJis;
  /// Whether to tell what a binary document loses when it becomes XML in that encoding and is read
  /// again.
  bool RoundTrip = false;
  /// Whether to tell where a map's objects are out of place or misshapen, as they lie by the frame.
  bool Geometry = false;
  FrameOptions Frame;
  /// Whether there is an image of a name, in UTF-8 and without folders; empty to leave that out.
  std::function<bool(const CString& name)> HasImage;
  /// The z-ids of the document that this one belongs with, and how messages call it; null to leave
  /// that out.
  const CZIdTable* OtherZIds = nullptr;
  CString OtherName;
};

/// How much was found.
class QENZOR_EXPORT CCheckCounts {
 public:
  CCheckCounts();

  /// Findings of the kind, told or not.
  std::uint64_t Of(const FindingKind& kind) const noexcept;
  /// Those that were counted and not told.
  std::uint64_t Untold(const FindingKind& kind) const noexcept;
  std::uint64_t Of(Severity severity) const noexcept;

  /// Counts one more, told or not.
  void Add(const FindingKind& kind, bool told);
  /// Counts what others count as well.
  void Add(const CCheckCounts& others);

 private:
  struct Count {
    std::uint64_t All = 0;
    std::uint64_t Told = 0;
  };
  std::vector<Count> m_counts;
};

/// Walks the bytes of a document without the help of the library's readers, and tells everything
/// that reading would refuse or drop, and what the values say against each other. Time and memory
/// are linear in the bytes, and no byte outside them is looked at. Throws std::bad_alloc, and what
/// the sink throws.
QENZOR_EXPORT CCheckCounts CheckBinary(std::span<const std::uint8_t> bytes, BinaryKind kind,
                                       const CheckOptions& options, CFindingSink& sink);

/// The same for XML text: everything that making a document of it would refuse, drop or change, and
/// what its values say against each other.
QENZOR_EXPORT CCheckCounts CheckXml(std::string_view text, BinaryKind kind,
                                    const CheckOptions& options, CFindingSink& sink);

/// What a document tells about its z-ids, and whether reading takes it.
struct ZIdResult {
  CZIdTable ZIds;
  bool IsWhole = false;
};
[[nodiscard]] QENZOR_EXPORT ZIdResult CollectZIds(std::span<const std::uint8_t> bytes,
                                                  BinaryKind kind);
/// The same of XML text.
[[nodiscard]] QENZOR_EXPORT ZIdResult CollectXmlZIds(std::string_view text, BinaryKind kind,
                                                     XmlEncoding encoding = XmlEncoding::kShiftJis);

}  // namespace qenzor
