// Checks while memory runs out at every allocation in turn: what there is to find, or an exception.

#include <gtest/gtest.h>

#include <optional>

#include "tests/support/allocation_faults.h"
#include "tests/support/check_kinds.h"
#include "tests/support/document_kinds.h"
#include "tests/support/findings.h"
#include "tests/support/good_xml.h"

namespace qenzor::testing {
namespace {

/// Counts, without memory of its own.
class CountingSink : public CFindingSink {
 public:
  bool Take(const Finding& /*finding*/) override { return true; }
};

template <class Check>
void ExpectFoundOrThrown(const Check& check, std::uint64_t findings, Leaks leaks) {
  ExpectSurvivesFaults(
      OnFault::kThrows,
      [&]() -> std::optional<std::uint64_t> {
        CountingSink sink;
        const CCheckCounts counts = check(sink);
        return counts.Of(Severity::kNote) + counts.Of(Severity::kWarning) +
               counts.Of(Severity::kError);
      },
      [&](const std::optional<std::uint64_t>& found) { EXPECT_EQ(*found, findings); }, leaks);
}

TEST(CheckAllocation, CheckingBytesThrows) {
  const Bytes map = QenDocumentBytes();
  for (const bool round_trip : {false, true}) {
    CheckOptions options;
    options.RoundTrip = round_trip;
    const auto check = [&](CFindingSink& sink) {
      return CheckBinary({map.data(), map.size()}, BinaryKind::kQen, options, sink);
    };
    CountingSink sink;
    const CCheckCounts counts = check(sink);
    ExpectFoundOrThrown(check, counts.Of(Severity::kWarning), Leaks::kNone);
  }
}

TEST(CheckAllocation, CheckingXmlThrows) {
  const std::string text = kGoodDrawingXml;
  ExpectFoundOrThrown(
      [&](CFindingSink& sink) { return CheckXml(text, BinaryKind::kZor, {}, sink); }, 0,
      Leaks::kOfParser);
}

}  // namespace
}  // namespace qenzor::testing
