#pragma once

#include <array>
#include <vector>

#include "qenzor/check/content_impl.h"
#include "qenzor/check/reporter_impl.h"
#include "qenzor/platform/map.h"

namespace qenzor::check {

/// What the parts of a document must know of each other, gathered before they are checked.
struct Facts {
  bool IsWhole = false;  ///< reading takes the document; otherwise nothing follows from the rest
  CZIdTable ZIds;
  std::vector<std::uint32_t> DrawInfos;  ///< their chunk ids
  std::vector<bool> UsedDrawInfos;       ///< as long as the highest index asks for
  std::uint64_t Marks = 0;
  std::vector<bool> UsedMarks;
};

class CFactCollector : public CContentListener {
 public:
  /// No document of so many bytes has more elements than that.
  CFactCollector(Facts& facts, std::uint64_t bytes) : m_facts(facts), m_most(bytes) {}

  void Open(const PathNode& node, const ClassSchema& schema, std::uint64_t offset) override;
  void Close(const PathNode& node, const ClassSchema& schema, std::uint64_t kept) override;
  void Integer(const PathNode& node, const FieldSchema& field, std::uint64_t value,
               std::uint64_t offset) override;

 private:
  void Use(std::vector<bool>& used, std::uint64_t index) const;

  Facts& m_facts;
  std::uint64_t m_most;
  std::uint32_t m_kinds = 0;  ///< of the objects under the z-id at hand
};

/// Checks what a document's values say, and what they say against each other.
class CValueChecks : public CContentListener {
 public:
  CValueChecks(CReporter& reporter, const Facts& facts) : m_reporter(reporter), m_facts(facts) {}

  void Open(const PathNode& node, const ClassSchema& schema, std::uint64_t offset) override;
  void Close(const PathNode& node, const ClassSchema& schema, std::uint64_t kept) override;
  void Record(const PathNode& node, const FieldSchema& field, std::uint64_t offset) override;
  void Integer(const PathNode& node, const FieldSchema& field, std::uint64_t value,
               std::uint64_t offset) override;
  void Rect(const PathNode& node, const FieldSchema& field, const CRect& rect,
            std::uint64_t offset) override;
  void Ident(const PathNode& node, std::string_view ident, std::uint64_t offset) override;
  void Text(const PathNode& node, const FieldSchema& field, std::u16string_view text,
            std::uint64_t offset) override;

 private:
  /// A range of scales.
  struct Band {
    std::uint64_t Offset;
    std::uint64_t Min = 0;
    std::uint64_t Max = 0;
  };
  using Places = CMap<std::uint64_t, std::uint64_t>;

  void CheckInfo(const PathNode& node, const FieldSchema& field, std::uint64_t value,
                 std::uint64_t offset);
  void CheckVersion(const PathNode& node, std::uint64_t offset);
  /// Reports a number that has stood before, and remembers one that has not.
  void CheckRepeated(Code code, const char* what, Places& places, const PathNode& node,
                     std::uint64_t number);
  void CheckSegment(const PathNode& node, std::uint64_t number, std::uint64_t offset);
  void CheckZId(const PathNode& node, std::uint64_t z_id, std::uint64_t offset);
  void CheckIndex(const PathNode& node, const FieldSchema& field, std::uint64_t index,
                  std::uint64_t offset);
  void CheckUse(Code code, const char* what, const std::vector<bool>& used, const PathNode& node,
                std::uint64_t offset);
  void CheckFit(const PathNode& node);
  void CheckBands(const PathNode& node);

  CReporter& m_reporter;
  const Facts& m_facts;
  std::uint64_t m_opened = 0;     ///< where the chunk at hand begins
  std::uint64_t m_attribute = 0;  ///< where the draw attribute at hand begins
  std::array<std::optional<std::uint64_t>, 2> m_version;  ///< major and minor
  std::array<std::optional<std::uint64_t>, 2> m_mesh;  ///< segments to the east, and to the north
  Places m_segments{1};
  Places m_layers{1};
  Places m_keys{1};
  std::vector<Band> m_bands;  ///< of the draw info at hand
  std::uint32_t m_drawn = 0;  ///< kinds of objects that the draw attribute at hand draws
  CZIdTable m_asked;          ///< for which the other document has been asked
};

}  // namespace qenzor::check
