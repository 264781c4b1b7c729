// The table of findings, how places are named, and what a sink hears.

#include <gtest/gtest.h>

#include <set>

#include "tests/support/findings.h"
#include "tests/support/zor_bytes.h"

namespace {

using namespace qenzor;
using namespace qenzor::testing;

/// Draw data whose one attribute names draw infos of a set that is empty.
Bytes DrawingWithBadIndices(std::uint32_t count) {
  return GoodZorInfo().Add(DrawDataBytes(
      {SetChunk(id::kDrawAtterSet, {AtterBytes(7, std::vector<std::uint32_t>(count, 5))})}));
}

TEST(FindingTable, EveryKindIsFoundByCodeAndByNameAndSaysWhatToDo) {
  std::set<std::string_view> names;
  for (const FindingKind& kind : FindingKinds()) {
    EXPECT_EQ(FindFindingKind(CodeText(kind)), &kind);
    EXPECT_EQ(FindFindingKind(kind.Name), &kind);
    EXPECT_TRUE(names.insert(kind.Name).second) << kind.Name;
    EXPECT_TRUE(kind.Meaning.ends_with('.')) << kind.Name;
    EXPECT_TRUE(kind.Proposal.ends_with('.')) << kind.Name;
  }
}

TEST(FindingTable, OtherWordsNameNoKind) {
  for (const char* word : {"", "Q", "Q9999", "Q1010x", "1010", "q1010", "Truncated"})
    EXPECT_EQ(FindFindingKind(word), nullptr) << word;
}

TEST(RenderPath, LeavesOutTheMiddleOfALongPath) {
  std::vector<PathNode> nodes(20);
  for (std::size_t i = 0; i < nodes.size(); ++i) {
    nodes[i].Tag = i == 0 ? "Root" : i == 1 ? "Top" : "";
    nodes[i].Id = static_cast<std::uint32_t>(i);
    if (i > 0) nodes[i].Parent = &nodes[i - 1];
  }
  nodes[3].Index = 4;
  EXPECT_EQ(RenderPath(nullptr), "");
  EXPECT_EQ(RenderPath(&nodes[0]), "Root");
  EXPECT_EQ(RenderPath(&nodes[3]), "Top/chunk 2/chunk 3[4]");
  EXPECT_EQ(RenderPath(&nodes[12]),
            "Top/chunk 2/chunk 3[4]/chunk 4/chunk 5/chunk 6/chunk 7/chunk 8/chunk 9/chunk 10/"
            "chunk 11/chunk 12");
  EXPECT_EQ(RenderPath(&nodes[19]),
            "Top/chunk 2/chunk 3[4]/chunk 4/chunk 5/chunk 6/(7 more)/chunk 14/chunk 15/chunk 16/"
            "chunk 17/chunk 18/chunk 19");
}

TEST(FindingSink, HearsOfSoManyOfAKindAndTheOthersAreCounted) {
  const Bytes drawing = DrawingWithBadIndices(25);
  CheckOptions options;
  options.MaxDetails = 10;
  FoundSink sink;
  const CCheckCounts counts =
      CheckBinary({drawing.data(), drawing.size()}, BinaryKind::kZor, options, sink);
  const FindingKind& kind = *FindFindingKind("draw-info-index");
  EXPECT_EQ(sink.All.size(), 10U);
  EXPECT_EQ(counts.Of(kind), 25U);
  EXPECT_EQ(counts.Untold(kind), 15U);
  EXPECT_EQ(counts.Of(Severity::kWarning), 25U);
  EXPECT_EQ(counts.Of(Severity::kError), 0U);
}

TEST(FindingSink, HearsNoMoreOnceItDeclines) {
  class Declining : public FoundSink {
   public:
    bool Take(const Finding& finding) override {
      FoundSink::Take(finding);
      return false;
    }
  };
  const Bytes drawing = DrawingWithBadIndices(25);
  Declining sink;
  CheckBinary({drawing.data(), drawing.size()}, BinaryKind::kZor, {}, sink);
  EXPECT_EQ(sink.All.size(), 1U);
}

TEST(FindingSink, DoesNotHearOfKindsThatAreSkipped) {
  CheckOptions options;
  options.Skipped.insert(FindFindingKind("draw-info-index")->Code);
  EXPECT_TRUE(FindingsOf(DrawingWithBadIndices(3), BinaryKind::kZor, options).empty());
}

TEST(Finding, TellsTheNumbersOfThePlaceThatItBelongsTo) {
  class Numbers : public CFindingSink {
   public:
    bool Take(const Finding& finding) override {
      ZId = finding.GetZId();
      Index = finding.GetIndex();
      Segment = finding.GetSegment();
      return true;
    }
    std::optional<std::uint64_t> ZId, Index, Segment;
  };
  const Bytes drawing = DrawingWithBadIndices(1);
  Numbers numbers;
  CheckBinary({drawing.data(), drawing.size()}, BinaryKind::kZor, {}, numbers);
  EXPECT_EQ(numbers.ZId, 7U);
  EXPECT_EQ(numbers.Index, 0U);
  EXPECT_EQ(numbers.Segment, std::nullopt);
}

}  // namespace
