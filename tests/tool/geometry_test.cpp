// check --geometry, on files of either form.

#include "tests/support/tool.h"

namespace {

using namespace qenzor::testing;

class Geometry : public Tool {
 protected:
  Geometry() {
    Save(At("map.qen"), Load(Sample("world.qen")));
    EXPECT_EQ(Run("to-xml map.qen map.xml").Status, 0);
  }
};

TEST_F(Geometry, TellsTheOneTruthAboutTheSampleInEitherForm) {
  const std::string what =
      ": the edges that begin at point 11 (-12741, 7502) and at point 13 (-12728, 7069) cross "
      "[Q1102 ring-crosses-itself]\n";
  for (const std::string file : {"map.qen", "map.xml"}) {
    const Outcome outcome = Run("check --skip Q1057 --geometry " + file);
    EXPECT_TRUE(outcome.Out.ends_with(what)) << outcome.Out;
    EXPECT_EQ(outcome.Out.find('\n'), outcome.Out.size() - 1) << outcome.Out;
    EXPECT_EQ(outcome.Status, 0);
    EXPECT_EQ(Run("check --skip Q1057 --geometry --strict " + file).Status, 1);
    EXPECT_EQ(Run("check --skip Q1057 --strict " + file).Status, 0);
  }
  EXPECT_EQ(Run("check --strict --geometry " + Sample("world.zor")).Status, 0);
}

TEST_F(Geometry, NamesWhatTheFindingBelongsTo) {
  const std::string out = Run("check --geometry --jsonl map.qen").Out;
  EXPECT_NE(out.find(R"("segment":158,"layer":0,"zid":729,"index":0)"), std::string::npos) << out;
}

TEST_F(Geometry, PlacesSegmentsByTheFrame) {
  EXPECT_NE(Run("check --geometry --frame origin=south-west map.qen").Out.find("Q1105"),
            std::string::npos);
  const std::string plain = Run("check --geometry --frame plain=on map.qen").Out;
  EXPECT_EQ(plain.find('\n'), plain.size() - 1) << plain;
  const Outcome wrong = Run("check --geometry --frame rows=up map.qen");
  EXPECT_EQ(wrong.Status, 2);
  EXPECT_EQ(wrong.Err, "qenzor: --frame: the frame's rows is north or south, not \"up\"\n");
}

}  // namespace
