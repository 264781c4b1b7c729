#include <gtest/gtest.h>

#include "qenzor/check/finding.h"
#include "qenzor/check/findings_schema.h"
#include "tests/docs/page.h"

namespace {

TEST(FindingsPage, ListsWhatTheTableOfFindingsHas) {
  const auto rows = TableAfter(LoadPage("docs/findings.md"), "## All findings");
  const auto kinds = qenzor::FindingKinds();
  ASSERT_EQ(rows.size(), kinds.size());
  for (std::size_t i = 0; i < rows.size(); ++i) {
    const std::vector<std::string> expected{
        qenzor::CodeText(kinds[i]), '`' + std::string(kinds[i].Name) + '`',
        std::string(qenzor::SeverityName(kinds[i].Severity)), std::string(kinds[i].Meaning),
        std::string(kinds[i].Proposal)};
    EXPECT_EQ(rows[i], expected);
  }
}

TEST(FindingsPage, TheSchemaIsThatOfTheTable) {
  EXPECT_EQ(LoadPage("docs/schema/findings.json"), qenzor::FindingsSchema());
}

}  // namespace
