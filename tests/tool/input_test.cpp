// Files that are longer than any document, or no plain files at all, as input.

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cstdint>
#include <string>
#include <tuple>

#include "tests/support/tool.h"

namespace qenzor::testing {

namespace {

class InputFile : public Tool {
 protected:
  /// Runs with no more than 96 MiB to take, which a file read whole would exceed. A program that
  /// sanitizers watch over cannot even start with so little.
  Outcome RunShort(const std::string& arguments, const std::string& input = "/dev/null") const {
    const std::string limit = "ulimit -v 98304; ";
    const bool starts = RunShell(limit + "\"$q\" --version").Status == 0;
    return RunShell((starts ? limit : "") + "timeout 20 \"$q\" " + arguments, input);
  }
  void ExpectRefusedShort(const std::string& arguments, const std::string& name,
                          const std::string& reason, const std::string& input = "/dev/null") const {
    const Outcome outcome = RunShort(arguments, input);
    EXPECT_EQ(outcome.Status, 1) << arguments;
    EXPECT_EQ(outcome.Err, "qenzor: " + name + ": " + reason + "\n") << arguments;
  }
  /// The same for check, to which it is a finding.
  void ExpectFoundShort(const std::string& arguments, const std::string& reason) const {
    const Outcome outcome = RunShort("check " + arguments);
    EXPECT_EQ(outcome.Status, 1) << arguments;
    EXPECT_NE(outcome.Out.find(": error: " + reason), std::string::npos) << outcome.Out;
  }
  std::string m_map = Sample("world.qen");
};

const std::string kNoDocument = "neither a map-project nor a draw-data document (see --kind)";
const std::string kGoesOn = "goes on for more than 16 MiB after the document's end";
const std::string kTooLong = "longer than a document can be (4 GiB)";

TEST_F(InputFile, WhatNeverEndsIsRefusedByItsFront) {
  ExpectRefusedShort("info /dev/zero", "/dev/zero", kNoDocument);
  ExpectFoundShort("/dev/zero", kNoDocument);
  for (const std::string command : {"copy ", "to-xml "})
    ExpectRefusedShort(command + "- out", "standard input", kNoDocument, "/dev/zero");
  ExpectRefusedShort("from-xml /dev/zero out", "/dev/zero",
                     "line 1, column 1: the text holds a NUL");
}

TEST_F(InputFile, WhatNeverEndsBehindADocumentIsRefused) {
  ExpectRefusedShort("info --kind zor /dev/zero", "/dev/zero", kGoesOn);
  ExpectFoundShort("--kind zor /dev/zero", kGoesOn);
  const Outcome outcome =
      RunShell("cat '" + m_map + "' /dev/zero 2>/dev/null | timeout 20 \"$q\" info -");
  EXPECT_EQ(outcome.Status, 1);
  EXPECT_EQ(outcome.Err, "qenzor: standard input: " + kGoesOn + "\n");
}

TEST_F(InputFile, ALongFileOfNothingIsRefusedAtOnce) {
  const std::uint64_t most = 0xFFFFFFFF;
  for (const auto& [name, size, reason] :
       {std::tuple("most.qen", most, kGoesOn), std::tuple("over.qen", most + 1, kTooLong),
        std::tuple("unnamed", most, kNoDocument)}) {
    Save(At(name), "");
    fs::resize_file(At(name), size);
    ExpectRefusedShort(std::string("info ") + name, name, reason);
    ExpectRefusedShort(std::string("copy ") + name + " out", name, reason);
    ExpectFoundShort(name, reason);
  }
}

TEST_F(InputFile, APipeIsReadLikeAFile) {
  ASSERT_EQ(::mkfifo(At("pipe").c_str(), 0600), 0);
  const std::string feed = "cat '" + m_map + "' >pipe & \"$q\" ";
  EXPECT_EQ(RunShell(feed + "copy pipe out && wait").Err, "");
  EXPECT_TRUE(Load(At("out")) == Load(m_map));
  EXPECT_EQ(RunShell(feed + "copy --via edit pipe pipe.qen && wait").Err, "");
  EXPECT_TRUE(Load(At("pipe.qen")) == Load(m_map));
  EXPECT_EQ(RunShell(feed + "check pipe && wait").Status, 0);
  EXPECT_NE(RunShell(feed + "info pipe && wait").Out.find("FileBytes: 175354\n"),
            std::string::npos);
  EXPECT_EQ(RunShell(feed + "to-xml pipe xml && wait").Err,
            "qenzor: pipe: 177 links and 1 character are not in the XML form (check "
            "--roundtrip tells where)\n");
  EXPECT_EQ(RunShell("cat xml >pipe & \"$q\" from-xml pipe a.qen && wait").Err, "");
  EXPECT_EQ(RunShell("\"$q\" from-xml xml b.qen").Err, "");
  EXPECT_TRUE(Load(At("a.qen")) == Load(At("b.qen")));
}

TEST_F(InputFile, APipeThatBreaksOffIsReportedWithItsPlace) {
  ASSERT_EQ(::mkfifo(At("pipe").c_str(), 0600), 0);
  const Outcome outcome = RunShell("head -c 5000 '" + m_map + "' >pipe & \"$q\" copy pipe out");
  EXPECT_EQ(outcome.Status, 1);
  EXPECT_EQ(outcome.Err,
            "qenzor: pipe: byte 5000: MeshSegmentSet/MeshSegment[18]/LayerSet/LayerData[0]/"
            "ZIdObjSet/ZIdObj[0]/ObjSet/PolyObj[0]: Height takes 4 bytes, but only 0 are there\n");
  EXPECT_FALSE(fs::exists(At("out")));
}

TEST_F(InputFile, XmlIsKnownBehindALongComment) {
  Save(At("world.txt"),
       "<?xml version=\"1.0\"?><!--" + std::string(100000, 'x') + "--><Zor><ZorFileInfo/></Zor>");
  EXPECT_NE(Run("info world.txt").Out.find("Form: XML\n"), std::string::npos);
  ExpectDone("from-xml world.txt out.zor");
}

}  // namespace

}  // namespace qenzor::testing
