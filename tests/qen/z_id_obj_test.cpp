#include "qenzor/qen/z_id_obj.h"

#include <gtest/gtest.h>

#include "qenzor/qen/line_obj.h"
#include "tests/support/chunk_io.h"
#include "tests/support/counted.h"
#include "tests/support/qen_bytes.h"
#include "tests/support/qen_xml.h"

namespace qenzor::testing {
namespace {

constexpr std::uint64_t kLargest = 0xFFFFFFFFFFFFFFFF;

const Bytes kTwoLines = SetChunk(id::kObjSet, {LineBytes({{1, 2}}), LineBytes({{3, 4}, {5, 6}})});

TEST(ZIdObj, IsEmptyWhenConstructed) {
  CZIdObj zid;
  EXPECT_EQ(Written(zid), Bytes().U32(21).U32(8).U64(0));
}

TEST(ZIdObj, ReadsAndWritesItsIdAndObjectsInOrder) {
  const Bytes bytes = ZIdBytes(0x1122334455667788, kTwoLines);
  for (const auto& zid : {FromMemory<CZIdObj>(bytes), FromFile<CZIdObj>(bytes)}) {
    ASSERT_NE(zid, nullptr);
    EXPECT_EQ(zid->ZId, 0x1122334455667788U);
    EXPECT_EQ(zid->ObjSet->GetElemCount(), 2U);
    EXPECT_EQ(Written(*zid), bytes);
    EXPECT_EQ(zid->GetHeader().DataSize, 8 + 8 + zid->ObjSet->GetHeader().DataSize);
  }
}

TEST(ZIdObj, FewerThanEightBytesFail) {
  const Bytes whole = ZIdBytes(1);
  for (std::size_t size = 8; size < 16; ++size) {
    EXPECT_EQ(FromMemory<CZIdObj>(whole.Front(size)), nullptr) << size;
    EXPECT_EQ(FromFile<CZIdObj>(whole.Front(size)), nullptr) << size;
  }
}

TEST(ZIdObj, AnObjectOutsideASetIsLost) {
  const Bytes bytes = ZIdBytes(1, LineBytes({{1, 2}}));
  for (const auto& zid : {FromMemory<CZIdObj>(bytes), FromFile<CZIdObj>(bytes)}) {
    ASSERT_NE(zid, nullptr);
    EXPECT_EQ(Written(*zid), ZIdBytes(1));
  }
}

TEST(ZIdObj, TheLaterOfTwoSetsStaysAndOthersAreDestroyed) {
  CZIdObj zid;
  zid.SubChunkSet(0, new Counted<CObjSet>);
  auto* later = new CObjSet;
  zid.SubChunkSet(1, later);
  EXPECT_EQ(Counted<CObjSet>::Alive(), 0);
  zid.SubChunkSet(2, new Counted<CLineObj>);
  EXPECT_EQ(Counted<CLineObj>::Alive(), 0);
  EXPECT_EQ(zid.ObjSet.get(), later);
}

TEST(ZIdObj, CopiesAndEditRoundTripKeepEveryByte) {
  const Bytes bytes = ZIdBytes(kLargest, kTwoLines);
  const auto zid = FromMemory<CZIdObj>(bytes);
  EXPECT_EQ(Written(*ClonedFrom(*zid), false), bytes);
  CZIdObjEdit edit;
  edit.ChunkDataToEditData(zid.get());
  EXPECT_EQ(edit.ZId, kLargest);
  const std::unique_ptr<CAbstractChunkEdit> copy(edit.Clone());
  const auto back = ToChunk<CZIdObj>(*copy);
  EXPECT_EQ(back->GetHeader().DataSize, 0U);
  EXPECT_EQ(Written(*back), bytes);
}

TEST(ZIdObjEdit, TakesAnObjectSetOnly) {
  CZIdObjEdit edit;
  EXPECT_TRUE(edit.SetSubChunkEdit(new Counted<CObjSetEdit>));
  EXPECT_TRUE(edit.SetSubChunkEdit(new CObjSetEdit));
  EXPECT_EQ(Counted<CObjSetEdit>::Alive(), 0);
  EXPECT_FALSE(edit.SetSubChunkEdit(new Counted<CLineObjEdit>));
  EXPECT_EQ(Counted<CLineObjEdit>::Alive(), 0);
}

TEST(ZIdObjText, TheLargestIdHasTwentyDigitsAndNoSign) {
  const auto zid = FromMemory<CZIdObj>(ZIdBytes(kLargest));
  CZIdObjTextConverter converter;
  EXPECT_EQ(XmlOf(converter, zid.get(), 1), "\t<ZId>18446744073709551615</ZId>\r\n");
}

TEST(ZIdObjText, WritesItsIdThenItsObjectsInOrder) {
  const auto zid = FromMemory<CZIdObj>(
      ZIdBytes(5, SetChunk(id::kObjSet, {RasMMBytes({1, 2}), LineBytes({{3, 4}})})));
  EXPECT_EQ(XmlElement("ZIdObj", zid.get()),
            "<ZIdObj>\r\n"
            "\t<ZId>5</ZId>\r\n"
            "\t<ObjSet>\r\n"
            "\t\t<RasMMObj>\r\n\t\t\t<Pt x=\"1\" y=\"2\" />\r\n\t\t</RasMMObj>\r\n"
            "\t\t<LineObj>\r\n\t\t\t<Pt x=\"3\" y=\"4\" />\r\n\t\t</LineObj>\r\n"
            "\t</ObjSet>\r\n"
            "</ZIdObj>\r\n");
}

TEST(ZIdObjText, TheLastIdAndTheLastSetWin) {
  const auto edit = EditFromXml(
      "<Qen><QenMapData><MeshSegmentSet><MeshSegment><LayerSet><LayerData><ZIdObjSet><ZIdObj>"
      "<ObjSet><LineObj/><LineObj/></ObjSet><ZId>1</ZId><LineObj/>"
      "<ObjSet><LineObj/></ObjSet><ZId>18446744073709551615</ZId>"
      "</ZIdObj><LineObj/></ZIdObjSet></LayerData></LayerSet></MeshSegment></MeshSegmentSet>"
      "</QenMapData></Qen>");
  ASSERT_NE(edit, nullptr);
  EXPECT_EQ(FirstLayer(*edit)->ZIdObjSet->GetElemCount(), 1U);
  EXPECT_EQ(FirstZId(*edit)->ZId, kLargest);
  EXPECT_EQ(FirstObjSet(*edit)->GetElemCount(), 1U);
}

}  // namespace
}  // namespace qenzor::testing
