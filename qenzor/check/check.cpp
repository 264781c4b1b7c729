#include "qenzor/check/check.h"

#include "qenzor/check/binary_walk_impl.h"
#include "qenzor/check/value_checks_impl.h"

namespace qenzor {

namespace {

class CDeafSink : public CFindingSink {
 public:
  bool Take(const Finding& /*finding*/) override { return true; }
};

const check::DocumentSchema& SchemaOf(BinaryKind kind) noexcept {
  return kind == BinaryKind::kQen ? check::QenSchema() : check::ZorSchema();
}

check::Facts CollectFacts(std::span<const std::uint8_t> bytes, BinaryKind kind) {
  check::Facts facts;
  check::CFactCollector collector(facts, bytes.size());
  CDeafSink nobody;
  CheckOptions options;
  options.FirstErrorOnly = true;
  check::CReporter reporter(kind, options, nobody);
  facts.IsWhole = check::WalkBinary(bytes, SchemaOf(kind), reporter, collector);
  return facts;
}

}  // namespace

CheckCounts::CheckCounts() : m_counts(FindingKinds().size()) {}

void CheckCounts::Add(const FindingKind& kind, bool told) {
  Count& count = m_counts.at(static_cast<std::size_t>(&kind - FindingKinds().data()));
  ++count.All;
  if (told) ++count.Told;
}

std::uint64_t CheckCounts::Of(const FindingKind& kind) const noexcept {
  return m_counts[static_cast<std::size_t>(&kind - FindingKinds().data())].All;
}

std::uint64_t CheckCounts::Untold(const FindingKind& kind) const noexcept {
  const Count& count = m_counts[static_cast<std::size_t>(&kind - FindingKinds().data())];
  return count.All - count.Told;
}

std::uint64_t CheckCounts::Of(Severity severity) const noexcept {
  std::uint64_t sum = 0;
  for (const FindingKind& kind : FindingKinds())
    if (kind.Severity == severity) sum += Of(kind);
  return sum;
}

CheckCounts CheckBinary(std::span<const std::uint8_t> bytes, BinaryKind kind,
                        const CheckOptions& options, CFindingSink& sink) {
  check::CReporter reporter(kind, options, sink);
  check::Facts facts;
  // Only draw data have parts that point at others further on.
  if (kind == BinaryKind::kZor && !options.FirstErrorOnly) facts = CollectFacts(bytes, kind);
  check::CValueChecks values(reporter, facts);
  check::WalkBinary(bytes, SchemaOf(kind), reporter, values);
  return reporter.GetCounts();
}

ZIdResult CollectZIds(std::span<const std::uint8_t> bytes, BinaryKind kind) {
  check::Facts facts = CollectFacts(bytes, kind);
  return {std::move(facts.ZIds), facts.IsWhole};
}

}  // namespace qenzor
