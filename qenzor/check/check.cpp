#include "qenzor/check/check.h"

#include "qenzor/check/binary_walk_impl.h"
#include "qenzor/check/geometry_checks_impl.h"
#include "qenzor/check/line_index_impl.h"
#include "qenzor/check/round_trip_impl.h"
#include "qenzor/check/value_checks_impl.h"
#include "qenzor/check/xml_text_impl.h"
#include "qenzor/check/xml_walk_impl.h"
#include "qenzor/qen_xml.h"
#include "qenzor/zor_xml.h"

namespace qenzor {

namespace {

class CDeafSink : public CFindingSink {
 public:
  bool Take(const Finding& /*finding*/) override { return true; }
};

const check::DocumentSchema& SchemaOf(BinaryKind kind) noexcept {
  return kind == BinaryKind::kQen ? check::QenSchema() : check::ZorSchema();
}

/// Reports in the lines of a text.
class CXmlReporter : public check::CReporter {
 public:
  CXmlReporter(std::string_view text, BinaryKind kind, const CheckOptions& options,
               CFindingSink& sink)
      : CReporter(kind, options, sink), m_lines(text) {}

  CString DescribePlace(std::uint64_t offset) const override {
    return "line " + std::to_string(m_lines.Find(offset).Line);
  }

 protected:
  void FindLine(Finding& finding) const override {
    const check::CLineIndex::Place place = m_lines.Find(finding.Offset);
    finding.Line = place.Line;
    finding.Column = place.Column;
  }

 private:
  mutable check::CLineIndex m_lines;
};

/// A walk over a document, which has a reporter and a listener hear of it, and returns whether
/// reading takes the document.
auto WalkOver(std::span<const std::uint8_t> bytes, BinaryKind kind) {
  return [=](check::CReporter& reporter, check::CContentListener& listener) {
    return check::WalkBinary(bytes, SchemaOf(kind), reporter, listener);
  };
}
auto WalkOver(std::string_view text, BinaryKind kind) {
  return [=](check::CReporter& reporter, check::CContentListener& listener) {
    check::WalkXml(text, SchemaOf(kind), reporter, listener);
    return !reporter.IsStopped();
  };
}

/// Has only the listener hear of a document, up to the first error.
template <class Walk>
bool Gather(BinaryKind kind, check::CContentListener& listener, const Walk& walk) {
  CDeafSink nobody;
  CheckOptions options;
  options.FirstErrorOnly = true;
  check::CReporter reporter(kind, options, nobody);
  return walk(reporter, listener);
}

template <class Content>
check::Facts CollectFacts(const Content& content, BinaryKind kind) {
  check::Facts facts;
  check::CFactCollector collector(facts, content.size());
  facts.IsWhole = Gather(kind, collector, WalkOver(content, kind));
  return facts;
}

/// Has the reporter and the listener hear of a document, and the checks of geometry where they are
/// asked for. What segments cut is gathered before, since it goes on further on.
template <class Walk>
void CheckContent(check::CReporter& reporter, check::CContentListener& listener, const Walk& walk) {
  const CheckOptions& options = reporter.GetOptions();
  if (!options.Geometry || options.FirstErrorOnly || reporter.GetKind() != BinaryKind::kQen) {
    walk(reporter, listener);
    return;
  }
  check::CCuts cuts;
  check::CCutCollector collector(cuts, options.Frame);
  const bool is_whole = Gather(reporter.GetKind(), collector, walk);
  cuts.Sort();
  check::CGeometryChecks geometry(reporter, is_whole ? &cuts : nullptr);
  check::CBothListeners both(listener, geometry);
  walk(reporter, both);
}

/// Why no document can be made of the text; nothing when one can.
std::optional<Failure> FindRefusal(std::string_view text, BinaryKind kind) {
  const auto failure_of = [](const auto& edit) {
    return edit ? std::nullopt : std::optional<Failure>(edit.GetFailure());
  };
  return kind == BinaryKind::kQen ? failure_of(ParseQenXml(text)) : failure_of(ParseZorXml(text));
}

}  // namespace

CCheckCounts::CCheckCounts() : m_counts(FindingKinds().size()) {}

void CCheckCounts::Add(const FindingKind& kind, bool told) {
  Count& count = m_counts.at(static_cast<std::size_t>(&kind - FindingKinds().data()));
  ++count.All;
  if (told) ++count.Told;
}

std::uint64_t CCheckCounts::Of(const FindingKind& kind) const noexcept {
  return m_counts[static_cast<std::size_t>(&kind - FindingKinds().data())].All;
}

std::uint64_t CCheckCounts::Untold(const FindingKind& kind) const noexcept {
  const Count& count = m_counts[static_cast<std::size_t>(&kind - FindingKinds().data())];
  return count.All - count.Told;
}

std::uint64_t CCheckCounts::Of(Severity severity) const noexcept {
  std::uint64_t sum = 0;
  for (const FindingKind& kind : FindingKinds())
    if (kind.Severity == severity) sum += Of(kind);
  return sum;
}

CCheckCounts CheckBinary(std::span<const std::uint8_t> bytes, BinaryKind kind,
                         const CheckOptions& options, CFindingSink& sink) {
  check::CReporter reporter(kind, options, sink);
  check::Facts facts;
  // Only draw data have parts that point at others further on.
  if (kind == BinaryKind::kZor && !options.FirstErrorOnly) facts = CollectFacts(bytes, kind);
  check::CValueChecks values(reporter, facts);
  check::CRoundTripChecks round_trip(reporter);
  check::CBothListeners both(values, round_trip);
  check::CContentListener& all = both;
  CheckContent(reporter, options.RoundTrip ? all : values, WalkOver(bytes, kind));
  return reporter.GetCounts();
}

CCheckCounts CheckXml(std::string_view text, BinaryKind kind, const CheckOptions& options,
                      CFindingSink& sink) {
  const check::DocumentSchema& schema = SchemaOf(kind);
  CXmlReporter reporter(text, kind, options, sink);
  if (const auto refusal = FindRefusal(text, kind); refusal.has_value()) {
    check::ReportXmlRefusal(text, schema, *refusal, reporter);
    return reporter.GetCounts();
  }
  check::CheckXmlEncoding(text, reporter);
  check::Facts facts;
  if (kind == BinaryKind::kZor) facts = CollectFacts(text, kind);
  check::CValueChecks values(reporter, facts);
  CheckContent(reporter, values, WalkOver(text, kind));
  return reporter.GetCounts();
}

ZIdResult CollectZIds(std::span<const std::uint8_t> bytes, BinaryKind kind) {
  check::Facts facts = CollectFacts(bytes, kind);
  return {std::move(facts.ZIds), facts.IsWhole};
}

ZIdResult CollectXmlZIds(std::string_view text, BinaryKind kind) {
  if (FindRefusal(text, kind).has_value()) return {};
  check::Facts facts = CollectFacts(text, kind);
  return {std::move(facts.ZIds), facts.IsWhole};
}

}  // namespace qenzor
