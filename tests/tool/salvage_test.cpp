// The command salvage: its exit status, its messages, its files.

#include "tests/support/tool.h"

namespace {

using namespace qenzor::testing;

class SalvageTool : public Tool {
 protected:
  SalvageTool() { Save(At("cut.zor"), m_drawing.substr(0, 7000)); }

  std::string m_drawing = Load(Sample("world.zor"));
};

TEST_F(SalvageTool, GivesAnUndamagedFileBackByteForByte) {
  for (const std::string sample : {"world.qen", "world.zor"}) {
    ExpectDone("salvage " + Sample(sample) + " out");
    EXPECT_TRUE(Load(At("out")) == Load(Sample(sample)));
  }
}

TEST_F(SalvageTool, TellsWhatIsLostAndWritesTheRest) {
  const Outcome outcome = Run("salvage cut.zor out.zor");
  EXPECT_EQ(outcome.Status, 1);
  EXPECT_EQ(outcome.Out, "");
  EXPECT_EQ(
      outcome.Err,
      "qenzor: cut.zor: byte 6982: 18 bytes lost: DrawInfoSet/LineDrawInfo[9]: is damaged\n"
      "qenzor: cut.zor: byte 7000: 695 bytes lost: ZorDrawData: the file ends so many bytes "
      "too early\n"
      "qenzor: cut.zor: 2 places are damaged, 713 bytes are lost; out.zor holds what is left\n");
  EXPECT_EQ(Run("check --skip Q1070,Q1071 out.zor").Status, 0);
  const Outcome piped = Run("salvage cut.zor -");
  EXPECT_TRUE(piped.Out == Load(At("out.zor")));
  EXPECT_EQ(piped.Status, 1);
}

TEST_F(SalvageTool, CanPutTheResultInTheDamagedFilesPlace) {
  EXPECT_EQ(Run("salvage cut.zor out.zor").Status, 1);
  EXPECT_EQ(Run("salvage cut.zor cut.zor").Status, 1);
  EXPECT_TRUE(Load(At("cut.zor")) == Load(At("out.zor")));
  ExpectDone("salvage cut.zor cut.zor");
}

TEST_F(SalvageTool, WritesNothingWhereNothingIsLeft) {
  Save(At("front.zor"), m_drawing.substr(0, 26));
  ExpectRefused("salvage front.zor out.zor",
                "front.zor: the root chunk is gone: nothing can be kept");
  Save(At("front.zor"), m_drawing.substr(0, 18));
  ExpectRefused("salvage front.zor out.zor",
                "front.zor: the file info is gone: nothing can be kept");
  EXPECT_EQ(Run("to-xml " + Sample("world.zor") + " world.xml").Status, 0);
  ExpectRefused("salvage world.xml out.zor",
                "world.xml: is XML; only binary documents can be salvaged");
  EXPECT_FALSE(fs::exists(At("out.zor")));
  EXPECT_EQ(Run("salvage cut.zor").Status, 2);
}

TEST_F(SalvageTool, LeavesTheOldFileWhereTheNewOneCannotBeWritten) {
  fs::create_directory(At("folder"));
  const Outcome outcome = Run("salvage cut.zor folder");
  EXPECT_EQ(outcome.Status, 1);
  EXPECT_TRUE(outcome.Err.ends_with("qenzor: folder: is a folder\n")) << outcome.Err;
}

}  // namespace
