// A file that goes wrong at its k-th call, for every k, under documents with every class. Leaks and
// wild accesses are the sanitizers' to see.

#include <gtest/gtest.h>

#include "tests/support/document_kinds.h"
#include "tests/support/faulty_file.h"

namespace qenzor::testing {
namespace {

template <class Kind>
class DocumentFileFault : public ::testing::Test {};
TYPED_TEST_SUITE(DocumentFileFault, DocumentKinds, KindNames);

TYPED_TEST(DocumentFileFault, AShortReadAtAnyCallFailsTheRead) {
  const Bytes bytes = TypeParam::DocumentBytes();
  FaultyFile whole(bytes, FaultyFile::kNever);
  ASSERT_TRUE(typename TypeParam::Doc().Read(&whole));
  ASSERT_GT(whole.GetCalls(), 50U);
  for (std::uint32_t call = 0; call < whole.GetCalls(); ++call) {
    FaultyFile file(bytes, call);
    typename TypeParam::Doc doc;
    EXPECT_FALSE(doc.Read(&file)) << call;
  }
}

TYPED_TEST(DocumentFileFault, AnExceptionAtAnyReadReachesTheCallerAndLeavesTheDocumentWhole) {
  const Bytes bytes = TypeParam::DocumentBytes();
  FaultyFile whole(bytes, FaultyFile::kNever);
  ASSERT_TRUE(typename TypeParam::Doc().Read(&whole));
  for (std::uint32_t call = 0; call < whole.GetCalls(); ++call) {
    ThrowingFile file(bytes, call);
    typename TypeParam::Doc doc;
    EXPECT_THROW(static_cast<void>(doc.Read(&file)), ThrowingFile::Thrown) << call;
    ASSERT_TRUE(doc.Read(bytes.data(), bytes.size())) << call;
    CMemFile out;
    ASSERT_TRUE(doc.Write(&out));
    EXPECT_EQ(Bytes(out.GetBytes()), bytes) << call;
  }
}

TYPED_TEST(DocumentFileFault, AWriteThatFailsIsNeverThrownAndWritesNoMore) {
  const Bytes bytes = TypeParam::DocumentBytes();
  typename TypeParam::Doc doc;
  ASSERT_TRUE(doc.Read(bytes.data(), bytes.size()));
  FaultyFile whole(FaultyFile::kNever);
  ASSERT_TRUE(doc.Write(&whole));
  // A set does not look at the results of its elements: what the last set's elements fail to write
  // is all that the result does not tell of.
  typename TypeParam::Doc bare;
  const Bytes bare_bytes = TypeParam::BareBytes();
  ASSERT_TRUE(bare.Read(bare_bytes.data(), bare_bytes.size()));
  FaultyFile told(FaultyFile::kNever);
  ASSERT_TRUE(bare.Write(&told));
  ASSERT_GT(whole.GetCalls(), told.GetCalls());
  for (std::uint32_t call = 0; call < whole.GetCalls(); ++call) {
    FaultyFile file(call);
    EXPECT_EQ(doc.Write(&file), call >= told.GetCalls()) << call;
    EXPECT_LT(file.GetBytes().size(), bytes.size()) << call;
    EXPECT_EQ(Bytes(file.GetBytes()), bytes.Front(static_cast<std::size_t>(file.GetBytes().size())))
        << call;
  }
}

TYPED_TEST(DocumentFileFault, XmlThatCannotBeWrittenThrowsAndLeavesTheDocumentWhole) {
  const Bytes bytes = TypeParam::DocumentBytes();
  typename TypeParam::Doc doc;
  ASSERT_TRUE(doc.Read(bytes.data(), bytes.size()));
  FaultyFile whole(FaultyFile::kNever);
  CStdioFile counter(whole);
  typename TypeParam::Converter().ConvertChunkToText(counter, doc, 0);
  counter.Close();
  ASSERT_GT(whole.GetCalls(), 0U);
  for (std::uint32_t call = 0; call < whole.GetCalls(); ++call) {
    FaultyFile sink(call);
    CStdioFile file(sink);
    EXPECT_THROW(
        {
          typename TypeParam::Converter().ConvertChunkToText(file, doc, 0);
          file.Close();
        },
        CFileException);
  }
  CMemFile out;
  ASSERT_TRUE(doc.Write(&out));
  EXPECT_EQ(Bytes(out.GetBytes()), bytes);
}

}  // namespace
}  // namespace qenzor::testing
