// Saving: the file is what writing gives, or as it was before, and the result says why.

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <utility>

#include "qenzor/qen_document.h"
#include "qenzor/qen_xml.h"
#include "qenzor/zor_document.h"
#include "qenzor/zor_xml.h"
#include "tests/support/one_object.h"
#include "tests/support/temp_file.h"

namespace qenzor::testing {

namespace {

template <class Document>
std::string Written(Document& document) {
  CMemFile file;
  EXPECT_TRUE(document.Write(&file));
  return {file.GetBytes().begin(), file.GetBytes().end()};
}

SaveOptions NoSync() {
  SaveOptions options;
  options.Sync = false;
  return options;
}
SaveOptions InUtf8() {
  SaveOptions options;
  options.Encoding = XmlEncoding::kUtf8;
  return options;
}

CString Reason(const Result<void>& result) { return result ? "" : result.GetFailure().Describe(); }
FailureKind KindOf(const Result<void>& result) {
  EXPECT_FALSE(result);
  return result.GetFailure().Kind;
}

/// Both documents of the samples, in both forms.
class Save : public ::testing::Test {
 protected:
  Save() {
    EXPECT_TRUE(m_map.Read(QENZOR_SAMPLES "/world.qen"));
    EXPECT_TRUE(m_drawing.Read(QENZOR_SAMPLES "/world.zor"));
    m_mapEdit.QenDataToEditData(&m_map);
    m_drawingEdit.ZorDataToEditData(&m_drawing);
  }

