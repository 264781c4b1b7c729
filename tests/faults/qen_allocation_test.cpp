// A map project with every class of map data, while memory runs out at every allocation in turn.

#include <gtest/gtest.h>

#include "qenzor/core/chunk_factory.h"
#include "qenzor/edit/chunk_edit_factory.h"
#include "qenzor/qen/line_obj.h"
#include "qenzor/qen/qen.h"
#include "tests/support/allocation_faults.h"
#include "tests/support/chunk_io.h"
#include "tests/support/qen_bytes.h"
#include "tests/support/temp_file.h"

namespace qenzor::testing {
namespace {

Bytes WrittenDoc(CQen& doc) {
  CMemFile file;
  return doc.Write(&file) ? Bytes(file.GetBytes()) : Bytes("not written");
}

class QenAllocation : public ::testing::Test {
 protected:
  QenAllocation() { m_doc.Read(m_bytes.data(), m_bytes.size()); }

  /// That a document holds all that the bytes do.
  static void ExpectWhole(CQen& doc) { EXPECT_EQ(WrittenDoc(doc), QenDocumentBytes()); }

  const Bytes m_bytes = QenDocumentBytes();
  const Bytes m_map =
      Bytes(std::vector<std::uint8_t>(m_bytes.vector().begin() + 42, m_bytes.vector().end()));
  CQen m_doc;
};

TEST_F(QenAllocation, ReadingFromMemoryGivesFalse) {
  ExpectSurvivesFaults(
      OnFault::kGivesNothing,
      [this] {
        CQen doc;
        return doc.Read(m_bytes.data(), m_bytes.size());
      },
      [](bool) {});
}

TEST_F(QenAllocation, ReadingFromAFileGivesFalse) {
  CMemFile file(m_bytes.vector());
  ExpectSurvivesFaults(
      OnFault::kGivesNothing,
      [&] {
        file.Seek(0, CFile::begin);
        CQen doc;
        return doc.Read(&file);
      },
      [](bool) {});
}

TEST_F(QenAllocation, ReadingAPathGivesFalse) {
  const TempFile file(m_bytes);
  ExpectSurvivesFaults(
      OnFault::kGivesNothing,
      [&] {
        CQen doc;
        return doc.Read(file.Path());
      },
      [](bool) {});
}

TEST_F(QenAllocation, ADocumentThatFailedToReadCanReadAgain) {
  CQen doc;
  ExpectSurvivesFaults(
      OnFault::kGivesNothing,
      [&] {
        const bool read = doc.Read(m_bytes.data(), m_bytes.size());
        if (!read) doc.MapData.reset();
        return read;
      },
      [&](bool) {
        ExpectWhole(doc);
        doc.MapData.reset();
      });
}

TEST_F(QenAllocation, WritingAPathGivesFalse) {
  const TempFile file;
  ExpectSurvivesFaults(
      OnFault::kGivesNothing, [&] { return m_doc.Write(file.Path()); },
      [&](bool) { EXPECT_EQ(file.Content(), m_bytes); });
}

TEST_F(QenAllocation, CloneGivesNull) {
  ExpectSurvivesFaults(
      OnFault::kGivesNothing, [this] { return std::unique_ptr<CQen>(m_doc.Clone()); },
      [](const auto& clone) { ExpectWhole(*clone); });
}

TEST_F(QenAllocation, CloneOfAChunkGivesNull) {
  ExpectSurvivesFaults(
      OnFault::kGivesNothing,
      [this] { return std::unique_ptr<CAbstractChunk>(m_doc.MapData->Clone()); },
      [this](const auto& clone) { EXPECT_EQ(Written(*clone), m_map); });
}

TEST_F(QenAllocation, DeepCopyThrows) {
  ExpectSurvivesFaults(
      OnFault::kThrows,
      [this] {
        CQen copy;
        copy.DeepCopy(&m_doc);
        return true;
      },
      [](bool) {});
}

TEST_F(QenAllocation, TheChunkFactoryGivesNull) {
  ExpectSurvivesFaults(
      OnFault::kGivesNothing,
      [this] {
        return std::unique_ptr<CAbstractChunk>(CChunkFactory::Create(m_map.data(), m_map.size()));
      },
      [this](const auto& chunk) { EXPECT_EQ(Written(*chunk), m_map); });
  CMemFile file(m_map.vector());
  ExpectSurvivesFaults(
      OnFault::kGivesNothing,
      [&] {
        file.Seek(0, CFile::begin);
        return std::unique_ptr<CAbstractChunk>(CChunkFactory::Create(&file));
      },
      [this](const auto& chunk) { EXPECT_EQ(Written(*chunk), m_map); });
}

TEST_F(QenAllocation, TheEditFactoryGivesNull) {
  ExpectSurvivesFaults(
      OnFault::kGivesNothing,
      [this] {
        return std::unique_ptr<CAbstractChunkEdit>(
            CChunkEditFactory::CreateInstance(m_doc.MapData.get()));
      },
      [this](const auto& edit) { EXPECT_EQ(Written(*ToChunk<CAbstractChunk>(*edit)), m_map); });
  CLineObjTextConverter converter;
  ExpectSurvivesFaults(
      OnFault::kGivesNothing,
      [&] {
        return std::unique_ptr<CAbstractChunkEdit>(
            CChunkEditFactory::CreateInitInstance(&converter));
      },
      [](const auto& edit) { EXPECT_NE(dynamic_cast<CLineObjEdit*>(edit.get()), nullptr); });
}

TEST_F(QenAllocation, MakingADocumentEditThrows) {
  ExpectSurvivesFaults(
      OnFault::kThrows,
      [this] {
        auto edit = std::make_unique<CQenEdit>();
        edit->QenDataToEditData(&m_doc);
        return edit;
      },
      [](const auto& edit) {
        const std::unique_ptr<CQen> doc(edit->EditDataToQenData());
        ExpectWhole(*doc);
      });
}

TEST_F(QenAllocation, MakingADocumentOfAnEditGivesNull) {
  CQenEdit edit;
  edit.QenDataToEditData(&m_doc);
  ExpectSurvivesFaults(
      OnFault::kGivesNothing, [&] { return std::unique_ptr<CQen>(edit.EditDataToQenData()); },
      [](const auto& doc) { ExpectWhole(*doc); });
}

TEST_F(QenAllocation, CopyingAndConvertingEditObjectsThrows) {
  CQenEdit edit;
  edit.QenDataToEditData(&m_doc);
  ExpectSurvivesFaults(
      OnFault::kThrows, [&] { return std::unique_ptr<CAbstractChunkEdit>(edit.MapData->Clone()); },
      [this](const auto& clone) { EXPECT_EQ(Written(*ToChunk<CAbstractChunk>(*clone)), m_map); });
  ExpectSurvivesFaults(
      OnFault::kThrows, [&] { return ToChunk<CAbstractChunk>(*edit.MapData); },
      [this](const auto& chunk) { EXPECT_EQ(Written(*chunk), m_map); });
}

TEST_F(QenAllocation, GivingASetAnElementThrowsAndDestroysTheElement) {
  ExpectSurvivesFaults(
      OnFault::kThrows,
      [] {
        CObjSet set;
        for (int i = 0; i < 40; ++i) set.SubChunkSet(0, new CLineObj);
        return true;
      },
      [](bool) {});
  ExpectSurvivesFaults(
      OnFault::kThrows,
      [] {
        CObjSetEdit set;
        for (int i = 0; i < 20; ++i) set.SetSubChunkEdit(new CLineObjEdit);
        for (std::uint32_t i = 0; i < 20; ++i) set.AddElem(i, new CLineObjEdit);
        return true;
      },
      [](bool) {});
}

TEST_F(QenAllocation, ReadingXmlGivesNull) {
  const TempFile file;
  ASSERT_TRUE(CQenTextConverter().ConvertChunkToText(file.Path(), m_doc, 0));
  ExpectSurvivesFaults(
      OnFault::kGivesNothing,
      [&] {
        CString path;
        {
          const NoFaults none;
          path = file.Path();
        }
        return std::unique_ptr<CQenEdit>(CQenTextConverter().ConvertTextToQenEdit(std::move(path)));
      },
      [](const auto& edit) { ASSERT_NE(edit->MapData, nullptr); }, Leaks::kOfParser);
}

TEST_F(QenAllocation, WritingXmlThrows) {
  const TempFile file;
  ExpectSurvivesFaults(
      OnFault::kThrows,
      [&] { return CQenTextConverter().ConvertChunkToText(file.Path(), m_doc, 0); }, [](bool) {});
}

}  // namespace
}  // namespace qenzor::testing
