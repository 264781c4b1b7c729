// The editable form of draw data.

#include <gtest/gtest.h>

#include "qenzor/zor/line_draw_info.h"
#include "tests/support/chunk_io.h"
#include "tests/support/counted.h"
#include "tests/support/zor_bytes.h"
#include "tests/support/zor_xml.h"

namespace qenzor::testing {
namespace {

using CountedAtterSetEdit = Counted<CDrawAtterSetEdit>;
using CountedInfoSetEdit = Counted<CDrawInfoSetEdit>;
using CountedMarkSetEdit = Counted<CMarkDataSetEdit>;

/// A draw data edit with all three sets, each counted.
std::unique_ptr<CZorDrawDataEdit> CountedSets() {
  auto draw_data = std::make_unique<CZorDrawDataEdit>();
  draw_data->SetSubChunkEdit(new CountedAtterSetEdit);
  draw_data->SetSubChunkEdit(new CountedInfoSetEdit);
  draw_data->SetSubChunkEdit(new CountedMarkSetEdit);
  return draw_data;
}

void ExpectAlive(int count) {
  EXPECT_EQ(CountedAtterSetEdit::Alive(), count);
  EXPECT_EQ(CountedInfoSetEdit::Alive(), count);
  EXPECT_EQ(CountedMarkSetEdit::Alive(), count);
}

/// What the edit's document writes.
Bytes WrittenEdit(CZorEdit& edit) { return WrittenZor(*ToZor(edit)); }

TEST(ZorEdit, AFreshOneHoldsZeroesAndNoSets) {
  CZorEdit edit;
  EXPECT_EQ(edit.Ident, (std::array<char, 9>{}));
  EXPECT_EQ(edit.Magic, 0);
  EXPECT_EQ(edit.MajorVer, 0);
  EXPECT_EQ(edit.MinorVer, 0);
  EXPECT_EQ(edit.Revision, 0U);
  EXPECT_EQ(edit.DrawData.DrawAtterSet, nullptr);
  EXPECT_EQ(edit.DrawData.DrawInfoSet, nullptr);
  EXPECT_EQ(edit.DrawData.MarkDataSet, nullptr);
}

TEST(ZorEdit, RoundTripKeepsEveryByteAndComputesNoSize) {
  const auto doc = ZorFromMemory(ZorDocumentBytes());
  CZorEdit edit;
  edit.ZorDataToEditData(doc.get());
  EXPECT_EQ(std::string(edit.Ident.data(), 9), "ZORMAP\r\n\x1A");
  EXPECT_EQ(edit.Magic, 0x4041);
  EXPECT_EQ(edit.MajorVer, 3);
  EXPECT_EQ(edit.MinorVer, 4);
  EXPECT_EQ(edit.Revision, 0x0A0B0C0DU);
  const auto back = ToZor(edit);
  ASSERT_NE(back, nullptr);
  EXPECT_EQ(back->DrawData.GetHeader().ChunkId, 26U);
  EXPECT_EQ(back->DrawData.GetHeader().DataSize, 0U);
  EXPECT_EQ(back->DrawData.DrawInfoSet->GetHeader().DataSize, 0U);
  EXPECT_EQ(back->DrawData.DrawInfoSet->GetElem(0)->GetHeader().DataSize, 0U);
  EXPECT_EQ(WrittenZor(*back), ZorDocumentBytes());
  EXPECT_EQ(WrittenZor(*doc), ZorDocumentBytes());
}

TEST(ZorEdit, WithoutSetsTheDocumentIsBare) {
  CZorEdit edit;
  edit.Revision = 5;
  const auto doc = ToZor(edit);
  ASSERT_NE(doc, nullptr);
  EXPECT_EQ(doc->Revision, 5U);
  EXPECT_EQ(doc->DrawData.DrawAtterSet, nullptr);
  EXPECT_EQ(WrittenZor(*doc).size(), 27U);
}

TEST(ZorEdit, ChangesReachTheDocument) {
  CZorEdit edit;
  edit.ZorDataToEditData(ZorFromMemory(ZorDocumentBytes()).get());
  edit.MinorVer = 9;
  edit.DrawData.MarkDataSet->GetElem(0)->RectMin = {-1, -1};
  auto* line = new CLineDrawInfoEdit;
  line->LineCode = 44;
  line->Color = 0x80FF0000;
  line->Aspect = 1.5F;
  edit.DrawData.DrawInfoSet->AddElem(0, line);
  edit.DrawData.DrawInfoSet->DelElem(2);
  const std::unique_ptr<CDrawAtterEdit> removed(edit.DrawData.DrawAtterSet->DelElem(1));
  ASSERT_NE(removed, nullptr);
  auto* atter = new CDrawAtterEdit;
  atter->ZId = 2;
  atter->SetSubChunkEdit(new CDrawInfoIdxSetEdit);
  atter->DrawInfoIdxSet->DrawInfoIdx = {6};
  edit.DrawData.DrawAtterSet->AddElem(atter);
  const Bytes info = Bytes("ZORMAP\r\n\x1A").U16(0x4041).U16(3).U16(9).U32(0x0A0B0C0D);
  EXPECT_EQ(
      WrittenEdit(edit),
      Bytes(info).Add(DrawDataBytes(
          {SetChunk(id::kDrawAtterSet, {AtterBytes(0, {1, 0}), AtterBytes(2, {6})}),
           SetChunk(id::kDrawInfoSet, {LineInfoBytes(44), LineInfoBytes(7)}),
           SetChunk(id::kMarkDataSet,
                    {MarkBytes({-1, -1, 5, 6}, {MarkElemBytes(1, 2, 0xFF0000FF, {{3, -4}})})})})));
}

TEST(ZorEdit, ConversionReplacesTheSetsAndNeverMerges) {
  CZorEdit edit;
  edit.SetSubChunkEdit(CountedSets().get());
  ExpectAlive(1);
  edit.ZorDataToEditData(ZorFromMemory(ZorInfoBytes().Add(DrawDataBytes({}))).get());
  ExpectAlive(0);
  EXPECT_EQ(edit.DrawData.MarkDataSet, nullptr);
  EXPECT_EQ(edit.Magic, 0x4041);
}

TEST(ZorEdit, ATakenDrawDataEditStillPointsAtTheSameSets) {
  CZorEdit edit;
  const auto given = CountedSets();
  EXPECT_TRUE(edit.SetSubChunkEdit(given.get()));
  EXPECT_NE(edit.DrawData.DrawAtterSet, nullptr);
  EXPECT_EQ(edit.DrawData.DrawAtterSet.get(), given->DrawAtterSet.get());
  EXPECT_EQ(edit.DrawData.DrawInfoSet.get(), given->DrawInfoSet.get());
  EXPECT_EQ(edit.DrawData.MarkDataSet.get(), given->MarkDataSet.get());
  ExpectAlive(1);
}

TEST(ZorEdit, ATakenDrawDataEditMayGoBeforeTheDocument) {
  {
    CZorEdit edit;
    auto given = CountedSets();
    EXPECT_TRUE(edit.SetSubChunkEdit(given.get()));
    given.reset();
    ExpectAlive(1);
    edit.DrawData.MarkDataSet->AddElem(0, new CMarkDataEdit);
    const Bytes marks = SetChunk(id::kMarkDataSet, {MarkBytes({}, {})});
    EXPECT_EQ(WrittenZor(*ToZor(edit)),
              Bytes(std::vector<std::uint8_t>(19))
                  .Add(DrawDataBytes(
                      {SetChunk(id::kDrawAtterSet, {}), SetChunk(id::kDrawInfoSet, {}), marks})));
  }
  ExpectAlive(0);
}

TEST(ZorEdit, ATakenDrawDataEditMayGoAfterTheDocument) {
  auto given = CountedSets();
  {
    CZorEdit edit;
    EXPECT_TRUE(edit.SetSubChunkEdit(given.get()));
  }
  ExpectAlive(1);
  EXPECT_EQ(given->MarkDataSet->GetElemCount(), 0U);
  EXPECT_EQ(given->DrawInfoSet->GetElemCount(), 0U);
  given.reset();
  ExpectAlive(0);
}

TEST(ZorEdit, AChangeThroughOneOwnerIsSeenThroughTheOther) {
  CZorEdit edit;
  const auto given = CountedSets();
  edit.SetSubChunkEdit(given.get());
  given->MarkDataSet->AddElem(0, new CMarkDataEdit);
  EXPECT_EQ(edit.DrawData.MarkDataSet->GetElemCount(), 1U);
  given->Release();
  EXPECT_EQ(given->MarkDataSet, nullptr);
  ExpectAlive(1);
  EXPECT_EQ(edit.DrawData.MarkDataSet->GetElemCount(), 1U);
}

TEST(ZorEdit, ALaterDrawDataEditReplacesTheSetsOfTheEarlier) {
  CZorEdit edit;
  edit.SetSubChunkEdit(CountedSets().get());
  CZorDrawDataEdit later;
  later.SetSubChunkEdit(new CMarkDataSetEdit);
  EXPECT_TRUE(edit.SetSubChunkEdit(&later));
  ExpectAlive(0);
  EXPECT_EQ(edit.DrawData.DrawAtterSet, nullptr);
  EXPECT_EQ(edit.DrawData.DrawInfoSet, nullptr);
  EXPECT_EQ(edit.DrawData.MarkDataSet, later.MarkDataSet);
}

TEST(ZorEdit, AnyOtherEditIsDestroyedAndRefused) {
  CZorEdit edit;
  edit.SetSubChunkEdit(CountedSets().get());
  EXPECT_FALSE(edit.SetSubChunkEdit(new Counted<CMarkDataEdit>));
  EXPECT_EQ(Counted<CMarkDataEdit>::Alive(), 0);
  EXPECT_FALSE(edit.SetSubChunkEdit(new Counted<CLineDrawInfoEdit>));
  EXPECT_EQ(Counted<CLineDrawInfoEdit>::Alive(), 0);
  EXPECT_FALSE(edit.SetSubChunkEdit(nullptr));
  ExpectAlive(1);
}

}  // namespace
}  // namespace qenzor::testing
