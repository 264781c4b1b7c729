// How chunks become elements, and sets the elements inside one.

#include <gtest/gtest.h>

#include "qenzor/core/unknown_chunk.h"
#include "qenzor/qen/line_obj.h"
#include "qenzor/qen/ras_mm_obj.h"
#include "tests/support/chunk_io.h"
#include "tests/support/counted.h"
#include "tests/support/every_class.h"
#include "tests/support/qen_bytes.h"
#include "tests/support/qen_xml.h"

namespace qenzor::testing {
namespace {

/// A map object of a kind that no converter knows.
class COtherObj : public CAbstractObj {
  CAbstractChunk* Clone() override { return nullptr; }
  void RecursiveReCalcDataSize() override { m_header.DataSize = 0; }
  bool ReadPrimitiveBlock(const void* /*data*/, const std::uint32_t& /*size*/,
                          std::uint32_t& consumed) override {
    consumed = 0;
    return true;
  }
  bool ReadPrimitiveBlock(CFile* /*file*/, std::uint32_t& consumed) override {
    consumed = 0;
    return true;
  }
  bool WriteData(CFile* /*file*/, bool /*recalc*/) override { return true; }
};

template <class Converter>
CString TagOf(CAbstractChunk& chunk) {
  return Converter().GetElemTagName(&chunk);
}

template <class Converter, class... Chunks>
void ExpectTags() {
  CUnKnownChunk unknown;
  EXPECT_EQ(TagOf<Converter>(unknown), "SetElem");
  const auto expect_tag = [](auto chunk_class) {
    typename decltype(chunk_class)::type chunk;
    EXPECT_EQ(TagOf<Converter>(chunk), chunk.kTag);
  };
  (expect_tag(std::type_identity<Chunks>{}), ...);
}

TEST(SetConverter, EverySetNamesItsElements) {
  ExpectTags<CAddedObjInfoSetTextConverter, CUrlInfo>();
  ExpectTags<CObjSetTextConverter, CLineObj, CPolyObj, CCmbLblObj, CRasLLObj, CRasMMObj>();
  ExpectTags<CZIdObjSetTextConverter, CZIdObj>();
  ExpectTags<CLayerSetTextConverter, CLayerData>();
  ExpectTags<CMeshSegmentSetTextConverter, CMeshSegment>();
  ExpectTags<CMarkDataSetTextConverter, CMarkData>();
  ExpectTags<CDrawInfoSetTextConverter, CLineDrawInfo, CPolySolidBrushDrawInfo,
             CPolyBmpBrushDrawInfo, CPolyShadowDrawInfo, CCmbLblDrawInfo, CRasLLDrawInfo,
             CRasMMDrawInfo>();
  ExpectTags<CDrawAtterSetTextConverter, CDrawAtter>();
}

TEST(SetConverter, ElementsOfOtherSetsAreSetElem) {
  CLayerData layer;
  EXPECT_EQ(TagOf<CObjSetTextConverter>(layer), "SetElem");
  CLineObj line;
  EXPECT_EQ(TagOf<CLayerSetTextConverter>(line), "SetElem");
  COtherObj other;
  EXPECT_EQ(TagOf<CObjSetTextConverter>(other), "SetElem");
}

TEST(SetConverter, AnElementThatTheSetDoesNotListIsWrittenAsSetElem) {
  // A set converter that knows none of the classes in its set.
  class CPlainConverter : public CChunkSetArrayTextConverter<CAbstractObj*> {};
  const auto set = FromMemory<CObjSet>(SetChunk(id::kObjSet, {RasMMBytes({1, 2})}));
  ASSERT_NE(set, nullptr);
  CPlainConverter converter;
  EXPECT_EQ(XmlOf(converter, set.get(), 1),
            "\t<SetElem>\r\n\t\t<Pt x=\"1\" y=\"2\" />\r\n\t</SetElem>\r\n");
}

TEST(SetConverter, ElementsWithoutAConverterAreSkipped) {
  CObjSet set;
  set.SubChunkSet(0, new COtherObj);
  EXPECT_EQ(XmlElement("ObjSet", &set), "<ObjSet>\r\n</ObjSet>\r\n");
}

TEST(SetConverter, EmptySlotsAreSkipped) {
  CObjSet set;
  set.GetNewArray(3);
  set.SetElem(1, new CRasMMObj);
  CObjSetTextConverter converter;
  EXPECT_EQ(XmlOf(converter, &set), "<RasMMObj>\r\n\t<Pt x=\"0\" y=\"0\" />\r\n</RasMMObj>\r\n");
}

TEST(SetConverter, ElementsAreWrittenInOrderWithoutTheirCount) {
  const auto set = FromMemory<CLayerSet>(SetChunk(id::kLayerSet, {LayerBytes(5), LayerBytes(4)}));
  ASSERT_NE(set, nullptr);
  EXPECT_EQ(XmlElement("LayerSet", set.get(), 1),
            "\t<LayerSet>\r\n"
            "\t\t<LayerData>\r\n\t\t\t<LayerNo>5</LayerNo>\r\n\t\t</LayerData>\r\n"
            "\t\t<LayerData>\r\n\t\t\t<LayerNo>4</LayerNo>\r\n\t\t</LayerData>\r\n"
            "\t</LayerSet>\r\n");
}

TEST(SetConverter, ASetOfAnotherElementClassWritesNothing) {
  const auto set = FromMemory<CLayerSet>(SetChunk(id::kLayerSet, {LayerBytes(5)}));
  CObjSetTextConverter objects;
  EXPECT_EQ(XmlOf(objects, set.get()), "");
  CDrawAtterSetTextConverter keyed;
  EXPECT_EQ(XmlOf(keyed, set.get()), "");
}

TEST(ConvertChunkToString, TheCallerChoosesTheTag) {
  CLayerData layer;
  EXPECT_EQ(XmlElement("Any", &layer, 0), "<Any>\r\n\t<LayerNo>0</LayerNo>\r\n</Any>\r\n");
}

TEST(ConvertChunkToString, NullAndUnknownChunksWriteNothingAtAll) {
  CUnKnownChunk unknown;
  EXPECT_EQ(XmlElement("Tag", nullptr), "");
  EXPECT_EQ(XmlElement("Tag", &unknown), "");
}

TEST(ConvertChunkToString, AnEmptyDrawDataIsTwoTags) {
  CZorDrawData draw_data;
  EXPECT_EQ(XmlElement("ZorDrawData", &draw_data, 1), "\t<ZorDrawData>\r\n\t</ZorDrawData>\r\n");
}

TEST(ConvertChunkToString, EveryLevelAddsATab) {
  CLayerData layer;
  for (const std::uint32_t level : {0U, 1U, 7U, 2000U}) {
    const std::string tabs(level, '\t');
    EXPECT_EQ(XmlElement("T", &layer, level),
              tabs + "<T>\r\n" + tabs + "\t<LayerNo>0</LayerNo>\r\n" + tabs + "</T>\r\n");
  }
}

TEST(ConvertChunkToString, ExceptionsOfTheFileReachTheCaller) {
  /// Takes nothing.
  class CFullFile : public CMemFile {
    void Write(const void* /*data*/, std::uint32_t /*size*/) override {
      throw CFileException("full");
    }
  };
  const auto line = FromMemory<CLineObj>(LineBytes(Points(32767, CPoint{1, 1})));
  ASSERT_NE(line, nullptr);
  CFullFile sink;
  CStdioFile file(sink);
  EXPECT_THROW(CAbstractChunkTextConverter::ConvertChunkToString(file, "T", line.get(), 0),
               CFileException);
}

}  // namespace
}  // namespace qenzor::testing
