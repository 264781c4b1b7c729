#include "qenzor/check/value_checks_impl.h"
#include "qenzor/zor/draw_atter.h"
#include "qenzor/zor/draw_info_set.h"
#include "qenzor/zor/mark_data_set.h"

namespace qenzor::check {

using std::to_string;

void CFactCollector::Value(const PathNode& /*node*/, const FieldSchema& field, std::uint64_t value,
                           std::uint64_t /*offset*/) {
  if (field.Role == Role::kZId) m_facts.ZIds.Add(value);
}

void CFactCollector::Close(const PathNode& /*node*/, const ClassSchema& schema,
                           std::uint64_t kept) {
  if (schema.Id == CDrawInfoSet::kChunkId) m_facts.DrawInfos = kept;
  if (schema.Id == CMarkDataSet::kChunkId) m_facts.Marks = kept;
}

void CValueChecks::Open(const PathNode& /*node*/, const ClassSchema& /*schema*/,
                        std::uint64_t offset) {
  m_opened = offset;
}

void CValueChecks::Value(const PathNode& node, const FieldSchema& field, std::uint64_t value,
                         std::uint64_t offset) {
  switch (field.Role) {
    case Role::kZId:
      return CheckZId(node, value, offset);
    case Role::kDrawInfoIdx:
    case Role::kMarkDataIdx:
      return CheckIndex(node, field, value, offset);
    default:
      return;
  }
}

void CValueChecks::CheckZId(const PathNode& node, std::uint64_t z_id, std::uint64_t offset) {
  const bool is_drawing = node.Id == CDrawAtter::kChunkId;
  if (is_drawing) {
    const std::uint64_t* const earlier = m_keys.Find(z_id);
    if (earlier != nullptr)
      m_reporter.Report(Code::kRepeatedKey, m_opened, &node, [&] {
        return "z-id " + to_string(z_id) + " stands again and replaces the one at " +
               m_reporter.DescribePlace(*earlier);
      });
    else
      m_keys.Set(z_id, m_opened);
  }
  const CheckOptions& options = m_reporter.GetOptions();
  if (options.OtherZIds == nullptr || options.OtherZIds->Has(z_id) || m_asked.Has(z_id)) return;
  m_asked.Add(z_id);
  m_reporter.Report(is_drawing ? Code::kZIdNowhere : Code::kZIdNotDrawn, offset, &node, [&] {
    return "z-id " + to_string(z_id) +
           (is_drawing ? " stands nowhere in " : " has no draw attribute in ") + options.OtherName;
  });
}

void CValueChecks::CheckIndex(const PathNode& node, const FieldSchema& field, std::uint64_t index,
                              std::uint64_t offset) {
  const bool names_mark = field.Role == Role::kMarkDataIdx;
  const std::uint64_t count = names_mark ? m_facts.Marks : m_facts.DrawInfos;
  if (!m_facts.IsWhole || index < count) return;
  m_reporter.Report(names_mark ? Code::kMarkIndex : Code::kDrawInfoIndex, offset, &node, [&] {
    return CString(field.Tag) + ' ' + to_string(index) + " lies outside the set of " +
           to_string(count) + (names_mark ? " marks" : " draw infos");
  });
}

}  // namespace qenzor::check
