#pragma once

#include "qenzor/check/content_impl.h"
#include "qenzor/check/reporter_impl.h"
#include "qenzor/platform/map.h"

namespace qenzor::check {

/// What the parts of a document must know of each other, gathered before they are checked.
struct Facts {
  bool IsWhole = false;  ///< reading takes the document; otherwise nothing follows from the rest
  std::uint64_t DrawInfos = 0;
  std::uint64_t Marks = 0;
  CZIdTable ZIds;
};

class CFactCollector : public CContentListener {
 public:
  explicit CFactCollector(Facts& facts) : m_facts(facts) {}

  void Value(const PathNode& node, const FieldSchema& field, std::uint64_t value,
             std::uint64_t offset) override;
  void Close(const PathNode& node, const ClassSchema& schema, std::uint64_t kept) override;

 private:
  Facts& m_facts;
};

/// Checks what a document's values say against each other.
class CValueChecks : public CContentListener {
 public:
  CValueChecks(CReporter& reporter, const Facts& facts) : m_reporter(reporter), m_facts(facts) {}

  void Open(const PathNode& node, const ClassSchema& schema, std::uint64_t offset) override;
  void Value(const PathNode& node, const FieldSchema& field, std::uint64_t value,
             std::uint64_t offset) override;

 private:
  void CheckZId(const PathNode& node, std::uint64_t z_id, std::uint64_t offset);
  void CheckIndex(const PathNode& node, const FieldSchema& field, std::uint64_t index,
                  std::uint64_t offset);

  CReporter& m_reporter;
  const Facts& m_facts;
  std::uint64_t m_opened = 0;  ///< where the chunk at hand begins
  /// The draw attributes so far by their keys, with their places.
  CMap<std::uint64_t, std::uint64_t> m_keys{1};
  /// The z-ids for which the other document has been asked.
  CZIdTable m_asked;
};

}  // namespace qenzor::check
