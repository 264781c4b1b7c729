// Takes a circle, a class that nothing in the tree but its row knows of, through all that the
// library and the tool do with an object. newcomer.sh puts this beside the classes of its own copy.

#include <gtest/gtest.h>

#include <cstdio>
#include <string>

#include "qenzor/catalogue.h"
#include "qenzor/qen/circle_obj.h"
#include "tests/support/qen_bytes.h"
#include "tests/support/qen_generator.h"
#include "tests/support/temp_file.h"

namespace qenzor::testing {
namespace {

constexpr std::uint32_t kCircleId = 31;

/// A circle of radius 500 around (-3, 7), its flags 0x81, and a link.
Bytes CircleBytes() {
  Bytes data;
  data.I16(-3).I16(7).U16(500).U8(0x81).Add(SetChunk(id::kAddedObjInfoSet, {UrlBytes(u"x")}));
  return Chunk(kCircleId, data);
}

Bytes DocumentBytes() {
  const Bytes z_id = ZIdBytes(5, SetChunk(id::kObjSet, {CircleBytes()}));
  const Bytes layer = LayerBytes(2, SetChunk(id::kZIdObjSet, {z_id}));
  const Bytes segment = SegmentBytes(1, SetChunk(id::kLayerSet, {layer}));
  Bytes info("QENMAP\r\n\x1A");
  info.U16(0x4041).U16(1).U16(0).U32(0).U8(0).U32(0).U32(0).U32(9).U32(9).U16(1).U16(1).U16(0);
  return info.Add(Chunk(id::kQenMapData, SetChunk(id::kMeshSegmentSet, {segment})));
}

Bytes Written(CQen& doc) {
  CMemFile file;
  return doc.Write(&file) ? Bytes(file.GetBytes()) : Bytes("not written");
}

const CCircleObj* FindCircle(const CQen& doc) {
  const CCircleObj* found = nullptr;
  ForEachObject(doc, [&](const auto&, const auto&, const auto&, const CAbstractObj& object) {
    found = class_cast<CCircleObj>(&object);
  });
  return found;
}

class Circle : public ::testing::Test {
 protected:
  void SetUp() override {
    ASSERT_TRUE(m_map.Read(m_bytes.data(), m_bytes.size()));
    ASSERT_NE(FindCircle(m_map), nullptr);
  }

  /// What the tool prints of a file with the bytes; its exit status goes in front.
  std::string Tool(const std::string& arguments) {
    const TempFile file(m_bytes);
    const std::string command =
        std::string(QENZOR_TOOL) + ' ' + arguments + ' ' + file.Path() + " 2>&1";
    std::FILE* pipe = popen(command.c_str(), "r");
    std::string output;
    for (int c = std::fgetc(pipe); c != EOF; c = std::fgetc(pipe))
      output.push_back(static_cast<char>(c));
    return std::to_string(pclose(pipe)) + ' ' + output;
  }

  const Bytes m_bytes = DocumentBytes();
  CQen m_map;
};

TEST_F(Circle, IsReadFromMemory) {
  const CCircleObj& circle = *FindCircle(m_map);
  EXPECT_EQ(circle.Center, (CPoint{-3, 7}));
  EXPECT_EQ(circle.Radius, 500);
  EXPECT_EQ(circle.Flags, 0x81);
  ASSERT_NE(circle.AddedObjInfoSet, nullptr);
  EXPECT_EQ(circle.AddedObjInfoSet->GetElemCount(), 1U);
  EXPECT_EQ(Written(m_map), m_bytes);
}

TEST_F(Circle, IsReadFromAFile) {
  CMemFile file(m_bytes.vector());
  CQen map;
  ASSERT_TRUE(map.Read(&file));
  EXPECT_TRUE(map == m_map);
  EXPECT_EQ(Written(map), m_bytes);
}

TEST_F(Circle, IsCloned) {
  const auto clone = CloneOf(m_map);
  ASSERT_NE(clone, nullptr);
  EXPECT_TRUE(*clone == m_map);
  EXPECT_EQ(Written(*clone), m_bytes);
}

TEST_F(Circle, IsEdited) {
  const auto edit = ToEdit(*FindCircle(m_map));
  ASSERT_NE(edit, nullptr);
  edit->Radius = 600;
  const auto chunk = ToChunk(*edit);
  EXPECT_EQ(chunk->Radius, 600);
  EXPECT_FALSE(*chunk == *FindCircle(m_map));
  const auto whole = ToEdit(m_map);
  ASSERT_NE(whole, nullptr);
  EXPECT_EQ(Written(*ToDocument(*whole)), m_bytes);
}

TEST_F(Circle, GoesToXmlAndBack) {
  const TempFile file;
  CQenTextConverter converter;
  ASSERT_TRUE(converter.ConvertChunkToText(file.Path(), m_map, 0));
  EXPECT_NE(file.Text().find("<CircleObj>\r\n"
                             "\t\t\t\t\t\t\t\t\t\t<Center x=\"-3\" y=\"7\" />\r\n"
                             "\t\t\t\t\t\t\t\t\t\t<Radius>500</Radius>\r\n"
                             "\t\t\t\t\t\t\t\t\t\t<Flags>129</Flags>\r\n"),
            std::string::npos)
      << file.Text();
  const std::unique_ptr<CQenEdit> edit(converter.ConvertTextToQenEdit(file.Path()));
  ASSERT_NE(edit, nullptr);
  const auto back = ToDocument(*edit);
  const CCircleObj* circle = FindCircle(*back);
  ASSERT_NE(circle, nullptr);
  EXPECT_EQ(circle->Center, (CPoint{-3, 7}));
  EXPECT_EQ(circle->Radius, 500);
  EXPECT_EQ(circle->Flags, 0x81);
}

TEST_F(Circle, IsCountedByInfo) {
  const std::string info = Tool("info --json");
  EXPECT_EQ(info.substr(0, 2), "0 ") << info;
  EXPECT_NE(info.find("\"CircleObj\": 1"), std::string::npos) << info;
}

TEST_F(Circle, IsNothingThatCheckFindsFaultWith) {
  const std::string report = Tool("check --json");
  EXPECT_EQ(report.substr(0, 2), "0 ") << report;
  EXPECT_EQ(report.find("CircleObj"), std::string::npos) << report;
}

TEST_F(Circle, IsInTheCatalogueAndTheTableOfIds) {
  EXPECT_EQ(kChunkIds, kCircleId + 1);
  EXPECT_TRUE(AnyClass(
      [](auto row) { return row.kTag == "CircleObj" && row.kFamily == ClassFamily::kQen; }));
}

TEST_F(Circle, IsAmongWhatTheGeneratorMakes) {
  std::size_t circles = 0;
  for (std::uint64_t seed = 0; seed < 50; ++seed) {
    const Bytes bytes = QenGenerator(seed).Document();
    CQen map;
    ASSERT_TRUE(map.Read(bytes.data(), bytes.size()));
    ForEachObject(map, [&](auto&, auto&, auto&, CAbstractObj& object) {
      circles += class_cast<CCircleObj>(&object) != nullptr ? 1 : 0;
    });
  }
  EXPECT_GT(circles, 0U);
}

}  // namespace
}  // namespace qenzor::testing
