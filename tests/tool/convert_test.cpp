// convert, which does what content and names say, and the messages of the commands around it.

#include "tests/support/tool.h"

namespace {

using namespace qenzor::testing;

/// Draw data in which there is nothing to find.
constexpr const char* kDrawing =
    "<Zor><ZorFileInfo><Ident>ZORDRW</Ident><Magic>0x4041</Magic><MajorVer>1</MajorVer>"
    "<MinorVer>0</MinorVer><Revision>0</Revision></ZorFileInfo><ZorDrawData/></Zor>\n";

class Convert : public Tool {
 protected:
  Convert() { Save(At("a.xml"), kDrawing); }
};

TEST_F(Convert, DoesWhatContentAndNameSay) {
  ExpectDone("convert a.xml a.zor");
  ExpectDone("from-xml a.xml b.zor");
  EXPECT_EQ(Load(At("a.zor")), Load(At("b.zor")));
  ExpectDone("convert a.zor again.XML");
  ExpectDone("to-xml a.zor other.xml");
  EXPECT_EQ(Load(At("again.XML")), Load(At("other.xml")));
  ExpectDone("convert a.zor copy.zor");
  EXPECT_EQ(Load(At("copy.zor")), Load(At("a.zor")));
  EXPECT_EQ(Run("convert - c.zor", "a.xml").Status, 0);
  EXPECT_EQ(Load(At("c.zor")), Load(At("a.zor")));
}

TEST_F(Convert, RefusesWhatTheNameContradicts) {
  ExpectRefused("convert a.xml map.qen", "a.xml: is draw data, but the name of map.qen says a map");
  ExpectRefused("convert a.xml b.xml", "a.xml: is XML already (convert makes .qen or .zor of it)");
  const Outcome outcome = Run("convert a.xml out");
  EXPECT_EQ(outcome.Status, 2);
  EXPECT_EQ(outcome.Err,
            "qenzor: convert: out does not end in .qen, .zor or .xml, which tells what to make "
            "(copy, to-xml and from-xml take any name)\n");
  EXPECT_EQ(CountFiles(), 1U);
}

TEST_F(Convert, XmlThatDoesNotLoadNamesTheOpenElement) {
  Save(At("open.xml"), "<Zor>\n<ZorDrawData>\n<DrawInfoSet>\n</ZorDrawData>\n</Zor>\n");
  for (const char* command : {"convert", "from-xml"})
    ExpectRefused(std::string(command) + " open.xml out.zor",
                  "open.xml: line 4, column 1: the end tag of ZorDrawData stands where "
                  "DrawInfoSet, which begins at line 3, is open");
  Save(At("twice.xml"), "<Zor>\n<ZorDrawData a=\"1\" a=\"2\"/></Zor>\n");
  ExpectRefused("from-xml twice.xml out.zor",
                "twice.xml: line 2, column 20: ZorDrawData has the attribute a twice");
  Save(At("comment.xml"), "<Zor>\n<!-- <ZorDrawData/>\n</Zor>\n");
  ExpectRefused("from-xml comment.xml out.zor",
                "comment.xml: line 2, column 1: this comment has no end (-->)");
}

TEST_F(Convert, AKindThatTheContentContradictsIsSaidToBeOne) {
  Run("convert a.xml a.zor");
  const Outcome outcome = Run("info --kind qen a.zor");
  EXPECT_EQ(outcome.Status, 1);
  EXPECT_NE(outcome.Err.find("this looks like draw data (ZORDRW)"), std::string::npos)
      << outcome.Err;
}

TEST_F(Convert, EveryCommandsHelpTellsExitStatusExamplesAndQuiet) {
  for (const char* command : {"copy", "to-xml", "from-xml", "convert", "info", "check"}) {
    const std::string help = Run(std::string(command) + " --help").Out;
    for (const char* words : {"Exit status: 0", "Examples:\n  qenzor ", "--quiet"})
      EXPECT_NE(help.find(words), std::string::npos) << command << ": " << words;
  }
}

TEST_F(Convert, XmlInUtf8IsCheckedAsSuchWhereAsked) {
  Save(At("utf8.xml"), "<?xml version=\"1.0\" encoding=\"UTF-8\" ?>\n" + std::string(kDrawing));
  EXPECT_NE(Run("check utf8.xml").Out.find("[Q1035 xml-encoding]"), std::string::npos);
  for (const char* encoding : {"utf-8", "auto"})
    EXPECT_EQ(Run("check --encoding " + std::string(encoding) + " utf8.xml").Out,
              "utf8.xml: nothing found\n");
  Save(At("wide.xml"), "\xFF\xFE<\0Z\0");
  EXPECT_NE(Run("check wide.xml").Out.find("this is UTF-16 text; save it as Shift_JIS or UTF-8"),
            std::string::npos);
}

TEST_F(Convert, MissingImagesAreNotesThatNeverCount) {
  fs::create_directory(At("images"));
  Save(At("images/here.png"), "");
  const auto drawing = [](const std::string& name) {
    return "<Zor><ZorFileInfo><Ident>ZORDRW</Ident><Magic>0x4041</Magic><MajorVer>1</MajorVer>"
           "<MinorVer>0</MinorVer><Revision>0</Revision></ZorFileInfo><ZorDrawData><DrawAtterSet>"
           "<DrawAtter><ZId>1</ZId><DrawInfoIdxSet><DrawInfoIdx>0</DrawInfoIdx></DrawInfoIdxSet>"
           "</DrawAtter></"
           "DrawAtterSet><DrawInfoSet><PolyBmpBrushDrawInfo><ComData><BrushFileName>" +
           name +
           "</BrushFileName></ComData></PolyBmpBrushDrawInfo></DrawInfoSet></ZorDrawData></Zor>";
  };
  Save(At("here.xml"), drawing("C:\\maps\\here.png"));
  Save(At("there.xml"), drawing("there.png"));
  EXPECT_EQ(Run("check --strict --images images here.xml").Out, "here.xml: nothing found\n");
  const Outcome outcome = Run("check --strict --images images there.xml");
  EXPECT_EQ(outcome.Status, 0);
  EXPECT_NE(outcome.Out.find("note: DrawInfoSet/PolyBmpBrushDrawInfo[0]: the image there.png is "
                             "missing [Q1077 image-missing]"),
            std::string::npos)
      << outcome.Out;
}

TEST_F(Convert, JsonIsWholeWhateverHappens) {
  Run("convert a.xml a.zor");
  for (const char* arguments :
       {"missing.qen", ". a.xml", "--map a.zor a.xml", "--map missing.qen --draw a.xml a.xml",
        "a.xml a.zor --draw a.zor", "/dev/null a.xml"}) {
    const std::string out = Run("check --json " + std::string(arguments)).Out;
    EXPECT_TRUE(out.starts_with("[")) << arguments << out;
    EXPECT_TRUE(out.ends_with("]\n")) << arguments << out;
  }
}

}  // namespace
