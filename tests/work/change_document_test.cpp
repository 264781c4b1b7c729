// Change documents as texts.

#include "qenzor/work/change_document.h"

#include <gtest/gtest.h>

namespace qenzor::testing {
namespace {

std::string Document(const std::string& changes, const std::string& kind = "qen") {
  return R"({"format":"qenzor-changes","version":1,"document":")" + kind + R"(","changes":[)" +
         changes + "]}";
}

TEST(ParseChanges, TellsLineAndColumnOfWhatIsNoJson) {
  const auto parsed = ParseChanges("{\"format\":\n  \"qenzor-changes\",,\n}");
  ASSERT_FALSE(parsed);
  EXPECT_EQ(parsed.GetFailure().Kind, FailureKind::kDamaged);
  EXPECT_EQ(parsed.GetFailure().Line, 2U);
  EXPECT_EQ(parsed.GetFailure().Column, 20U);
  EXPECT_EQ(parsed.GetFailure().Reason.find("syntax error"), 0U) << parsed.GetFailure().Reason;
}

TEST(ParseChanges, TellsWhereATextEndsTooEarly) {
  const auto parsed = ParseChanges("{\n");
  ASSERT_FALSE(parsed);
  EXPECT_EQ(parsed.GetFailure().Line, 2U);
  EXPECT_FALSE(ParseChanges(""));
}

TEST(ParseChanges, RefusesNumbersThatAreTooLargeAndTextsThatAreNoUtf8) {
  EXPECT_FALSE(ParseChanges(Document(R"({"op":"set","field":"Angle","to":1e999})")));
  EXPECT_FALSE(ParseChanges(Document("{\"op\":\"set\",\"field\":\"\x82\xA0\",\"to\":1}")));
}

TEST(ParseChanges, TakesWhatNests64DeepAndNoDeeper) {
  // Three levels are those of the document and the change.
  const auto nested = [](std::size_t depth) {
    return Document(R"({"op":"set","field":"Pt","to":)" + std::string(depth, '[') +
                    std::string(depth, ']') + "}");
  };
  EXPECT_TRUE(ParseChanges(nested(61)));
  const auto parsed = ParseChanges(nested(62));
  ASSERT_FALSE(parsed);
  EXPECT_EQ(parsed.GetFailure().Reason, "nests more than 64 deep");
  EXPECT_EQ(parsed.GetFailure().Line, 1U);
  EXPECT_EQ(parsed.GetFailure().Column,
            Document(R"({"op":"set","field":"Pt","to":)").size() - 2 + 62);
  EXPECT_FALSE(ParseChanges(std::string(1000000, '[')));
}

TEST(ParseChanges, RefusesMoreThan256MiB) {
  const auto parsed = ParseChanges(std::string((256U << 20U) + 1, ' '));
  ASSERT_FALSE(parsed);
  EXPECT_EQ(parsed.GetFailure().Kind, FailureKind::kTooLarge);
}

struct ContentCase {
  const char* Change;
  const char* Reason;
};

TEST(ParseChanges, PointsAtWhatMakesNoSense) {
  for (const ContentCase& c : std::vector<ContentCase>{
           {"7", "/changes/0: is no object"},
           {R"({"op":"put"})", R"(/changes/0/op: is not "set", "add", "delete" or "move")"},
           {R"({"op":"delete"})", "/changes/0: does not tell what it is about"},
           {R"({"op":"set","field":"Text"})", "/changes/0/to: is missing"},
           {R"({"op":"add","segment":1})", "/changes/0/value: is missing"},
           {R"({"op":"move","segment":1})", "/changes/0/to: is missing"},
           {R"({"op":"move","segment":1,"to":-1})", "/changes/0/to: is no index"},
           {R"({"op":"delete","layer":1})", "/changes/0: does not tell what it is about"},
           {R"({"op":"delete","segment":-1})",
            R"(/changes/0/segment: is no number, nor a string as "7", "7#1" or "all")"},
           {R"({"op":"delete","segment":1,"layer":2,"zid":"x"})",
            R"(/changes/0/zid: is no number, nor a string as "7", "7#1" or "all")"},
           {R"({"op":"delete","segment":1,"mark":2})",
            "/changes/0/mark: has no meaning in this change"},
           {R"({"op":"delete","segment":1,"form":2})",
            "/changes/0/form: has no meaning in this change"}}) {
    const auto parsed = ParseChanges(Document(c.Change));
    ASSERT_FALSE(parsed) << c.Change;
    EXPECT_EQ(parsed.GetFailure().Describe(), c.Reason);
  }
}

TEST(ParseChanges, RefusesOtherDocuments) {
  for (const char* text :
       {"[]", "{}", R"({"format":"qenzor-changes"})",
        R"({"format":"qenzor-changes","version":2,"document":"qen","changes":[]})",
        R"({"format":"qenzor-changes","version":1,"document":"x","changes":[]})",
        R"({"format":"qenzor-changes","version":1,"document":"qen"})"})
    EXPECT_FALSE(ParseChanges(text)) << text;
  EXPECT_FALSE(ParseChanges(
      R"({"format":"qenzor-changes","version":1,"document":"qen","changes":[],"more":1})"));
  EXPECT_TRUE(ParseChanges(Document("")));
}

TEST(RenderChanges, GivesWhatWasParsed) {
  const std::string text = RenderChanges(*ParseChanges(Document(
      R"({"op":"set","field":"Revision","from":1,"to":2},
         {"op":"delete","segment":"3#1","layer":0,"position":4,"value":{"LayerNo":0}},
         {"op":"move","segment":3,"layer":0,"zid":18446744073709551615,"index":2,"to":0},
         {"op":"add","segment":3,"layer":0,"zid":"5","index":"end","value":{"class":"LineObj"}})")));
  EXPECT_EQ(text, R"({"format":"qenzor-changes","version":1,"document":"qen","changes":[
{"op":"set","field":"Revision","from":1,"to":2},
{"op":"delete","segment":"3#1","layer":0,"position":4,"value":{"LayerNo":0}},
{"op":"move","segment":3,"layer":0,"zid":"18446744073709551615","index":2,"to":0},
{"op":"add","segment":3,"layer":0,"zid":"5","index":"end","value":{"class":"LineObj"}}
]}
)");
}

TEST(ReverseChanges, RefusesChangesThatDoNotTellWhatWasThere) {
  for (const char* change :
       {R"({"op":"set","field":"Revision","to":2})", R"({"op":"delete","segment":1})",
        R"({"op":"move","segment":1,"to":2})",
        R"({"op":"add","draw_info":"end","value":{"class":"X"}})"}) {
    const bool is_map = std::string(change).find("draw_info") == std::string::npos;
    const auto changes = ParseChanges(Document(change, is_map ? "qen" : "zor"));
    ASSERT_TRUE(changes) << changes.GetFailure().Describe();
    const auto reversed = ReverseChanges(*changes);
    ASSERT_FALSE(reversed) << change;
    EXPECT_EQ(reversed.GetFailure().Reason.find("/changes/0: does not tell "), 0U);
  }
}

TEST(DescribeChange, TellsLongValuesByTheirExtent) {
  const auto describe = [](const std::string& change) {
    return DescribeChange(ParseChanges(Document(change))->Changes.front());
  };
  const std::string place = R"("segment":1,"layer":2,"zid":7,"index":0)";
  EXPECT_EQ(describe(R"({"op":"set",)" + place + R"(,"field":"Text","from":"Bern","to":"Basel"})"),
            "segment 1, layer 2, z-id 7, object 0: Text: \"Bern\" → \"Basel\"");
  EXPECT_EQ(describe(R"({"op":"set",)" + place +
                     R"(,"field":"Pt","from":[[0,0],[1,1]],"to":[[0,0],[1,2],[3,4]]})"),
            "segment 1, layer 2, z-id 7, object 0: Pt: 2 points → 3 points; first difference at "
            "point 1: [1,1] → [1,2]");
  EXPECT_EQ(describe(R"({"op":"add",)" + place + R"(,"value":{"class":"LineObj","Pt":[[0,0]]}})"),
            "segment 1, layer 2, z-id 7, object 0: added LineObj (Pt: 1 point)");
  EXPECT_EQ(describe(R"({"op":"move","segment":1,"layer":2,"position":3,"to":0})"),
            "segment 1, layer 2: moved from position 3 to position 0");
  EXPECT_EQ(describe(R"({"op":"set","field":"Revision","from":1,"to":2})"),
            "document: Revision: 1 → 2");
}

}  // namespace
}  // namespace qenzor::testing
