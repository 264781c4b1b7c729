// Both documents, with every class of theirs, while memory runs out at every allocation in turn.

#include <gtest/gtest.h>

#include "qenzor/core/chunk_factory.h"
#include "qenzor/edit/chunk_edit_factory.h"
#include "qenzor/qen/line_obj.h"
#include "tests/support/allocation_faults.h"
#include "tests/support/chunk_io.h"
#include "tests/support/document_kinds.h"
#include "tests/support/temp_file.h"

namespace qenzor::testing {
namespace {

template <class Kind>
class DocumentAllocation : public ::testing::Test {
 protected:
  using Doc = typename Kind::Doc;
  using Edit = typename Kind::Edit;

  DocumentAllocation() { static_cast<void>(m_doc.Read(m_bytes.data(), m_bytes.size())); }

  /// That a document holds all that the bytes do.
  static void ExpectWhole(Doc& doc) {
    CMemFile file;
    EXPECT_TRUE(doc.Write(&file));
    EXPECT_EQ(Bytes(file.GetBytes()), Kind::DocumentBytes());
  }

  const Bytes m_bytes = Kind::DocumentBytes();
  const Bytes m_root = Bytes(std::vector<std::uint8_t>(m_bytes.vector().begin() + Kind::kInfoSize,
                                                       m_bytes.vector().end()));
  Doc m_doc;
};
TYPED_TEST_SUITE(DocumentAllocation, DocumentKinds, KindNames);

TYPED_TEST(DocumentAllocation, ReadingFromMemoryGivesFalse) {
  ExpectSurvivesFaults(
      OnFault::kGivesNothing,
      [this] {
        typename TypeParam::Doc doc;
        return doc.Read(this->m_bytes.data(), this->m_bytes.size());
      },
      [](bool) {});
}

TYPED_TEST(DocumentAllocation, ReadingFromAFileGivesFalse) {
  CMemFile file(this->m_bytes.vector());
  ExpectSurvivesFaults(
      OnFault::kGivesNothing,
      [&] {
        file.Seek(0, CFile::begin);
        typename TypeParam::Doc doc;
        return doc.Read(&file);
      },
      [](bool) {});
}

TYPED_TEST(DocumentAllocation, ReadingAPathGivesFalse) {
  const TempFile file(this->m_bytes);
  ExpectSurvivesFaults(
      OnFault::kGivesNothing,
      [&] {
        typename TypeParam::Doc doc;
        return doc.Read(file.Path());
      },
      [](bool) {});
}

TYPED_TEST(DocumentAllocation, ADocumentThatFailedToReadCanReadAgain) {
  typename TypeParam::Doc doc;
  ExpectSurvivesFaults(
      OnFault::kGivesNothing,
      [&] {
        const bool read = doc.Read(this->m_bytes.data(), this->m_bytes.size());
        if (!read) TypeParam::Empty(doc);
        return read;
      },
      [&](bool) {
        TestFixture::ExpectWhole(doc);
        TypeParam::Empty(doc);
      });
}

TYPED_TEST(DocumentAllocation, WritingAPathGivesFalse) {
  const TempFile file;
  ExpectSurvivesFaults(
      OnFault::kGivesNothing, [&] { return this->m_doc.Write(file.Path()); },
      [&](bool) { EXPECT_EQ(file.Content(), this->m_bytes); });
}

TYPED_TEST(DocumentAllocation, CloneGivesNull) {
  ExpectSurvivesFaults(
      OnFault::kGivesNothing,
      [this] { return std::unique_ptr<typename TypeParam::Doc>(this->m_doc.Clone()); },
      [](const auto& clone) { TestFixture::ExpectWhole(*clone); });
}

TYPED_TEST(DocumentAllocation, CloneOfAChunkGivesNull) {
  ExpectSurvivesFaults(
      OnFault::kGivesNothing,
      [this] { return std::unique_ptr<CAbstractChunk>(TypeParam::Root(this->m_doc).Clone()); },
      [this](const auto& clone) { EXPECT_EQ(Written(*clone), this->m_root); });
}

TYPED_TEST(DocumentAllocation, DeepCopyThrows) {
  ExpectSurvivesFaults(
      OnFault::kThrows,
      [this] {
        typename TypeParam::Doc copy;
        copy.DeepCopy(&this->m_doc);
        return true;
      },
      [](bool) {});
}

TYPED_TEST(DocumentAllocation, DeepCopyOfAChunkThrowsAndItCanBeCopiedIntoAgain) {
  CAbstractChunk& root = TypeParam::Root(this->m_doc);
  const std::unique_ptr<CAbstractChunk> copy(root.Clone());
  // A class of which it is not, so that what a copy left there goes.
  CLineObj other;
  ExpectSurvivesFaults(
      OnFault::kThrows,
      [&] {
        copy->DeepCopy(&other);
        try {
          copy->DeepCopy(&root);
        } catch (const std::bad_alloc&) {
          copy->DeepCopy(&other);
          throw;
        }
        const bool whole = [&] {
          const NoFaults no_faults;
          return Written(*copy) == this->m_root;
        }();
        copy->DeepCopy(&other);
        return whole;
      },
      [](bool) {});
}

TYPED_TEST(DocumentAllocation, TheChunkFactoryGivesNull) {
  ExpectSurvivesFaults(
      OnFault::kGivesNothing,
      [this] {
        return std::unique_ptr<CAbstractChunk>(
            CChunkFactory::Create(this->m_root.data(), this->m_root.size()));
      },
      [this](const auto& chunk) { EXPECT_EQ(Written(*chunk), this->m_root); });
  CMemFile file(this->m_root.vector());
  ExpectSurvivesFaults(
      OnFault::kGivesNothing,
      [&] {
        file.Seek(0, CFile::begin);
        return std::unique_ptr<CAbstractChunk>(CChunkFactory::Create(&file));
      },
      [this](const auto& chunk) { EXPECT_EQ(Written(*chunk), this->m_root); });
}

TYPED_TEST(DocumentAllocation, TheEditFactoryGivesNull) {
  ExpectSurvivesFaults(
      OnFault::kGivesNothing,
      [this] {
        return std::unique_ptr<CAbstractChunkEdit>(
            CChunkEditFactory::CreateInstance(&TypeParam::Root(this->m_doc)));
      },
      [this](const auto& edit) {
        EXPECT_EQ(Written(*ToChunk<CAbstractChunk>(*edit)), this->m_root);
      });
}

TYPED_TEST(DocumentAllocation, MakingADocumentEditThrows) {
  ExpectSurvivesFaults(
      OnFault::kThrows,
      [this] {
        auto edit = std::make_unique<typename TypeParam::Edit>();
        TypeParam::ToEdit(this->m_doc, *edit);
        return edit;
      },
      [](const auto& edit) {
        const std::unique_ptr<typename TypeParam::Doc> doc(TypeParam::ToDoc(*edit));
        TestFixture::ExpectWhole(*doc);
      });
}

TYPED_TEST(DocumentAllocation, MakingADocumentOfAnEditGivesNull) {
  typename TypeParam::Edit edit;
  TypeParam::ToEdit(this->m_doc, edit);
  ExpectSurvivesFaults(
      OnFault::kGivesNothing,
      [&] { return std::unique_ptr<typename TypeParam::Doc>(TypeParam::ToDoc(edit)); },
      [](const auto& doc) { TestFixture::ExpectWhole(*doc); });
}

TYPED_TEST(DocumentAllocation, CopyingAndConvertingEditObjectsThrows) {
  typename TypeParam::Edit edit;
  TypeParam::ToEdit(this->m_doc, edit);
  ExpectSurvivesFaults(
      OnFault::kThrows,
      [&] { return std::unique_ptr<CAbstractChunkEdit>(TypeParam::Root(edit).Clone()); },
      [this](const auto& clone) {
        EXPECT_EQ(Written(*ToChunk<CAbstractChunk>(*clone)), this->m_root);
      });
  ExpectSurvivesFaults(
      OnFault::kThrows, [&] { return ToChunk<CAbstractChunk>(TypeParam::Root(edit)); },
      [this](const auto& chunk) { EXPECT_EQ(Written(*chunk), this->m_root); });
}

TYPED_TEST(DocumentAllocation, ReadingXmlGivesNull) {
  const TempFile file;
  ASSERT_TRUE(typename TypeParam::Converter().ConvertChunkToText(file.Path(), this->m_doc, 0));
  ExpectSurvivesFaults(
      OnFault::kGivesNothing,
      [&] {
        CString path;
        {
          const NoFaults none;
          path = file.Path();
        }
        return std::unique_ptr<typename TypeParam::Edit>(TypeParam::FromXml(std::move(path)));
      },
      [](const auto& edit) { ASSERT_NE(edit, nullptr); }, Leaks::kOfParser);
}

TYPED_TEST(DocumentAllocation, WritingXmlThrows) {
  const TempFile file;
  ExpectSurvivesFaults(
      OnFault::kThrows,
      [&] {
        return typename TypeParam::Converter().ConvertChunkToText(file.Path(), this->m_doc, 0);
      },
      [](bool) {});
}

}  // namespace
}  // namespace qenzor::testing
