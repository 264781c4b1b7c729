// The program as a user meets it: what it prints, what it writes, how it ends.

#include "tests/support/tool.h"

#include <gtest/gtest.h>
#include <sys/wait.h>

#include <algorithm>
#include <cstdlib>
#include <string>

namespace qenzor::testing {

namespace {

/// What is said of the sample when it becomes XML.
const std::string kLossOfWorldZor =
    "qenzor: " QENZOR_SAMPLES
    "/world.zor: 1 text's white space is not in the XML form (check --roundtrip tells where)\n";

TEST_F(Tool, CopiesThroughEveryFormByteForByte) {
  for (const char* name : {"world.qen", "world.zor"})
    for (const char* via : {"", "--via chunk", "--via edit", "--via clone"}) {
      ExpectDone("copy " + std::string(via) + " " + Sample(name) + " copy");
      EXPECT_EQ(Load(At("copy")), Load(Sample(name))) << name << " " << via;
    }
}

TEST_F(Tool, TurnsADocumentIntoXmlAndBack) {
  ExpectDone("to-xml " + Sample("world.zor") + " world.xml", kLossOfWorldZor);
  ExpectDone("from-xml world.xml once.zor");
  ExpectDone("to-xml once.zor once.xml");
  ExpectDone("from-xml once.xml twice.zor");
  EXPECT_TRUE(Load(At("world.xml"))
                  .starts_with("<?xml version=\"1.0\" encoding=\"Shift_JIS\" ?>\r\n"
                               "<Zor>\r\n\t<ZorFileInfo>\r\n"));
  EXPECT_FALSE(Load(At("twice.zor")).empty());
}

TEST_F(Tool, ReadsStandardInputAndWritesStandardOutput) {
  EXPECT_EQ(Run("copy " + Sample("world.qen") + " -").Out, Load(Sample("world.qen")));
  ExpectDone("to-xml " + Sample("world.zor") + " a.xml", kLossOfWorldZor);
  EXPECT_EQ(Run("to-xml " + Sample("world.zor") + " -").Out, Load(At("a.xml")));
  ExpectDone("from-xml a.xml a.zor");
  EXPECT_EQ(Run("copy - -", Sample("world.qen")).Out, Load(Sample("world.qen")));
  EXPECT_EQ(Run("from-xml - -", "a.xml").Out, Load(At("a.zor")));
}

TEST_F(Tool, KindComesFromContentThenExtensionThenIsAskedFor) {
  std::string bytes = Load(Sample("world.zor"));
  bytes[19] = 99;  // another root chunk id
  Save(At("odd.zor"), bytes);
  Save(At("odd"), bytes);
  ExpectDone("copy odd.zor copy");
  EXPECT_EQ(Load(At("copy")), bytes);
  ExpectRefused("copy odd none",
                "odd: neither a map-project nor a draw-data document (see --kind)");
  ExpectDone("copy --kind zor odd copy");
  EXPECT_EQ(Load(At("copy")), bytes);
}

TEST_F(Tool, AFailedCommandLeavesTheTargetAsItWas) {
  Save(At("target"), "old");
  Save(At("short.qen"), Load(Sample("world.qen")).substr(0, 5000));
  ExpectRefused(
      "copy short.qen target",
      "short.qen: byte 5000: MeshSegmentSet/MeshSegment[18]/LayerSet/LayerData[0]/"
      "ZIdObjSet/ZIdObj[0]/ObjSet/PolyObj[0]: Height takes 4 bytes, but only 0 are there");
  EXPECT_EQ(Load(At("target")), "old");
  ExpectRefused("copy missing target", "missing: No such file or directory");
  EXPECT_EQ(Load(At("target")), "old");
  ExpectRefused("copy " + Sample("world.qen") + " nowhere/target",
                "nowhere/target: cannot be written: No such file or directory");
  EXPECT_EQ(CountFiles(), 2U);
}

TEST_F(Tool, AMapWithoutMapDataIsNotWritten) {
  Save(At("empty.xml"), "<Qen><QenFileInfo><Ident>ABCDEF</Ident></QenFileInfo></Qen>");
  ExpectRefused("from-xml empty.xml out.qen",
                "empty.xml: there is no map data, without which a map cannot be stored");
  EXPECT_FALSE(fs::exists(At("out.qen")));
}

std::string LabelXml(const std::string& text) {
  return "<Qen><QenMapData><MeshSegmentSet><MeshSegment><LayerSet><LayerData><ZIdObjSet><ZIdObj>"
         "<ObjSet><LineObj/><CmbLblObj><Text>" +
         text +
         "</Text></CmbLblObj></ObjSet></ZIdObj></ZIdObjSet></LayerData></LayerSet></MeshSegment>"
         "</MeshSegmentSet></QenMapData></Qen>";
}

TEST_F(Tool, ATextTooLongForItsCountIsRefusedByPathAndLength) {
  Save(At("fits.xml"), LabelXml(std::string(32766, 'x')));
  ExpectDone("from-xml fits.xml fits.qen");
  ExpectDone("copy fits.qen copy.qen");
  EXPECT_EQ(Load(At("copy.qen")), Load(At("fits.qen")));
  Save(At("long.xml"), LabelXml(std::string(32767, 'x')));
  ExpectRefused("from-xml long.xml long.qen",
                "long.xml: MeshSegmentSet/MeshSegment[0]/LayerSet/LayerData[0]/ZIdObjSet/ZIdObj[0]/"
                "ObjSet/CmbLblObj[1]: Text of 32767 characters is too long to be stored (at most "
                "32766)");
  EXPECT_FALSE(fs::exists(At("long.qen")));
}

TEST_F(Tool, ABrushNameTooLongForItsBlockIsRefused) {
  const auto brush = [](std::size_t length) {
    return "<Zor><ZorDrawData><DrawInfoSet><PolyBmpBrushDrawInfo><ComData><BrushFileName>" +
           std::string(length, 'b') +
           "</BrushFileName></ComData></PolyBmpBrushDrawInfo></DrawInfoSet></ZorDrawData></Zor>";
  };
  Save(At("fits.xml"), brush(31));
  ExpectDone("from-xml fits.xml fits.zor");
  Save(At("long.xml"), brush(32));
  ExpectRefused("from-xml long.xml long.zor",
                "long.xml: DrawInfoSet/PolyBmpBrushDrawInfo[0]: BrushFileName of 32 characters is "
                "too long to be stored (at most 31)");
}

TEST_F(Tool, AListTooLongForItsCountIsRefused) {
  std::string points;
  for (int i = 0; i < 65536; ++i) points += "<Pt/>";
  Save(At("long.xml"), "<Zor><ZorDrawData><MarkDataSet><MarkData><MarkElem>" + points +
                           "</MarkElem></MarkData></MarkDataSet></ZorDrawData></Zor>");
  ExpectRefused("from-xml long.xml long.zor",
                "long.xml: MarkDataSet/MarkData[0]/MarkElem[0]: Pt of 65536 entries is too long to "
                "be stored (at most 65535)");
}

TEST_F(Tool, XmlThatDoesNotParseIsReportedWithItsLine) {
  Save(At("bad.xml"), "<Qen>\n<QenMapData>\n</Qen>\n");
  const Outcome outcome = Run("from-xml bad.xml out.qen");
  EXPECT_EQ(outcome.Status, 1);
  EXPECT_TRUE(outcome.Err.starts_with("qenzor: bad.xml: line 3, column ")) << outcome.Err;
  Save(At("other.xml"), "<qen></qen>");
  ExpectRefused(
      "from-xml other.xml out.qen",
      "other.xml: line 1, column 1: the outermost element is qen, not Qen or Zor (case matters)");
}

TEST_F(Tool, InfoTellsWhatADocumentHolds) {
  const Outcome text = Run("info " + Sample("world.zor"));
  EXPECT_EQ(text.Status, 0);
  EXPECT_NE(text.Out.find("Kind: Zor\n"), std::string::npos);
  EXPECT_NE(text.Out.find("MarkData: 2\n"), std::string::npos);
  const Outcome json = Run("info --json " + Sample("world.qen"));
  EXPECT_NE(json.Out.find("\"RasLLObj\": 1"), std::string::npos);
  EXPECT_NE(json.Out.find("\"CmbLblObj\": 198"), std::string::npos);
}

TEST_F(Tool, WrongUsageEndsWithTwoAndHelpWithZero) {
  EXPECT_EQ(Run("").Status, 2);
  EXPECT_EQ(Run("copy onlyone").Status, 2);
  EXPECT_EQ(Run("copy --via magic a b").Status, 2);
  EXPECT_EQ(Run("unheard-of").Status, 2);
  for (const char* arguments : {"--help", "copy -h", "to-xml --help", "from-xml --help",
                                "info --help", "check --help", "--version"}) {
    const Outcome outcome = Run(arguments);
    EXPECT_EQ(outcome.Status, 0) << arguments;
    EXPECT_NE(outcome.Out, "") << arguments;
    EXPECT_EQ(outcome.Err, "") << arguments;
  }
}

TEST_F(Tool, EveryComplaintIsOneLine) {
  const std::string name = "\"$(printf 'no\\nsuch\\nfile')\"";
  for (const std::string& arguments :
       {"info " + name, "copy " + name + " b", std::string("nothing"), std::string("copy a")}) {
    const Outcome outcome = Run(arguments);
    EXPECT_NE(outcome.Status, 0) << arguments;
    EXPECT_EQ(std::count(outcome.Err.begin(), outcome.Err.end(), '\n'), 1) << outcome.Err;
    EXPECT_EQ(outcome.Err.rfind("qenzor: ", 0), 0U) << outcome.Err;
  }
}

TEST_F(Tool, HelpThatCannotBeWrittenIsAFailure) {
  if (!fs::exists("/dev/full")) GTEST_SKIP() << "no /dev/full here";
  const int status = std::system("'" QENZOR_TOOL "' --help >/dev/full 2>/dev/null");
  EXPECT_EQ(WEXITSTATUS(status), 1);
}

}  // namespace

}  // namespace qenzor::testing
