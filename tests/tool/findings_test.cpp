// What check does with many files and with its options, and what to-xml says is lost.

#include <algorithm>

#include "tests/support/tool.h"

namespace {

using namespace qenzor::testing;

/// Good XML draw data but for an unknown element and a version.
constexpr const char* kDrawing =
    "<Zor><ZorFileInfo><Ident>ZORDRW</Ident><Magic>0x4041</Magic><MajorVer>2</MajorVer>"
    "<MinorVer>0</MinorVer><Revision>0</Revision></ZorFileInfo>\n<Note/><ZorDrawData/></Zor>\n";

class Findings : public Tool {
 protected:
  Findings() {
    fs::create_directories(At("maps/inner"));
    Save(At("maps/a.xml"), kDrawing);
    Save(At("maps/inner/b.qen"), Load(Sample("world.qen")));
    Save(At("maps/notes.txt"), "nothing of ours");
  }
};

constexpr const char* kUnknown =
    "line 2, column 1: warning: Zor: Note has no place in Zor and is dropped; "
    "there stand ZorFileInfo and ZorDrawData [Q1042 xml-unknown-element]\n";
constexpr const char* kVersion =
    "line 1, column 93: warning: ZorFileInfo: the version is 2.0, not 1.0 [Q1063 version]\n";

TEST_F(Findings, FoldersAreWalkedWhenAskedFor) {
  const Outcome outcome = Run("check --recursive maps");
  EXPECT_EQ(outcome.Out, std::string("maps/a.xml: ") + kVersion + "maps/a.xml: " + kUnknown +
                             "maps/inner/b.qen: nothing found\n"
                             "2 files checked: 0 errors, 2 warnings, 0 notes; 1 other file passed "
                             "over\n");
  EXPECT_EQ(outcome.Status, 0);
  EXPECT_EQ(Run("check --strict --recursive maps").Status, 1);
  EXPECT_EQ(Run("check maps").Status, 1);
  EXPECT_NE(Run("check maps").Out.find("[Q1001 file-unreadable]"), std::string::npos);
}

TEST_F(Findings, KindsAreChosenByCodeOrName) {
  EXPECT_EQ(Run("check --skip Q1063 maps/a.xml").Out, std::string("maps/a.xml: ") + kUnknown);
  EXPECT_EQ(Run("check --only version maps/a.xml").Out, std::string("maps/a.xml: ") + kVersion);
  EXPECT_EQ(Run("check --skip Q1063,xml-unknown-element maps/a.xml").Out,
            "maps/a.xml: nothing found\n");
  EXPECT_EQ(Run("check --strict --skip Q1063,Q1042 maps/a.xml").Status, 0);
  const Outcome wrong = Run("check --only Q9999 maps/a.xml");
  EXPECT_EQ(wrong.Status, 2);
  EXPECT_EQ(wrong.Err, "qenzor: no kind of finding is called Q9999 (see --list-codes)\n");
}

TEST_F(Findings, AllKindsAreListed) {
  const Outcome outcome = Run("check --list-codes");
  EXPECT_EQ(outcome.Status, 0);
  EXPECT_NE(outcome.Out.find("\nQ1042 xml-unknown-element (warning)\n"), std::string::npos);
  EXPECT_EQ(Run("check").Status, 2);
}

TEST_F(Findings, EachIsALineOfJson) {
  const Outcome outcome = Run("check --jsonl maps/a.xml");
  EXPECT_EQ(std::ranges::count(outcome.Out, '\n'), 2);
  EXPECT_EQ(
      outcome.Out.rfind("{\"file\":\"maps/a.xml\",\"kind\":\"Zor\",\"code\":\"Q1063\",\"name\":"
                        "\"version\",\"severity\":\"warning\",\"line\":1,\"column\":93,",
                        0),
      0U)
      << outcome.Out;
  EXPECT_EQ(Run("check --jsonl --json maps/a.xml").Status, 2);
}

TEST_F(Findings, AFileThatLooksLikeTheOtherKindIsSaidTo) {
  const std::string out = Run("check --kind zor maps/inner/b.qen").Out;
  EXPECT_NE(out.find("this looks like a map (QENMAP) [Q1004 file-other-kind]"), std::string::npos)
      << out;
}

TEST_F(Findings, ADocumentToCompareWithMustBeOfUse) {
  Outcome outcome = Run("check --map maps/a.xml maps/a.xml");
  EXPECT_EQ(outcome.Status, 2);
  EXPECT_EQ(outcome.Err, "qenzor: --map maps/a.xml: this is draw data, not a map\n");
  outcome = Run("check --map maps/inner/b.qen maps/inner/b.qen");
  EXPECT_EQ(outcome.Status, 2);
  EXPECT_EQ(outcome.Err, "qenzor: --map is of no use: none of the files is draw data\n");
}

TEST_F(Findings, AMapAndItsDrawDataAreComparedInEveryForm) {
  Run("to-xml " + Sample("world.qen") + " map.xml");
  Run("to-xml " + Sample("world.zor") + " drawing.xml");
  EXPECT_EQ(Run("check --map map.xml drawing.xml").Out, "drawing.xml: nothing found\n");
  const std::string out = Run("check --only z-id-not-drawn --draw maps/a.xml map.xml").Out;
  EXPECT_NE(out.find("has no draw attribute in maps/a.xml [Q1080 z-id-not-drawn]"),
            std::string::npos);
}

TEST_F(Findings, WhatXmlDoesNotHoldIsToldOnceAndCountsWhenStrict) {
  const Outcome outcome = Run("to-xml " + Sample("world.qen") + " map.xml");
  EXPECT_EQ(outcome.Status, 0);
  EXPECT_EQ(outcome.Err, "qenzor: " + Sample("world.qen") +
                             ": 177 links and 1 character are not in the XML form (check "
                             "--roundtrip tells where)\n");
  EXPECT_EQ(Run("to-xml --strict " + Sample("world.qen") + " strict.xml").Status, 1);
  EXPECT_EQ(Load(At("strict.xml")), Load(At("map.xml")));
  const std::string places = Run("check --roundtrip " + Sample("world.qen")).Out;
  EXPECT_EQ(std::ranges::count(places, '\n'), 178);
}

TEST_F(Findings, SilenceUnderRoundTripMeansThatEveryByteComesBack) {
  Save(At("odd.zor"), Load(Sample("world.zor")) + "tail");
  EXPECT_NE(Run("check --roundtrip --strict odd.zor").Status, 0);
  Run("from-xml maps/a.xml a.zor");
  EXPECT_EQ(Run("check --roundtrip --skip version --strict a.zor").Status, 0);
  Run("to-xml a.zor again.xml");
  Run("from-xml again.xml again.zor");
  EXPECT_EQ(Load(At("again.zor")), Load(At("a.zor")));
}

TEST_F(Findings, AWordThatIsNoCommandIsAnswered) {
  const Outcome outcome = Run("chekc maps/a.xml");
  EXPECT_EQ(outcome.Status, 2);
  EXPECT_EQ(outcome.Err.rfind("qenzor: there is no command chekc; did you mean check? The commands "
                              "are copy, ",
                              0),
            0U)
      << outcome.Err;
  EXPECT_EQ(Run("from-xml maps/inner/b.qen x").Err,
            "qenzor: maps/inner/b.qen: is a binary document, not XML (copy and to-xml read "
            "those)\n");
}

}  // namespace
