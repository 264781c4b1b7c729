#include "qenzor/zor/draw_info_set.h"

#include <gtest/gtest.h>

#include "tests/support/chunk_io.h"
#include "tests/support/counted.h"
#include "tests/support/zor_draw_infos.h"
#include "tests/support/zor_xml.h"

namespace qenzor::testing {
namespace {

/// One draw info of every class, in no particular order.
std::vector<Bytes> EveryKind() {
  return {DrawInfoBytes<CRasMMDrawInfo>({1}),       DrawInfoBytes<CLineDrawInfo>({1, 2}),
          DrawInfoBytes<CPolyShadowDrawInfo>({}),   DrawInfoBytes<CCmbLblDrawInfo>({3}),
          DrawInfoBytes<CPolyBmpBrushDrawInfo>({}), DrawInfoBytes<CRasLLDrawInfo>({4}),
          DrawInfoBytes<CLineDrawInfo>({}),         DrawInfoBytes<CPolySolidBrushDrawInfo>({5, 6})};
}

TEST(DrawInfoSet, WithoutElementsIsAZeroCount) {
  CDrawInfoSet set;
  EXPECT_EQ(set.GetElemCount(), 0U);
  EXPECT_EQ(Written(set), (Bytes{6, 0, 0, 0, 4, 0, 0, 0, 0, 0, 0, 0}));
}

TEST(DrawInfoSet, HoldsEveryKindInTheOrderOfTheFile) {
  const Bytes bytes = SetChunk(id::kDrawInfoSet, EveryKind());
  for (const auto& set : {FromMemory<CDrawInfoSet>(bytes), FromFile<CDrawInfoSet>(bytes)}) {
    ASSERT_NE(set, nullptr);
    ASSERT_EQ(set->GetElemCount(), 8U);
    EXPECT_NE(class_cast<CRasMMDrawInfo>(set->GetElem(0)), nullptr);
    EXPECT_NE(class_cast<CLineDrawInfo>(set->GetElem(1)), nullptr);
    EXPECT_NE(class_cast<CPolySolidBrushDrawInfo>(set->GetElem(7)), nullptr);
    EXPECT_EQ(set->GetElem(8), nullptr);
    EXPECT_EQ(Written(*set, false), bytes);
    EXPECT_EQ(Written(*set), bytes);
  }
}

TEST(DrawInfoSet, DropsWhatIsNoDrawInfo) {
  const Bytes bytes = SetChunk(
      id::kDrawInfoSet, {MarkBytes({}, {}), LineInfoBytes(1), AtterBytes(5), Chunk(id::kNone, {})});
  for (const auto& set : {FromMemory<CDrawInfoSet>(bytes), FromFile<CDrawInfoSet>(bytes)}) {
    ASSERT_NE(set, nullptr);
    EXPECT_EQ(set->GetElemCount(), 1U);
    EXPECT_EQ(Written(*set), SetChunk(id::kDrawInfoSet, {LineInfoBytes(1)}));
  }
}

TEST(DrawInfoSet, TheElementsThatArriveAreCountedNotTheDeclared) {
  for (const std::uint32_t declared : {0U, 1U, 5U, 0xFFFFFFFFU}) {
    const Bytes bytes =
        Chunk(id::kDrawInfoSet, Bytes().U32(declared).Add(LineInfoBytes(1)).Add(LineInfoBytes(2)));
    for (const auto& set : {FromMemory<CDrawInfoSet>(bytes), FromFile<CDrawInfoSet>(bytes)}) {
      ASSERT_NE(set, nullptr) << declared;
      EXPECT_EQ(set->GetElemCount(), 2U);
      EXPECT_EQ(Written(*set), SetChunk(id::kDrawInfoSet, {LineInfoBytes(1), LineInfoBytes(2)}));
    }
  }
}

TEST(DrawInfoSet, CloneKeepsEveryByte) {
  const Bytes bytes = SetChunk(id::kDrawInfoSet, EveryKind());
  const auto set = FromMemory<CDrawInfoSet>(bytes);
  EXPECT_EQ(Written(*ClonedFrom(*set), false), bytes);
}

TEST(DrawInfoSetEdit, RoundTripKeepsEveryByteAndComputesNoSize) {
  const Bytes bytes = SetChunk(id::kDrawInfoSet, EveryKind());
  CDrawInfoSetEdit edit;
  edit.ChunkDataToEditData(FromMemory<CDrawInfoSet>(bytes).get());
  ASSERT_EQ(edit.GetElemCount(), 8U);
  EXPECT_NE(dynamic_cast<CCmbLblDrawInfoEdit*>(edit.GetElem(3)), nullptr);
  const std::unique_ptr<CAbstractChunkEdit> copy(edit.Clone());
  const auto back = ToChunk<CDrawInfoSet>(*copy);
  EXPECT_EQ(back->GetHeader().DataSize, 0U);
  EXPECT_EQ(back->GetElem(0)->GetHeader().DataSize, 0U);
  EXPECT_EQ(Written(*back), bytes);
}

TEST(DrawInfoSetEdit, ElementsAreAddedInsertedAndTakenAway) {
  CDrawInfoSetEdit edit;
  const auto add = [&](std::uint32_t index, std::uint8_t code) {
    auto* line = new Counted<CLineDrawInfoEdit>;
    line->LineCode = code;
    line->Color = 0x80FF0000;
    line->Aspect = 1.5F;
    edit.AddElem(index, line);
  };
  add(0, 1);
  add(9, 2);
  add(0, 3);
  add(1, 4);
  EXPECT_EQ(Written(*ToChunk<CDrawInfoSet>(edit)),
            SetChunk(id::kDrawInfoSet,
                     {LineInfoBytes(3), LineInfoBytes(4), LineInfoBytes(1), LineInfoBytes(2)}));
  edit.DelElem(1);
  edit.DelElem(3);
  EXPECT_EQ(Counted<CLineDrawInfoEdit>::Alive(), 3);
  EXPECT_EQ(Written(*ToChunk<CDrawInfoSet>(edit)),
            SetChunk(id::kDrawInfoSet, {LineInfoBytes(3), LineInfoBytes(1), LineInfoBytes(2)}));
}

TEST(DrawInfoSetEdit, TakesDrawInfosOnly) {
  CDrawInfoSetEdit edit;
  EXPECT_TRUE(edit.SetSubChunkEdit(new CRasLLDrawInfoEdit));
  EXPECT_FALSE(edit.SetSubChunkEdit(new Counted<CMarkDataEdit>));
  EXPECT_EQ(Counted<CMarkDataEdit>::Alive(), 0);
  EXPECT_EQ(edit.GetElemCount(), 1U);
}

TEST(DrawInfoSetText, NamesEveryElementByItsClassInOrder) {
  const Bytes bytes = SetChunk(id::kDrawInfoSet, {DrawInfoBytes<CLineDrawInfo>({5}),
                                                  DrawInfoBytes<CPolySolidBrushDrawInfo>({})});
  const auto set = FromMemory<CDrawInfoSet>(bytes);
  ASSERT_NE(set, nullptr);
  const std::string xml = XmlElement("DrawInfoSet", set.get());
  EXPECT_EQ(xml,
            "<DrawInfoSet>\r\n"
            "\t<LineDrawInfo>\r\n"
            "\t\t<ComData>\r\n"
            "\t\t\t<LineCode>9</LineCode>\r\n"
            "\t\t\t<Color A=\"128\" R=\"255\" G=\"1\" B=\"2\" />\r\n"
            "\t\t\t<Aspect>-0.5000000000</Aspect>\r\n"
            "\t\t</ComData>\r\n"
            "\t\t<ScData>\r\n"
            "\t\t\t<DenomMax>5</DenomMax>\r\n"
            "\t\t\t<DenomMin>7</DenomMin>\r\n"
            "\t\t\t<DenomMaxWidth>65535</DenomMaxWidth>\r\n"
            "\t\t\t<Sensitivity>0.2500000000</Sensitivity>\r\n"
            "\t\t\t<Extension>3</Extension>\r\n"
            "\t\t</ScData>\r\n"
            "\t</LineDrawInfo>\r\n"
            "\t<PolySolidBrushDrawInfo>\r\n"
            "\t\t<ComData>\r\n"
            "\t\t\t<Color A=\"1\" R=\"2\" G=\"3\" B=\"4\" />\r\n"
            "\t\t</ComData>\r\n"
            "\t</PolySolidBrushDrawInfo>\r\n"
            "</DrawInfoSet>\r\n");
  const auto edit = ZorEditFromDrawDataXml(xml);
  EXPECT_EQ(Written(*ToChunk<CDrawInfoSet>(*edit->DrawData.DrawInfoSet)), bytes);
}

TEST(DrawInfoSetText, ReadsEveryKindInTheOrderOfTheElements) {
  const Bytes bytes = SetChunk(id::kDrawInfoSet, EveryKind());
  const auto set = FromMemory<CDrawInfoSet>(bytes);
  const auto edit = ZorEditFromDrawDataXml(XmlElement("DrawInfoSet", set.get()));
  EXPECT_EQ(Written(*ToChunk<CDrawInfoSet>(*edit->DrawData.DrawInfoSet)), bytes);
}

TEST(DrawInfoSetText, ElementsThatAreNoDrawInfosAreLeftOut) {
  const auto edit = ZorEditFromDrawDataXml(
      "<DrawInfoSet><MarkData/><linedrawinfo/><RasMMDrawInfo/><Unknown/><DrawInfoSet/>"
      "<SetElem/><LineObj/><LineDrawInfo/></DrawInfoSet>");
  const CDrawInfoSetEdit& set = *edit->DrawData.DrawInfoSet;
  ASSERT_EQ(set.GetElemCount(), 2U);
  EXPECT_NE(dynamic_cast<CRasMMDrawInfoEdit*>(set.GetElem(0)), nullptr);
  EXPECT_NE(dynamic_cast<CLineDrawInfoEdit*>(set.GetElem(1)), nullptr);
}

}  // namespace
}  // namespace qenzor::testing
