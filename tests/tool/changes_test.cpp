// diff and apply as a user meets them.

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "tests/docs/page.h"
#include "tests/support/qen_bytes.h"
#include "tests/support/tool.h"

namespace qenzor::testing {
namespace {

std::string Text(const Bytes& bytes) {
  return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

/// A map with a line and a label in segment 1, layer 2, z-id 7.
std::string SmallMap(std::u16string_view label, CPoint end = {5, 5}) {
  return Text(QenInfoBytes().Add(MapDataBytes({LineBytes({{0, 0}, end}), LabelBytes(label)})));
}

class Changes : public Tool {
 protected:
  Changes() {
    Save(At("a.qen"), SmallMap(u"Bern"));
    Save(At("b.qen"), SmallMap(u"Basel", {6, 7}));
  }
  void ExpectOutcome(const std::string& arguments, int status, const std::string& out,
                     const std::string& err = "") const {
    const Outcome outcome = Run(arguments);
    EXPECT_EQ(outcome.Status, status) << arguments;
    EXPECT_EQ(outcome.Out, out) << arguments;
    EXPECT_EQ(outcome.Err, err) << arguments;
  }
};

const std::string kPlace = "segment 1, layer 2, z-id 7, object ";
const std::string kLineChanged =
    kPlace + "0: Pt: 2 points → 2 points; first difference at point 1: [5,5] → [6,7]\n";
const std::string kLabelChanged = kPlace + "1: Text: \"Bern\" → \"Basel\"\n";

TEST_F(Changes, DiffTellsALineForEachChange) {
  ExpectOutcome("diff a.qen b.qen", 1, kLineChanged + kLabelChanged);
  ExpectOutcome("diff a.qen a.qen", 0, "");
  ExpectOutcome("diff --quiet a.qen b.qen", 1, "");
}

TEST_F(Changes, DiffPrintsAChangeDocumentThatApplyCarriesOutBothWays) {
  const std::string json = R"({"format":"qenzor-changes","version":1,"document":"qen","changes":[
{"op":"set","segment":1,"layer":2,"zid":"7","index":0,"field":"Pt","from":[[0,0],[5,5]],"to":[[0,0],[6,7]]},
{"op":"set","segment":1,"layer":2,"zid":"7","index":1,"field":"Text","from":"Bern","to":"Basel"}
]}
)";
  ExpectOutcome("diff --json a.qen b.qen", 1, json);
  ExpectOutcome("diff --json a.qen a.qen", 0,
                R"({"format":"qenzor-changes","version":1,"document":"qen","changes":[)"
                "\n]}\n");
  Save(At("c.json"), json);
  ExpectDone("apply a.qen c.json out.qen");
  EXPECT_EQ(Load(At("out.qen")), Load(At("b.qen")));
  ExpectDone("apply --reverse b.qen c.json out.qen");
  EXPECT_EQ(Load(At("out.qen")), Load(At("a.qen")));
  EXPECT_EQ(Run("apply a.qen - -", "c.json").Out, Load(At("b.qen")));
}

TEST_F(Changes, DiffTakesXmlAndBinaryAsTheSame) {
  ExpectDone("to-xml a.qen a.xml");
  ExpectOutcome("diff a.qen a.xml", 0, "");
  ExpectOutcome("diff a.xml b.qen", 1, kLineChanged + kLabelChanged);
}

TEST_F(Changes, DiffEndsWithTwoForTrouble) {
  ExpectOutcome("diff a.qen none.qen", 2, "", "qenzor: none.qen: No such file or directory\n");
  ExpectOutcome(
      "diff a.qen " + Sample("world.zor"), 2, "",
      "qenzor: " + Sample("world.zor") + ": is a document of the other kind than a.qen\n");
  ExpectOutcome("diff --zid @none a.qen b.qen", 2, "", "qenzor: none: cannot be opened\n");
  EXPECT_EQ(Run("diff a.qen").Status, 2);
  EXPECT_EQ(Run("diff - -").Status, 2);
  EXPECT_EQ(Run("diff --layer 1 " + Sample("world.zor") + ' ' + Sample("world.zor")).Status, 2);
}

TEST_F(Changes, DiffTellsOfObjectsThatPassTheFilters) {
  Save(At("zids"), "# the z-ids\n5 7\n");
  ExpectOutcome("diff --objects label a.qen b.qen", 1, kLabelChanged);
  ExpectOutcome("diff --zid @zids --segment 1 --objects line a.qen b.qen", 1, kLineChanged);
  ExpectOutcome("diff --frame plain=on --bbox 6,6,9,9 a.qen b.qen", 1, kLineChanged);
  ExpectOutcome("diff --layer 9 a.qen b.qen", 0, "", "qenzor: no object passes the filters\n");
}

TEST_F(Changes, DiffShowsAHundredChangesUnlessAllAreAskedFor) {
  std::vector<Bytes> few;
  std::vector<Bytes> many;
  for (std::int32_t i = 0; i < 103; ++i) many.push_back(LineBytes({{i, 1}, {2, 2}}));
  Save(At("few.qen"), Text(QenInfoBytes().Add(MapDataBytes(few))));
  Save(At("many.qen"), Text(QenInfoBytes().Add(MapDataBytes(many))));
  const std::string shown = Run("diff few.qen many.qen").Out;
  EXPECT_EQ(std::count(shown.begin(), shown.end(), '\n'), 101);
  EXPECT_TRUE(shown.ends_with("… and 3 more (--all shows them)\n"));
  const std::string all = Run("diff --all few.qen many.qen").Out;
  EXPECT_EQ(std::count(all.begin(), all.end(), '\n'), 103);
}

