// The editable form of a map project.

#include <gtest/gtest.h>

#include "qenzor/qen/line_obj.h"
#include "tests/support/chunk_io.h"
#include "tests/support/counted.h"
#include "tests/support/qen_bytes.h"
#include "tests/support/qen_xml.h"

namespace qenzor::testing {
namespace {

using CountedMapDataEdit = Counted<CQenMapDataEdit>;

std::unique_ptr<CQen> ToDocument(CQenEdit& edit) {
  return std::unique_ptr<CQen>(edit.EditDataToQenData());
}

TEST(QenEdit, AFreshOneHoldsZeroesAndNoMapData) {
  CQenEdit edit;
  EXPECT_EQ(edit.Ident, (std::array<char, 9>{}));
  EXPECT_EQ(edit.Magic, 0);
  EXPECT_EQ(edit.IncRect, CRect{});
  EXPECT_EQ(edit.MapData, nullptr);
}

TEST(QenEdit, RoundTripKeepsEveryByteAndComputesNoSize) {
  const Bytes bytes = QenDocumentBytes();
  CQen doc;
  ASSERT_TRUE(doc.Read(bytes.data(), bytes.size()));
  CQenEdit edit;
  edit.QenDataToEditData(&doc);
  const auto back = ToDocument(edit);
  ASSERT_NE(back, nullptr);
  EXPECT_EQ(back->MapData->GetHeader().ChunkId, 25U);
  EXPECT_EQ(back->MapData->GetHeader().DataSize, 0U);
  EXPECT_EQ(back->MapData->MeshSegmentSet->GetElem(0)->GetHeader().DataSize, 0U);
  CMemFile file;
  ASSERT_TRUE(back->Write(&file));
  EXPECT_EQ(Bytes(file.GetBytes()), bytes);
}

TEST(QenEdit, ChangesReachTheDocument) {
  const Bytes bytes = QenInfoBytes().Add(MapDataBytes({LineBytes({{1, 2}}), LineBytes({{3, 4}})}));
  CQen doc;
  ASSERT_TRUE(doc.Read(bytes.data(), bytes.size()));
  CQenEdit edit;
  edit.QenDataToEditData(&doc);
  FirstObjSet(edit)->DelElem(0);
  auto* line = new CLineObjEdit;
  line->Pt = {{5, 6}};
  FirstObjSet(edit)->AddElem(9, line);
  CMemFile file;
  ASSERT_TRUE(ToDocument(edit)->Write(&file));
  EXPECT_EQ(Bytes(file.GetBytes()),
            QenInfoBytes().Add(MapDataBytes({LineBytes({{3, 4}}), LineBytes({{5, 6}})})));
}

TEST(QenEdit, WithoutAMapDataEditTheDocumentHasNoMapData) {
  CQenEdit edit;
  edit.Revision = 5;
  const auto doc = ToDocument(edit);
  ASSERT_NE(doc, nullptr);
  EXPECT_EQ(doc->MapData, nullptr);
  EXPECT_EQ(doc->Revision, 5U);
}

TEST(QenEdit, ADocumentWithoutMapDataGivesNoMapDataEdit) {
  CQenEdit edit;
  edit.SetSubChunkEdit(new CountedMapDataEdit);
  CQen doc;
  doc.CompCoef = 3;
  edit.QenDataToEditData(&doc);
  EXPECT_EQ(CountedMapDataEdit::Alive(), 0);
  EXPECT_EQ(edit.MapData, nullptr);
  EXPECT_EQ(edit.CompCoef, 3);
}

TEST(QenEdit, TakesAMapDataEditOnly) {
  CQenEdit edit;
  EXPECT_TRUE(edit.SetSubChunkEdit(new CountedMapDataEdit));
  auto* later = new CQenMapDataEdit;
  EXPECT_TRUE(edit.SetSubChunkEdit(later));
  EXPECT_EQ(CountedMapDataEdit::Alive(), 0);
  EXPECT_FALSE(edit.SetSubChunkEdit(new Counted<CMeshSegmentSetEdit>));
  EXPECT_EQ(Counted<CMeshSegmentSetEdit>::Alive(), 0);
  EXPECT_FALSE(edit.SetSubChunkEdit(nullptr));
  EXPECT_EQ(edit.MapData.get(), later);
}

TEST(QenEdit, ReleaseDestroysTheMapDataEditAndKeepsTheInfo) {
  CQenEdit edit;
  edit.Magic = 4;
  edit.SetSubChunkEdit(new CountedMapDataEdit);
  edit.Release();
  EXPECT_EQ(CountedMapDataEdit::Alive(), 0);
  EXPECT_EQ(edit.MapData, nullptr);
  EXPECT_EQ(edit.Magic, 4);
}

TEST(QenEdit, DestructionDestroysTheMapDataEdit) {
  { CQenEdit().SetSubChunkEdit(new CountedMapDataEdit); }
  EXPECT_EQ(CountedMapDataEdit::Alive(), 0);
}

}  // namespace
}  // namespace qenzor::testing
