#include "qenzor/check/check.h"

#include "qenzor/check/binary_walk_impl.h"
#include "qenzor/check/geometry_checks_impl.h"
#include "qenzor/check/line_index_impl.h"
#include "qenzor/check/round_trip_impl.h"
#include "qenzor/check/value_checks_impl.h"
#include "qenzor/check/xml_text_impl.h"
#include "qenzor/check/xml_walk_impl.h"
#include "qenzor/qen_xml.h"
#include "qenzor/storable.h"
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
bool Gather(BinaryKind kind, XmlEncoding encoding, check::CContentListener& listener,
            const Walk& walk) {
  CDeafSink nobody;
  CheckOptions options;
  options.FirstErrorOnly = true;
  options.Encoding = encoding;
  check::CReporter reporter(kind, options, nobody);
  return walk(reporter, listener);
}

template <class Content>
check::Facts CollectFacts(const Content& content, BinaryKind kind, XmlEncoding encoding = {}) {
  check::Facts facts;
  check::CFactCollector collector(facts, content.size());
  facts.IsWhole = Gather(kind, encoding, collector, WalkOver(content, kind));
  return facts;
}

/// Has the reporter and the listener hear of a document, and the checks of geometry where they are
/// asked for; whether reading takes the document. What segments cut is gathered before, since it
/// goes on further on.
template <class Walk>
bool CheckContent(check::CReporter& reporter, check::CContentListener& listener, const Walk& walk) {
  const CheckOptions& options = reporter.GetOptions();
  if (!options.Geometry || options.FirstErrorOnly || reporter.GetKind() != BinaryKind::kQen)
    return walk(reporter, listener);
  check::CCuts cuts;
  check::CCutCollector collector(cuts, options.Frame);
  const bool is_whole = Gather(reporter.GetKind(), options.Encoding, collector, walk);
  cuts.Sort();
  check::CGeometryChecks geometry(reporter, is_whole ? &cuts : nullptr);
  check::CBothListeners both(listener, geometry);
  return walk(reporter, both);
}

/// Why no document can be made of the text, or what keeps the document from being stored. The
/// latter has no line.
struct XmlResult {
  std::optional<Failure> Refusal;
  std::optional<Unstorable> Lost;
};

template <class Parse>
XmlResult ParsedBy(const Parse& parse, std::string_view text, XmlEncoding encoding) {
  XmlReadOptions options;
  options.Encoding = encoding;
  const auto edit = parse(text, options);
  if (edit) return {std::nullopt, FindUnstorable(*edit)};
  if (edit.GetFailure().Kind == FailureKind::kOutOfMemory) throw std::bad_alloc();
  return {edit.GetFailure(), std::nullopt};
}

XmlResult Parse(std::string_view text, BinaryKind kind, XmlEncoding encoding) {
  return kind == BinaryKind::kQen ? ParsedBy(&ParseQenXml, text, encoding)
                                  : ParsedBy(&ParseZorXml, text, encoding);
}

}  // namespace

CCheckCounts::CCheckCounts() : m_counts(FindingKinds().size()) {}

void CCheckCounts::Add(const FindingKind& kind, bool told) {
  Count& count = m_counts.at(static_cast<std::size_t>(&kind - FindingKinds().data()));
  ++count.All;
  if (told) ++count.Told;
}

void CCheckCounts::Add(const CCheckCounts& others) {
  for (std::size_t i = 0; i < m_counts.size(); ++i) {
    m_counts[i].All += others.m_counts[i].All;
    m_counts[i].Told += others.m_counts[i].Told;
  }
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
  const bool is_whole =
      CheckContent(reporter, options.RoundTrip ? all : values, WalkOver(bytes, kind));
  if (options.RoundTrip && is_whole && !round_trip.HasFound() &&
      reporter.Wants(check::Code::kRoundTripOther))
    if (const auto at = check::FindRoundTripDifference(bytes, kind, options.Encoding);
        at.has_value())
      reporter.Report(check::Code::kRoundTripOther, *at, nullptr,
                      [] { return "what comes back from XML differs from here on"; });
  return reporter.GetCounts();
}

CCheckCounts CheckXml(std::string_view text, BinaryKind kind, const CheckOptions& options,
                      CFindingSink& sink) {
  const check::DocumentSchema& schema = SchemaOf(kind);
  CXmlReporter reporter(text, kind, options, sink);
  const XmlResult parsed = Parse(text, kind, options.Encoding);
  if (parsed.Refusal.has_value()) {
    check::ReportXmlRefusal(text, schema, *parsed.Refusal, reporter);
    return reporter.GetCounts();
  }
  check::CheckXmlEncoding(text, options.Encoding, reporter);
  check::Facts facts;
  if (kind == BinaryKind::kZor && !options.FirstErrorOnly)
    facts = CollectFacts(text, kind, options.Encoding);
  check::CValueChecks values(reporter, facts);
  CheckContent(reporter, values, WalkOver(text, kind));
  // What the walk has found has its line.
  if (parsed.Lost.has_value() && reporter.GetCounts().Of(Severity::kError) == 0)
    reporter.Report(check::Code::kXmlUnstorable, 0, nullptr, [&] {
      const CString& path = parsed.Lost->ChunkPath;
      return path.empty() ? parsed.Lost->Reason : path + ": " + parsed.Lost->Reason;
    });
  return reporter.GetCounts();
}

ZIdResult CollectZIds(std::span<const std::uint8_t> bytes, BinaryKind kind) {
  check::Facts facts = CollectFacts(bytes, kind);
  return {std::move(facts.ZIds), facts.IsWhole};
}

ZIdResult CollectXmlZIds(std::string_view text, BinaryKind kind, XmlEncoding encoding) {
  if (Parse(text, kind, encoding).Refusal.has_value()) return {};
  check::Facts facts = CollectFacts(text, kind, encoding);
  return {std::move(facts.ZIds), facts.IsWhole};
}

}  // namespace qenzor