TEST_F(Changes, ApplyTellsWhatDoesNotFitAndWritesNothing) {
  Save(At("c.json"), R"({"format":"qenzor-changes","version":1,"document":"qen","changes":[
{"op":"set","segment":1,"layer":2,"zid":"7","index":1,"field":"Text","from":"Biel","to":"B"},
{"op":"set","field":"Revision","to":9}]})");
  const std::string told = "qenzor: c.json: /changes/0: another value stands there: " + kPlace +
                           "1: Text: \"Biel\" → \"B\"\n";
  ExpectOutcome("apply a.qen c.json out.qen", 1, "", told);
  EXPECT_FALSE(fs::exists(At("out.qen")));
  ExpectOutcome("apply --partial a.qen c.json out.qen", 1, "", told);
  ExpectOutcome("diff a.qen out.qen", 1, "document: Revision: 16909060 → 9\n");
}

TEST_F(Changes, ApplyTellsWhereAChangeDocumentGoesWrong) {
  Save(At("out.qen"), "old");
  const auto expect_refused = [&](const std::string& json, const std::string& reason) {
    Save(At("c.json"), json);
    ExpectRefused("apply a.qen c.json out.qen", "c.json: " + reason);
    EXPECT_EQ(Load(At("out.qen")), "old");
  };
  const std::string front = R"({"format":"qenzor-changes","version":1,"document":)";
  expect_refused("{\n  7}",
                 "line 2, column 3: syntax error while parsing object key - unexpected number "
                 "literal; expected string literal");
  expect_refused(front + R"("qen","changes":[{"op":"turn"}]})",
                 R"(/changes/0/op: is not "set", "add", "delete" or "move")");
  expect_refused(front + R"("zor","changes":[]})",
                 "/document: the changes are those of the other kind of document");
  expect_refused(front +
                     R"("qen","changes":[{"op":"set","segment":1,"layer":2,"zid":7,"index":0,)" +
                     R"("field":"Pt/0","to":[40000,0]}]})",
                 "MeshSegmentSet/MeshSegment[0]/LayerSet/LayerData[0]/ZIdObjSet/ZIdObj[0]/ObjSet/"
                 "LineObj[0]: Pt has the coordinate 40000, outside what can be stored (-32768 to "
                 "32767)");
}

/// The blocks of JSON that a page shows, in order.
std::vector<std::string> JsonOf(const std::string& page) {
  std::vector<std::string> blocks;
  const std::string fence = "```json\n";
  for (std::size_t at = page.find(fence); at != page.npos; at = page.find(fence, at + 1))
    blocks.push_back(Between(page.substr(at), fence, "```"));
  return blocks;
}

TEST_F(Changes, WhatTheirPageShowsCanBeCarriedOut) {
  const std::vector<std::string> blocks = JsonOf(LoadPage("docs/changes.md"));
  ASSERT_EQ(blocks.size(), 4U);
  const auto changes_of = [&](std::size_t block, const std::string& sample) {
    Save(At("c.json"), blocks[block]);
    ExpectDone("apply " + Sample(sample) + " c.json out");
    return Run("diff --all " + Sample(sample) + " out").Out;
  };
  EXPECT_EQ(changes_of(1, "world.qen"),
            "segment 111, layer 3, z-id 300000, object 0: Text: \"Madagascar\" → "
            "\"Madagasikara\"\n");
  EXPECT_EQ(changes_of(2, "world.zor"),
            "draw info 8: Color: \"#FF4A78A8\" → \"#FFCC0000\"\n"
            "draw info 8: ScData/1/DenomMaxWidth: 2 → 4\n");
  const std::string deleted = changes_of(3, "world.qen");
  EXPECT_NE(deleted.find("segment 111, layer 3: deleted element ("), deleted.npos);
  EXPECT_EQ(deleted.find("layer 2"), deleted.npos);
  // The first shows all kinds of change, on a map that there is not.
  Save(At("c.json"), blocks[0]);
  const Outcome outcome = Run("apply a.qen c.json out");
  EXPECT_EQ(outcome.Status, 1);
  EXPECT_EQ(std::count(outcome.Err.begin(), outcome.Err.end(), '\n'), 5) << outcome.Err;
}

TEST_F(Changes, GitShowsThemAsItsPageSays) {
  const std::string page = LoadPage("docs/changes.md");
  const std::string command =
      "git config diff.qenzor.command" + Between(page, "    git config diff.qenzor.command", "\n");
  const std::string attributes = "printf" + Between(page, "    printf", "\n");
  const std::string textconv = "git config diff.qenzor.textconv" +
                               Between(page, "    git config diff.qenzor.textconv", "\n");
  const std::string before =
      "mkdir git bin && ln -s \"$q\" bin/qenzor && export PATH=\"$PWD/bin:$PATH\" HOME=\"$PWD\" && "
      "cp a.qen git/map.qen && cd git && git init -q . && git add map.qen && "
      "git -c user.name=a -c user.email=a@b commit -qm a && cp ../b.qen map.qen && ";
  const Outcome external =
      RunShell(before + attributes + " && " + command + " && git --no-pager diff");
  EXPECT_EQ(external.Status, 0);
  EXPECT_EQ(external.Err, "");
  EXPECT_EQ(external.Out, "map.qen\n" + kLineChanged + kLabelChanged);
  fs::remove_all(At("git"));
  fs::remove_all(At("bin"));
  const Outcome converted =
      RunShell(before + attributes + " && " + textconv + " && git --no-pager diff");
  EXPECT_EQ(converted.Status, 0);
  EXPECT_EQ(converted.Err, "");
  EXPECT_NE(converted.Out.find("<Text>Bern</Text>"), converted.Out.npos);
  EXPECT_NE(converted.Out.find("<Text>Basel</Text>"), converted.Out.npos);
}

}  // namespace
}  // namespace qenzor::testing
