// What `check` finds in documents that were damaged on purpose.

#include <gtest/gtest.h>
#include <sys/wait.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <utility>

namespace {

namespace fs = std::filesystem;

std::string Little(std::uint64_t value, int width) {
  std::string bytes;
  for (int i = 0; i < width; ++i) bytes += static_cast<char>(value >> (8 * i) & 0xFF);
  return bytes;
}

std::string Chunk(std::uint32_t id, const std::string& data) {
  return Little(id, 4) + Little(data.size(), 4) + data;
}

std::string ZorInfo() {
  return "ZORDRW\r\n\x1A" + Little(0x4041, 2) + Little(1, 2) + Little(0, 2) + Little(0, 4);
}

/// In front of a map of two segments.
std::string QenInfo() {
  return "QENMAP\r\n\x1A" + Little(0x4041, 2) + Little(1, 2) + Little(0, 2) + Little(0, 4) +
         Little(1, 1) + Little(0, 8) + Little(1000, 4) + Little(1000, 4) + Little(2, 2) +
         Little(1, 2) + Little(1, 2);
}

/// A map with one segment that holds these chunks behind its number.
std::string MapOf(const std::string& segment_chunks) {
  const std::string segment = Chunk(30, Little(1, 2) + segment_chunks);
  return QenInfo() + Chunk(25, Chunk(29, Little(1, 4) + segment));
}

std::string DrawingOf(const std::string& sets) { return ZorInfo() + Chunk(26, sets); }

class Check : public testing::Test {
 protected:
  Check() {
    std::string name = (fs::temp_directory_path() / "qenzor-check-XXXXXX").string();
    m_folder = ::mkdtemp(name.data());
  }
  ~Check() override { fs::remove_all(m_folder); }

  void Save(const std::string& name, const std::string& bytes) const {
    std::ofstream(m_folder / name, std::ios::binary) << bytes;
  }
  /// Exit status and standard output; standard error must be empty.
  std::pair<int, std::string> Run(const std::string& arguments) const {
    const std::string command = "cd '" + m_folder.string() + "' && '" QENZOR_TOOL "' check " +
                                arguments + " >out 2>err </dev/null";
    const int status = std::system(command.c_str());
    const int exit_status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    EXPECT_EQ(fs::file_size(m_folder / "err") == 0, exit_status < 2);
    std::ifstream file(m_folder / "out", std::ios::binary);
    return {exit_status, std::string(std::istreambuf_iterator<char>(file), {})};
  }
  void ExpectFound(const std::string& bytes, int status, const std::string& lines) const {
    Save("f", bytes);
    const auto [got_status, got] = Run("--kind " + m_kind + " f");
    EXPECT_EQ(got, lines);
    EXPECT_EQ(got_status, status);
  }

