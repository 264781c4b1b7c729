// What gives reasons goes on giving them while memory runs out: nothing is thrown, and no reason is
// made up.

#include <gtest/gtest.h>

#include "qenzor/qen_document.h"
#include "qenzor/zor_document.h"
#include "tests/support/allocation_faults.h"
#include "tests/support/document_kinds.h"
#include "tests/support/temp_file.h"

namespace qenzor::testing {
namespace {

/// That the operation works, or says that memory did not suffice, or else the other thing,
/// whichever allocation fails.
template <class Operation>
void ExpectReasons(const Operation& operation, Leaks leaks = Leaks::kNone,
                   FailureKind other = FailureKind::kOutOfMemory) {
  std::string lies;
  ExpectSurvivesFaults(
      OnFault::kGivesNothing,
      [&] {
        const auto result = operation();
        if (result) return true;
        const Failure& failure = result.GetFailure();
        const NoFaults none;
        if (failure.Kind != FailureKind::kOutOfMemory && failure.Kind != other)
          lies += failure.Describe() + '\n';
        return false;
      },
      [](bool) {}, leaks);
  EXPECT_EQ(lies, "");
}

template <class Kind>
class ResultAllocation : public ::testing::Test {
 protected:
  ResultAllocation() { EXPECT_TRUE(m_doc.Read(m_bytes.data(), m_bytes.size())); }

  const Bytes m_bytes = Kind::DocumentBytes();
  typename Kind::Doc m_doc;
};

struct QenCalls : QenKind {
  static constexpr auto kRead = [](const auto& from) { return ReadQen(from); };
  static constexpr auto kReadXml = [](const auto& from) { return ReadQenXml(from); };
  static constexpr auto kSave = [](auto& doc, const CString& path) { return SaveQen(doc, path); };
  static constexpr auto kSaveXml = [](auto& doc, const CString& path) {
    return SaveQenXml(doc, path);
  };
};
struct ZorCalls : ZorKind {
  static constexpr auto kRead = [](const auto& from) { return ReadZor(from); };
  static constexpr auto kReadXml = [](const auto& from) { return ReadZorXml(from); };
  static constexpr auto kSave = [](auto& doc, const CString& path) { return SaveZor(doc, path); };
  static constexpr auto kSaveXml = [](auto& doc, const CString& path) {
    return SaveZorXml(doc, path);
  };
};
using Calls = ::testing::Types<QenCalls, ZorCalls>;
TYPED_TEST_SUITE(ResultAllocation, Calls, KindNames);

TYPED_TEST(ResultAllocation, ReadingSaysSo) {
  const TempFile file(this->m_bytes);
  ExpectReasons([&] { return TypeParam::kRead(file.Path()); });
  const std::span<const std::uint8_t> bytes(this->m_bytes.data(), this->m_bytes.size());
  ExpectReasons([&] { return TypeParam::kRead(bytes); });
}

TYPED_TEST(ResultAllocation, ReadingXmlSaysSo) {
  const TempFile file;
  ASSERT_TRUE(TypeParam::kSaveXml(this->m_doc, file.Path()));
  ExpectReasons([&] { return TypeParam::kReadXml(file.Path()); }, Leaks::kOfParser);
}

TYPED_TEST(ResultAllocation, SavingSaysSoAndLeavesTheOldFile) {
  const TempFile file(std::string_view("old"));
  const auto expect_safe = [&](const auto& save, auto& document) {
    const auto replace = [&] {
      {
        const NoFaults none;
        std::ofstream(file.Path()) << "old";
      }
      auto saved = save(document, file.Path());
      const NoFaults none;
      EXPECT_EQ(file.Text() == "old", !saved);
      return saved;
    };
    // A chunk does not tell why it could not write.
    ExpectReasons(replace, Leaks::kNone, FailureKind::kCannotWrite);
  };
  typename TypeParam::Edit edit;
  TypeParam::ToEdit(this->m_doc, edit);
  expect_safe(TypeParam::kSave, this->m_doc);
  expect_safe(TypeParam::kSave, edit);
  expect_safe(TypeParam::kSaveXml, this->m_doc);
  expect_safe(TypeParam::kSaveXml, edit);
}

}  // namespace
}  // namespace qenzor::testing
