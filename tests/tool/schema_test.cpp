// The schemas that the program prints: they are the committed ones, and accept what it writes.

#include <gtest/gtest.h>

#include <string>

#include "tests/docs/page.h"
#include "tests/support/document_kinds.h"
#include "tests/support/qen_generator.h"
#include "tests/support/tool.h"
#include "tests/support/zor_generator.h"

namespace qenzor::testing {
namespace {

class Schemas : public Tool {
 protected:
  /// Runs a line of the shell that must end well.
  void ExpectWell(const std::string& line) const {
    const Outcome outcome = RunShell(line);
    EXPECT_EQ(outcome.Status, 0) << line << '\n' << outcome.Out << outcome.Err;
  }
};

TEST_F(Schemas, AreTheCommittedOnes) {
  // Write them anew by: qenzor schema FORM OF > docs/schema/…
  EXPECT_EQ(Run("schema xml qen").Out, LoadPage("docs/schema/qen.xsd"));
  EXPECT_EQ(Run("schema xml zor").Out, LoadPage("docs/schema/zor.xsd"));
  EXPECT_EQ(Run("schema json changes").Out, LoadPage("docs/schema/changes.schema.json"));
}

TEST_F(Schemas, OfOtherThingsAreWrongUsage) {
  EXPECT_EQ(Run("schema xml changes").Status, 2);
  EXPECT_EQ(Run("schema json changes more").Status, 2);
  EXPECT_EQ(Run("schema json none").Err,
            "qenzor: there is no json schema of none, but of changes\n");
}

TEST_F(Schemas, AcceptWhatIsWrittenAsXml) {
  // xmllint's Shift_JIS lacks characters of code page 932, and no UTF-8 may have U+FFFF in XML.
  for (const char* encoding : {"utf-8", "shift_jis"}) fs::create_directory(At(encoding));
  const auto add = [&](const std::string& path, const std::string& name) {
    const std::string extension = fs::path(path).extension();
    for (const std::string encoding : {"utf-8", "shift_jis"})
      ASSERT_NE(Run("to-xml --encoding " + encoding + " " + path + " " + encoding + "/" + name +
                    extension + ".xml")
                    .Status,
                2);
  };
  for (const char* sample : {"world.qen", "world.zor"}) add(Sample(sample), "sample");
  for (const auto& entry : fs::directory_iterator(QENZOR_TEST_DATA "/golden"))
    for (const char* extension : {".qen", ".zor"}) {
      const fs::path path = entry.path() / (std::string("in") + extension);
      if (fs::exists(path)) add(path, entry.path().filename());
    }
  for (std::uint64_t seed = 0; seed < 6; ++seed) {
    const Bytes map = QenGenerator(seed).Document();
    Save(At("map.qen"), {reinterpret_cast<const char*>(map.data()), map.size()});
    add("map.qen", "map" + std::to_string(seed));
    ASSERT_TRUE(ToDocument(*ZorGenerator(seed).Edit())->Write(At("drawing.zor").string()));
    add("drawing.zor", "drawing" + std::to_string(seed));
  }
  ExpectWell("\"$q\" schema xml qen > qen.xsd && \"$q\" schema xml zor > zor.xsd");
  for (const std::string kind : {"qen", "zor"})
    ExpectWell("for f in utf-8/*." + kind +
               ".xml; do for e in utf-8 shift_jis; do "
               "xmllint --huge --noout --schema " +
               kind +
               ".xsd \"$e/${f#*/}\" 2>err && break; "
               "done || { cat err; exit 1; }; done");
}

TEST_F(Schemas, RefuseXmlOfAnotherMake) {
  Save(At("a.xml"), "<Qen><QenFileInfo><Revision>x</Revision></QenFileInfo></Qen>");
  Save(At("b.xml"), "<Qen><QenFileInfo/><ZorDrawData/></Qen>");
  ExpectWell("\"$q\" schema xml qen > qen.xsd");
  for (const char* file : {"a.xml", "b.xml"})
    EXPECT_NE(RunShell("xmllint --noout --schema qen.xsd " + std::string(file)).Status, 0) << file;
}

/// Validates JSON files by a schema, as jsonschema understands it.
const std::string kValidate =
    "/usr/bin/python3 -c 'import json, jsonschema, sys\n"
    "schema = json.load(open(sys.argv[1]))\n"
    "jsonschema.Draft7Validator.check_schema(schema)\n"
    "for path in sys.argv[2:]: jsonschema.validate(json.load(open(path)), schema)' ";

TEST_F(Schemas, AcceptChangeDocuments) {
  ExpectWell(
      "\"$q\" schema json changes > changes.json; "
      "\"$q\" diff --json " +
      Sample("world.qen") + " " + Sample("world.qen") + " > none.json");
  for (std::uint64_t seed = 0; seed < 3; ++seed) {
    for (const char* name : {"a.qen", "b.qen"}) {
      const Bytes map = QenGenerator(static_cast<std::uint64_t>(name[0]) + 1000 * seed).Document();
      Save(At(name), {reinterpret_cast<const char*>(map.data()), map.size()});
    }
    for (const char* name : {"a.zor", "b.zor"})
      ASSERT_TRUE(ToDocument(*ZorGenerator(static_cast<std::uint64_t>(name[0]) + seed).Edit())
                      ->Write(At(name).string()));
    EXPECT_EQ(RunShell("\"$q\" diff --json a.qen b.qen > a.json").Status, 1);
    EXPECT_EQ(RunShell("\"$q\" diff --json a.zor b.zor > b.json").Status, 1);
    ExpectWell(kValidate + "changes.json none.json a.json b.json");
  }
}

TEST_F(Schemas, RefuseChangeDocumentsOfAnotherMake) {
  ExpectWell("\"$q\" schema json changes > changes.json");
  const std::string front =
      R"({"format":"qenzor-changes","version":1,"document":"qen","changes":[)";
  for (const char* change : {R"({"op":"turn"})", R"({"op":"set","field":"Revision"})",
                             R"({"op":"add","segment":1,"value":{"class":"LineObj","Points":[]}})",
                             R"({"op":"add","segment":1,"value":{"MeshSegmentNo":70000}})",
                             R"({"op":"delete","mark":1})"}) {
    Save(At("a.json"), front + change + "]}");
    EXPECT_NE(RunShell(kValidate + "changes.json a.json").Status, 0) << change;
  }
}

}  // namespace
}  // namespace qenzor::testing