  fs::path m_folder;
  std::string m_kind = "qen";
};

TEST_F(Check, ASoundDocumentHasNothingToFind) { ExpectFound(MapOf(""), 0, "f: nothing found\n"); }

TEST_F(Check, ATruncatedFileIsReportedAtTheInnermostChunk) {
  const std::string whole = MapOf(Chunk(8, Little(1, 4) + Chunk(7, Little(5, 2))));
  ExpectFound(
      whole.substr(0, whole.size() - 1), 1,
      "f: byte 92: error: MeshSegmentSet/MeshSegment[0]/LayerSet/LayerData[0]: LayerNo takes "
      "2 bytes, but only 1 are there [Q1010 truncated]\n");
}

TEST_F(Check, UnknownChunksWrongClassesAndRepeatedSlotsAreDropped) {
  ExpectFound(
      MapOf(Chunk(77, "") + Chunk(22, Little(0, 4)) + Chunk(8, Little(0, 4)) +
            Chunk(8, Little(0, 4))),
      0,
      "f: byte 72: warning: MeshSegmentSet/MeshSegment[0]/chunk 77: unknown chunk id 77: "
      "dropped [Q1018 chunk-unknown]\n"
      "f: byte 80: warning: MeshSegmentSet/MeshSegment[0]/ObjSet: has no place here and is "
      "dropped [Q1019 chunk-misplaced]\n"
      "f: byte 104: warning: MeshSegmentSet/MeshSegment[0]/LayerSet: replaces an earlier one "
      "in the same place [Q1020 chunk-repeated]\n");
}

TEST_F(Check, ADeclaredCountThatDiffersAndBytesBehindTheRootAreWarnings) {
  ExpectFound(
      MapOf(Chunk(8, Little(3, 4))) + "tail", 0,
      "f: byte 80: warning: MeshSegmentSet/MeshSegment[0]/LayerSet: declares 3 elements and "
      "holds 0 [Q1021 set-count]\n"
      "f: byte 84: warning: QenMapData: 4 bytes after the root chunk are dropped "
      "[Q1017 bytes-after-root]\n");
  EXPECT_EQ(Run("--kind qen --strict f").first, 1);
}

TEST_F(Check, ASubChunkThatRunsPastItsParentIsAnError) {
  std::string bytes = MapOf(Chunk(8, Little(0, 4)));
  bytes[42 + 8 + 8 + 4 + 8 + 2 + 4] = 100;  // the layer set's data size
  const auto [status, out] = (Save("f", bytes), Run("--kind qen f"));
  EXPECT_EQ(status, 1);
  EXPECT_NE(out.find("error: MeshSegmentSet/MeshSegment[0]/LayerSet: "), std::string::npos) << out;
}

TEST_F(Check, RepeatedKeysAndIndicesOutsideTheirSetAreWarnings) {
  m_kind = "zor";
  const std::string index_set = Chunk(23, Little(1, 4) + Little(0, 4));
  const std::string atter = Chunk(3, Little(7, 8) + index_set);
  ExpectFound(
      DrawingOf(Chunk(2, Little(2, 4) + atter + atter)), 0,
      "f: byte 67: warning: DrawAtterSet/DrawAtter[0]/DrawInfoIdxSet: DrawInfoIdx 0 lies "
      "outside the set of 0 draw infos [Q1070 draw-info-index]\n"
      "f: byte 71: warning: DrawAtterSet/DrawAtter[1]: z-id 7 stands again and replaces the "
      "one at byte 39 [Q1069 z-id-repeated]\n"
      "f: byte 99: warning: DrawAtterSet/DrawAtter[1]/DrawInfoIdxSet: DrawInfoIdx 0 lies "
      "outside the set of 0 draw infos [Q1070 draw-info-index]\n");
}

TEST_F(Check, JsonHoldsTheSame) {
  Save("f", MapOf("").substr(0, 50));
  const auto [status, out] = Run("--kind qen --json f");
  EXPECT_EQ(status, 1);
  EXPECT_NE(out.find("\"severity\": \"error\""), std::string::npos);
  EXPECT_NE(out.find("\"offset\": 42"), std::string::npos) << out;
}

TEST_F(Check, ZIdsOfAMapAreComparedWithThoseThatAreDrawn) {
  const std::string z_id = Chunk(21, Little(7, 8)) + Chunk(21, Little(8, 8));
  const std::string layer = Chunk(7, Little(1, 2) + Chunk(20, Little(2, 4) + z_id));
  Save("map", MapOf(Chunk(8, Little(1, 4) + layer)));
  const std::string atters = Chunk(3, Little(8, 8)) + Chunk(3, Little(9, 8));
  Save("drawing", DrawingOf(Chunk(2, Little(2, 4) + atters)));
  const auto [status, out] = Run("--kind zor --map map drawing");
  EXPECT_EQ(
      out,
      "drawing: byte 63: warning: DrawAtterSet/DrawAtter[1]: z-id 9 stands nowhere in map "
      "[Q1081 z-id-nowhere]\n"
      "map: byte 114: warning: MeshSegmentSet/MeshSegment[0]/LayerSet/LayerData[0]/"
      "ZIdObjSet/ZIdObj[0]: z-id 7 has no draw attribute in drawing [Q1080 z-id-not-drawn]\n");
  EXPECT_EQ(status, 0);
  EXPECT_EQ(Run("--kind zor --strict --map map drawing").first, 1);
}

TEST_F(Check, XmlIsReportedByLineAndColumn) {
  Save("a.xml", "<Qen>\n  <QenMapData>\n</Qen>\n");
  const auto [status, out] = Run("a.xml");
  EXPECT_EQ(status, 1);
  EXPECT_EQ(out.rfind("a.xml: line ", 0), 0U) << out;
  EXPECT_NE(out.find(": error: "), std::string::npos) << out;
  Save("b.xml", "<Qen><QenMapData></QenMapData></Qen>");
  EXPECT_EQ(
      Run("b.xml"),
      (std::pair<int, std::string>(
          0,
          "b.xml: line 1, column 1: warning: Qen: Qen has no QenFileInfo, whose fields count as 0 "
          "[Q1044 xml-missing-element]\n")));
}

TEST_F(Check, XmlThatCannotBeStoredIsAnErrorThatNamesTheObject) {
  Save("a.xml",
       "<Zor><ZorDrawData><DrawInfoSet><PolyBmpBrushDrawInfo><ComData><BrushFileName>" +
           std::string(32, 'x') +
           "</BrushFileName></ComData></PolyBmpBrushDrawInfo></DrawInfoSet></ZorDrawData></Zor>");
  const auto [status, out] = Run("a.xml");
  EXPECT_EQ(status, 1);
  EXPECT_NE(out.find("PolyBmpBrushDrawInfo[0]"), std::string::npos) << out;
  EXPECT_NE(out.find("BrushFileName"), std::string::npos) << out;
}

TEST_F(Check, EveryFileIsCheckedAndOneErrorIsEnoughToFail) {
  Save("good", MapOf(""));
  Save("bad", MapOf("").substr(0, 60));
  const auto [status, out] = Run("--kind qen good bad good");
  EXPECT_EQ(status, 1);
  EXPECT_EQ(out.rfind("good: nothing found\nbad: byte ", 0), 0U) << out;
  EXPECT_NE(out.find("\ngood: nothing found\n"), std::string::npos) << out;
}

TEST_F(Check, AFileThatCannotBeOpenedOrRecognisedIsAFindingAndTheOthersAreChecked) {
  Save("good", MapOf(""));
  Save("odd", "nothing of ours");
  Save("bad", MapOf("").substr(0, 60));
  const auto [status, out] = Run("bad.qen odd good --kind qen bad");
  EXPECT_EQ(status, 1);
  EXPECT_EQ(out.rfind("bad.qen: error: No such file or directory "
                      "[Q1001 file-unreadable]\nodd: byte 15: error: ",
                      0),
            0U)
      << out;
  EXPECT_NE(out.find("\ngood: nothing found\nbad: byte "), std::string::npos) << out;
  EXPECT_EQ(Run("odd good"),
            (std::pair<int, std::string>(
                1,
                "odd: error: neither a map-project nor a draw-data document (see --kind) "
                "[Q1002 file-not-recognised]\ngood: nothing found\n"
                "2 files checked: 1 error, 0 warnings, 0 notes\n")));
}

TEST_F(Check, BeyondTheDetailsOfAKindTheOthersAreCounted) {
  std::string chunks;
  for (int i = 0; i < 1500; ++i) chunks += Chunk(77, "");
  Save("f", MapOf(chunks));
  const std::string text = Run("--kind qen f").second;
  EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), 1001) << text;
  EXPECT_NE(text.find("\nf: … and 500 more [Q1018 chunk-unknown]\n"), std::string::npos);
  const std::string json = Run("--kind qen --json --max-findings 2 f").second;
  EXPECT_NE(json.find("\"count\": 1498"), std::string::npos) << json;
  EXPECT_EQ(Run("--max-findings x f").first, 2);
}

TEST_F(Check, TheOtherCommandsRefuseWithItsFirstError) {
  Save("f", MapOf("").substr(0, 60));
  const std::string found = Run("--kind qen f").second;
  const std::string command =
      "cd '" + m_folder.string() + "' && '" QENZOR_TOOL "' copy --kind qen f out.qen 2>message";
  EXPECT_EQ(WEXITSTATUS(std::system(command.c_str())), 1);
  std::ifstream file(m_folder / "message", std::ios::binary);
  const std::string message{std::istreambuf_iterator<char>(file), {}};
  EXPECT_FALSE(fs::exists(m_folder / "out.qen"));
  const std::string reason = found.substr(found.find("error: ") + 7);
  EXPECT_NE(message.find(reason.substr(0, reason.find(" ["))), std::string::npos) << message;
  EXPECT_NE(message.find("byte "), std::string::npos) << message;
}

}  // namespace