  CQen m_map;
  CZor m_drawing;
  CQenEdit m_mapEdit;
  CZorEdit m_drawingEdit;
};

TEST_F(Save, TheFileHoldsWhatWritingGives) {
  const TempFile file{std::string_view("old")};
  EXPECT_EQ(Reason(SaveQen(m_map, file.Path())), "");
  EXPECT_TRUE(file.Text() == Written(m_map));
  EXPECT_EQ(Reason(SaveZor(m_drawing, file.Path())), "");
  EXPECT_TRUE(file.Text() == Written(m_drawing));
  EXPECT_EQ(Reason(SaveQen(m_mapEdit, file.Path(), NoSync())), "");
  EXPECT_TRUE(file.Text() == Written(m_map));
  EXPECT_EQ(Reason(SaveZor(m_drawingEdit, file.Path(), NoSync())), "");
  const std::unique_ptr<CZor> again(m_drawingEdit.EditDataToZorData());
  EXPECT_TRUE(file.Text() == Written(*again));
}

TEST_F(Save, XmlIsWhatTheConvertersGive) {
  const TempFile file;
  const TempFile expected;
  ASSERT_TRUE(CQenTextConverter().ConvertChunkToText(expected.Path(), m_map, 0));
  EXPECT_EQ(Reason(SaveQenXml(m_map, file.Path())), "");
  EXPECT_TRUE(file.Text() == expected.Text());
  EXPECT_EQ(Reason(SaveQenXml(m_mapEdit, file.Path())), "");
  EXPECT_TRUE(file.Text() == expected.Text());
  const std::unique_ptr<CZor> again(m_drawingEdit.EditDataToZorData());
  ASSERT_TRUE(CZorTextConverter().ConvertChunkToText(expected.Path(), *again, 0));
  EXPECT_EQ(Reason(SaveZorXml(*again, file.Path())), "");
  EXPECT_TRUE(file.Text() == expected.Text());
  EXPECT_EQ(Reason(SaveZorXml(m_drawingEdit, file.Path())), "");
  EXPECT_TRUE(file.Text() == expected.Text());
}

TEST_F(Save, AnEditFormMayBeGivenUp) {
  const TempFile file;
  const std::string map = Written(m_map);
  EXPECT_EQ(Reason(SaveQen(std::move(m_mapEdit), file.Path())), "");
  EXPECT_TRUE(file.Text() == map);
  EXPECT_EQ(m_mapEdit.MapData, nullptr);
  const std::unique_ptr<CZor> drawing(m_drawingEdit.EditDataToZorData());
  EXPECT_EQ(Reason(SaveZor(std::move(m_drawingEdit), file.Path())), "");
  EXPECT_TRUE(file.Text() == Written(*drawing));
  // What is refused is not touched.
  PutPoint(m_mapEdit, {40000, 0});
  EXPECT_EQ(KindOf(SaveQen(std::move(m_mapEdit), file.Path())), FailureKind::kCannotStore);
  EXPECT_NE(m_mapEdit.MapData, nullptr);
  EXPECT_EQ(Reason(SaveQenXml(std::move(m_mapEdit), file.Path())), "");
  EXPECT_NE(file.Text().find("x=\"40000\""), std::string::npos);
}

TEST_F(Save, XmlIsWrittenInTheEncodingThatIsAskedFor) {
  const TempFile file;
  EXPECT_EQ(Reason(SaveQenXml(m_map, file.Path(), InUtf8())), "");
  EXPECT_TRUE(file.Text() == *QenToXml(m_map, XmlEncoding::kUtf8));
  EXPECT_EQ(Reason(SaveZorXml(m_drawing, file.Path(), InUtf8())), "");
  EXPECT_TRUE(file.Text() == *ZorToXml(m_drawing, XmlEncoding::kUtf8));
}

TEST_F(Save, WhatCannotBeStoredIsRefusedAndTheOldFileStays) {
  const TempFile file{std::string_view("old")};
  CQenEdit edit;
  PutPoint(edit, {0, 40000});
  const std::unique_ptr<CQen> map(edit.EditDataToQenData());
  const CString reason = file.Path() + ": " + kObjectPlace +
                         "LineObj[0]: Pt has the coordinate 40000, outside what can be stored "
                         "(-32768 to 32767)";
  for (const auto& result : {SaveQen(edit, file.Path()), SaveQen(*map, file.Path())}) {
    EXPECT_EQ(KindOf(result), FailureKind::kCannotStore);
    EXPECT_EQ(Reason(result), reason);
    EXPECT_EQ(result.GetFailure().ChunkPath, kObjectPlace + "LineObj[0]");
  }
  CZorEdit drawing;
  PutIndices(drawing).resize(65537);
  EXPECT_EQ(KindOf(SaveZor(drawing, file.Path())), FailureKind::kCannotStore);
  EXPECT_EQ(KindOf(SaveZorXml(drawing, file.Path())), FailureKind::kCannotStore);
  CQen empty;
  EXPECT_EQ(KindOf(SaveQen(empty, file.Path())), FailureKind::kCannotStore);
  EXPECT_EQ(file.Text(), "old");
  // XML has room for it.
  EXPECT_EQ(Reason(SaveQenXml(edit, file.Path())), "");
  EXPECT_NE(file.Text().find("<Pt x=\"0\" y=\"40000\" />"), std::string::npos);
  EXPECT_EQ(Reason(SaveQenXml(empty, file.Path())), "");
}

TEST_F(Save, AFileThatCannotBeWrittenIsAFailureWithItsReason) {
  const CString reason = "/dev/full: cannot be written: No space left on device";
  for (const auto& result :
       {SaveQen(m_map, "/dev/full"), SaveZor(m_drawing, "/dev/full"),
        SaveQen(m_mapEdit, "/dev/full"), SaveZor(m_drawingEdit, "/dev/full"),
        SaveQenXml(m_map, "/dev/full"), SaveZorXml(m_drawing, "/dev/full"),
        SaveQenXml(m_mapEdit, "/dev/full"), SaveZorXml(m_drawingEdit, "/dev/full")}) {
    EXPECT_EQ(KindOf(result), FailureKind::kCannotWrite);
    EXPECT_EQ(Reason(result), reason);
  }
  const TempFile missing;
  EXPECT_EQ(Reason(SaveQen(m_map, missing.Path() + "/file")),
            missing.Path() + "/file: cannot be written: No such file or directory");
  const TempFile folder;
  std::filesystem::create_directory(folder.Path());
  EXPECT_EQ(Reason(SaveZor(m_drawing, folder.Path())), folder.Path() + ": is a folder");
}

/// A line that fails to write itself, of which its set takes no notice.
class CSilentLine : public CLineObj {
 protected:
  bool WriteData(CFile* /*file*/, bool /*recalc*/) override { return false; }
};

TEST_F(Save, AnElementThatFailsIsNotPassedOver) {
  const TempFile file{std::string_view("old")};
  CQenEdit edit;
  PutPoint(edit, {1, 2});
  const std::unique_ptr<CQen> map(edit.EditDataToQenData());
  CObjSet& objects = *map->MapData->MeshSegmentSet->GetElem(0)
                          ->LayerSet->GetElem(0)
                          ->ZIdObjSet->GetElem(0)
                          ->ObjSet;
  objects.SetElem(0, new CSilentLine);
  CMemFile memory;
  EXPECT_TRUE(map->Write(&memory));
  EXPECT_EQ(KindOf(SaveQen(*map, file.Path())), FailureKind::kCannotWrite);
  EXPECT_EQ(file.Text(), "old");
}

}  // namespace

}  // namespace qenzor::testing
