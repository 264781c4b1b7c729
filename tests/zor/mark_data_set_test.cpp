#include "qenzor/zor/mark_data_set.h"

#include <gtest/gtest.h>

#include "tests/support/chunk_io.h"
#include "tests/support/counted.h"
#include "tests/support/zor_bytes.h"
#include "tests/support/zor_xml.h"

namespace qenzor::testing {
namespace {

Bytes MarkOf(std::int32_t x) { return MarkBytes({x, 0, 0, 0}, {MarkElemBytes(1, 2, 3, {{x, 4}})}); }

TEST(MarkDataSet, WithoutElementsIsAZeroCount) {
  CMarkDataSet set;
  EXPECT_EQ(Written(set), (Bytes{24, 0, 0, 0, 4, 0, 0, 0, 0, 0, 0, 0}));
}

TEST(MarkDataSet, KeepsItsMarksInTheOrderOfTheFile) {
  const Bytes bytes = SetChunk(id::kMarkDataSet, {MarkOf(3), MarkOf(1), MarkOf(2)});
  for (const auto& set : {FromMemory<CMarkDataSet>(bytes), FromFile<CMarkDataSet>(bytes)}) {
    ASSERT_NE(set, nullptr);
    ASSERT_EQ(set->GetElemCount(), 3U);
    EXPECT_EQ(set->GetElem(1)->RectMin.x, 1);
    EXPECT_EQ(set->GetElem(3), nullptr);
    EXPECT_EQ(Written(*set, false), bytes);
    EXPECT_EQ(Written(*set), bytes);
    EXPECT_EQ(Written(*ClonedFrom(*set), false), bytes);
  }
}

TEST(MarkDataSet, DropsWhatIsNoMark) {
  const Bytes bytes =
      SetChunk(id::kMarkDataSet, {LineInfoBytes(1), MarkOf(1), SetChunk(id::kMarkDataSet, {})});
  for (const auto& set : {FromMemory<CMarkDataSet>(bytes), FromFile<CMarkDataSet>(bytes)}) {
    ASSERT_NE(set, nullptr);
    EXPECT_EQ(Written(*set), SetChunk(id::kMarkDataSet, {MarkOf(1)}));
  }
}

TEST(MarkDataSet, SetElemReplacesAndRefusesPlacesThatAreNotThere) {
  const auto set = FromMemory<CMarkDataSet>(SetChunk(id::kMarkDataSet, {MarkOf(1)}));
  EXPECT_TRUE(set->SetElem(0, FromMemory<CMarkData>(MarkOf(9)).release()));
  EXPECT_FALSE(set->SetElem(1, new Counted<CMarkData>));
  EXPECT_EQ(Counted<CMarkData>::Alive(), 0);
  EXPECT_EQ(Written(*set), SetChunk(id::kMarkDataSet, {MarkOf(9)}));
}

TEST(MarkDataSetEdit, RoundTripKeepsEveryByteAndComputesNoSize) {
  const Bytes bytes = SetChunk(id::kMarkDataSet, {MarkOf(3), MarkOf(1)});
  CMarkDataSetEdit edit;
  edit.ChunkDataToEditData(FromMemory<CMarkDataSet>(bytes).get());
  const std::unique_ptr<CAbstractChunkEdit> copy(edit.Clone());
  const auto back = ToChunk<CMarkDataSet>(*copy);
  EXPECT_EQ(back->GetHeader().ChunkId, 24U);
  EXPECT_EQ(back->GetHeader().DataSize, 0U);
  EXPECT_EQ(Written(*back), bytes);
}

TEST(MarkDataSetEdit, MarksAreAddedInsertedAndTakenAway) {
  CMarkDataSetEdit edit;
  edit.ChunkDataToEditData(
      FromMemory<CMarkDataSet>(SetChunk(id::kMarkDataSet, {MarkOf(3), MarkOf(1)})).get());
  auto* added = new CMarkDataEdit;
  added->ChunkDataToEditData(FromMemory<CMarkData>(MarkOf(7)).get());
  edit.AddElem(1, added);
  edit.DelElem(0);
  edit.DelElem(5);
  EXPECT_TRUE(edit.SetSubChunkEdit(added->Clone()));
  EXPECT_FALSE(edit.SetSubChunkEdit(new Counted<CMarkDataSetEdit>));
  EXPECT_EQ(Counted<CMarkDataSetEdit>::Alive(), 0);
  EXPECT_EQ(Written(*ToChunk<CMarkDataSet>(edit)),
            SetChunk(id::kMarkDataSet, {MarkOf(7), MarkOf(1), MarkOf(7)}));
}

TEST(MarkDataSetText, WritesAndReadsItsMarksInOrder) {
  const Bytes bytes = SetChunk(id::kMarkDataSet, {MarkOf(3), MarkBytes({1, 2, 3, 4}, {})});
  const auto set = FromMemory<CMarkDataSet>(bytes);
  const std::string xml = XmlElement("MarkDataSet", set.get());
  EXPECT_EQ(xml,
            "<MarkDataSet>\r\n"
            "\t<MarkData>\r\n"
            "\t\t<RectMin x=\"3\" y=\"0\" />\r\n"
            "\t\t<RectMax x=\"0\" y=\"0\" />\r\n"
            "\t\t<MarkElem>\r\n"
            "\t\t\t<ElemKind>1</ElemKind>\r\n"
            "\t\t\t<LineWidth>2</LineWidth>\r\n"
            "\t\t\t<Color A=\"0\" R=\"0\" G=\"0\" B=\"3\" />\r\n"
            "\t\t\t<Pt x=\"3\" y=\"4\" />\r\n"
            "\t\t</MarkElem>\r\n"
            "\t</MarkData>\r\n"
            "\t<MarkData>\r\n"
            "\t\t<RectMin x=\"1\" y=\"2\" />\r\n"
            "\t\t<RectMax x=\"3\" y=\"4\" />\r\n"
            "\t</MarkData>\r\n"
            "</MarkDataSet>\r\n");
  const auto edit = ZorEditFromDrawDataXml(xml);
  EXPECT_EQ(Written(*ToChunk<CMarkDataSet>(*edit->DrawData.MarkDataSet)), bytes);
}

TEST(MarkDataSetText, OtherElementsAreLeftOut) {
  const auto edit = ZorEditFromDrawDataXml(
      "<MarkDataSet><LineDrawInfo/><markdata/><SetElem/><MarkElem/><MarkData/></MarkDataSet>");
  EXPECT_EQ(edit->DrawData.MarkDataSet->GetElemCount(), 1U);
}

}  // namespace
}  // namespace qenzor::testing
