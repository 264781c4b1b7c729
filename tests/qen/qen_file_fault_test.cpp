// A file that goes wrong at its k-th call, for every k, under a document with every class of map
// data. Leaks and wild accesses are the sanitizers' to see.

#include <gtest/gtest.h>

#include "qenzor/qen/qen.h"
#include "tests/support/faulty_file.h"
#include "tests/support/qen_bytes.h"

namespace qenzor::testing {
namespace {

TEST(QenFileFault, AShortReadAtAnyCallFailsTheRead) {
  const Bytes bytes = QenDocumentBytes();
  FaultyFile whole(bytes, FaultyFile::kNever);
  ASSERT_TRUE(CQen().Read(&whole));
  ASSERT_GT(whole.GetCalls(), 50U);
  for (std::uint32_t call = 0; call < whole.GetCalls(); ++call) {
    FaultyFile file(bytes, call);
    CQen doc;
    EXPECT_FALSE(doc.Read(&file)) << call;
  }
}

TEST(QenFileFault, AnExceptionAtAnyReadReachesTheCallerAndLeavesTheDocumentWhole) {
  const Bytes bytes = QenDocumentBytes();
  FaultyFile whole(bytes, FaultyFile::kNever);
  ASSERT_TRUE(CQen().Read(&whole));
  for (std::uint32_t call = 0; call < whole.GetCalls(); ++call) {
    ThrowingFile file(bytes, call);
    CQen doc;
    EXPECT_THROW(doc.Read(&file), ThrowingFile::Thrown) << call;
    ASSERT_TRUE(doc.Read(bytes.data(), bytes.size())) << call;
    CMemFile out;
    ASSERT_TRUE(doc.Write(&out));
    EXPECT_EQ(Bytes(out.GetBytes()), bytes) << call;
  }
}

TEST(QenFileFault, AWriteThatFailsIsNeverThrownAndWritesNoMore) {
  const Bytes bytes = QenDocumentBytes();
  CQen doc;
  ASSERT_TRUE(doc.Read(bytes.data(), bytes.size()));
  FaultyFile whole(FaultyFile::kNever);
  ASSERT_TRUE(doc.Write(&whole));
  // The info, the root's header, the set's header and the set's count are what the result tells
  // of; a set does not look at the results of its elements.
  constexpr std::uint32_t kTold = 4;
  ASSERT_GT(whole.GetCalls(), kTold);
  for (std::uint32_t call = 0; call < whole.GetCalls(); ++call) {
    FaultyFile file(call);
    EXPECT_EQ(doc.Write(&file), call >= kTold) << call;
    EXPECT_LT(file.GetBytes().size(), bytes.size()) << call;
    EXPECT_EQ(Bytes(file.GetBytes()), bytes.Front(static_cast<std::size_t>(file.GetBytes().size())))
        << call;
  }
}

TEST(QenFileFault, XmlThatCannotBeWrittenThrowsAndLeavesTheDocumentWhole) {
  const Bytes bytes = QenDocumentBytes();
  CQen doc;
  ASSERT_TRUE(doc.Read(bytes.data(), bytes.size()));
  FaultyFile whole(FaultyFile::kNever);
  CStdioFile counter(whole);
  CQenTextConverter().ConvertChunkToText(counter, doc, 0);
  counter.Close();
  ASSERT_GT(whole.GetCalls(), 0U);
  for (std::uint32_t call = 0; call < whole.GetCalls(); ++call) {
    FaultyFile sink(call);
    CStdioFile file(sink);
    EXPECT_THROW(
        {
          CQenTextConverter().ConvertChunkToText(file, doc, 0);
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
