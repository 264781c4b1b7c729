// The command render as a user calls it.

#include <gtest/gtest.h>

#include <string>

#include "tests/support/tool.h"

namespace qenzor::testing {
namespace {

class Render : public Tool {
 protected:
  /// The sample and its drawing.
  static std::string World() { return "render " + Sample("world.qen") + ' ' + Sample("world.zor"); }
  void ExpectWrongUsage(const std::string& arguments, const std::string& word) const {
    const Outcome outcome = Run(arguments);
    EXPECT_EQ(outcome.Status, 2) << arguments;
    EXPECT_NE(outcome.Err.find(word), std::string::npos) << outcome.Err;
    EXPECT_EQ(CountFiles(), 0U);
  }
};

TEST_F(Render, MakesEachOfTheThreeFormats) {
  ASSERT_EQ(Run(World() + " --quiet a.svg").Status, 0);
  ASSERT_EQ(Run(World() + " --quiet a.PNG").Status, 0);
  ASSERT_EQ(Run(World() + " --quiet a.pdf").Status, 0);
  EXPECT_TRUE(Load(At("a.svg")).starts_with("<?xml"));
  EXPECT_TRUE(Load(At("a.PNG")).starts_with("\x89PNG"));
  EXPECT_TRUE(Load(At("a.pdf")).starts_with("%PDF"));
}

TEST_F(Render, TakesXmlAsWell) {
  ASSERT_EQ(Run("to-xml " + Sample("world.qen") + " map.xml").Status, 0);
  const std::string lines = " --list --scale 1e8 --objects line";
  const std::string binary = Run(World() + lines).Out;
  EXPECT_FALSE(binary.empty());
  EXPECT_TRUE(Run("render map.xml " + Sample("world.zor") + lines).Out == binary);
}

TEST_F(Render, RefusesWhatHasNoMeaning) {
  ExpectWrongUsage(World() + " a.png --scale 0", "\"0\" is not a number above 0");
  ExpectWrongUsage(World() + " a.png --scale nan", "is not a number above 0");
  ExpectWrongUsage(World() + " a.png --scale 1e6 --size 10x10", "--scale");
  ExpectWrongUsage(World() + " a.png --size 0x10", "is not a size in pixels");
  ExpectWrongUsage(World() + " a.png --size 10", "is not a size in pixels");
  ExpectWrongUsage(World() + " a.png --bbox=5,1,4,2", "west edge");
  ExpectWrongUsage(World() + " a.png --background red", "is not a colour");
  ExpectWrongUsage(World() + " a.png --font x=Sans", "is not a font number");
  ExpectWrongUsage(World() + " a.png --projection round", "is not flat or mercator");
  ExpectWrongUsage(World() + " a.gif", "ends in none of .svg, .png and .pdf");
  ExpectWrongUsage("render " + Sample("world.qen"), "MAP.qen [DRAW.zor] OUT");
  ExpectWrongUsage(World() + " more --list", "--list takes MAP.qen [DRAW.zor]");
}

TEST_F(Render, LeavesTheOldPictureWhenTheNewOneCannotBeMade) {
  Save(At("a.png"), "old");
  EXPECT_EQ(Run(World() + " a.png --scale 1000").Status, 1);
  EXPECT_EQ(Run(World() + " a.png --size 16384x4000").Status, 1);
  EXPECT_EQ(Run(World() + " a.png --bbox=1,1,1,1").Status, 1);
  EXPECT_EQ(Run("render missing.qen a.png").Status, 1);
  EXPECT_EQ(Load(At("a.png")), "old");
  EXPECT_EQ(CountFiles(), 1U);
}

TEST_F(Render, ListsPicturesOfAnySize) {
  const Outcome list = Run(World() + " --list --size 20000x20000 --objects label --zid 300001");
  EXPECT_EQ(list.Status, 0);
  EXPECT_NE(list.Out.find("\"text\":\"Tokyo\\n"), std::string::npos);
}

TEST_F(Render, TellsWhenNothingPassesTheFiltersAndMakesAnEmptyPicture) {
  const Outcome outcome = Run(World() + " a.png --layer 77 --size 40x20");
  EXPECT_EQ(outcome.Status, 0);
  EXPECT_EQ(outcome.Err, "qenzor: no object passes the filters\n");
  EXPECT_TRUE(Load(At("a.png")).starts_with("\x89PNG"));
  EXPECT_EQ(Run(World() + " --list --layer 77").Out, "");
}

}  // namespace
}  // namespace qenzor::testing
