#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <regex>
#include <sstream>
#include <string>

#include "tests/docs/page.h"

namespace {

namespace fs = std::filesystem;
const fs::path kTop = fs::path(QENZOR_SAMPLES).parent_path();

TEST(Readme, NamesHeadersThatExist) {
  const std::string page = LoadPage("README.md");
  const std::regex header("qenzor/[a-z_/]+\\.h");
  std::size_t found = 0;
  for (std::sregex_iterator it(page.begin(), page.end(), header), end; it != end; ++it, ++found)
    EXPECT_TRUE(fs::exists(kTop / it->str()) || fs::exists(kTop / "draw" / it->str()) ||
                fs::exists(kTop / "html" / it->str()))
        << it->str();
  EXPECT_GT(found, 0U);
}

TEST(Architecture, ExcerptsStandInTheSourcesThatTheyName) {
  const std::string page = LoadPage("docs/architecture.md");
  const std::string fence = "```cpp\n// ";
  const std::string left_out = "…\n";
  std::size_t found = 0;
  for (std::size_t at = page.find(fence); at != std::string::npos; at = page.find(fence, at + 1)) {
    const std::string block = Between(page.substr(at), fence, "```");
    const std::size_t first_line = block.find('\n') + 1;
    const std::string path = block.substr(0, first_line - 1);
    const std::string source = LoadPage(path);
    std::size_t from = 0;  // of the source: the parts stand in the order shown
    for (std::size_t part = first_line; part < block.size(); ++found) {
      const std::size_t end = std::min(block.find(left_out, part), block.size());
      const std::string shown = block.substr(part, end - part);
      from = source.find(shown, from);
      ASSERT_NE(from, std::string::npos) << path << ":\n" << shown;
      from += shown.size();
      part = end + left_out.size();
    }
  }
  EXPECT_GT(found, 0U);
}

/// The anchor that a heading gets.
std::string AnchorOf(const std::string& heading) {
  std::string anchor;
  for (const char c : heading)
    if (c == ' ')
      anchor += '-';
    else if (std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '-' || c == '_')
      anchor += static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  return anchor;
}

bool HasAnchor(const std::string& page, const std::string& anchor) {
  const std::regex heading("(?:^|\n)#+ ([^\n]+)");
  for (std::sregex_iterator it(page.begin(), page.end(), heading), end; it != end; ++it)
    if (AnchorOf((*it)[1]) == anchor) return true;
  return false;
}

/// The page without its code blocks, which may hold what looks like a link.
std::string WithoutCode(const std::string& page) {
  std::string rest;
  bool in_code = false;
  std::istringstream lines(page);
  for (std::string line; std::getline(lines, line);) {
    if (line.starts_with("```"))
      in_code = !in_code;
    else if (!in_code)
      rest += line + '\n';
  }
  return rest;
}

class Page : public testing::TestWithParam<const char*> {};

TEST_P(Page, LinksLeadSomewhere) {
  const fs::path path = GetParam();
  const std::string page = WithoutCode(LoadPage(path.string()));
  ASSERT_FALSE(page.empty());
  const std::regex link("\\]\\(([^)#]*)#?([^)]*)\\)");
  for (std::sregex_iterator it(page.begin(), page.end(), link), end; it != end; ++it) {
    const std::string file = (*it)[1];
    const std::string anchor = (*it)[2];
    if (file.starts_with("http")) continue;
    const fs::path target = file.empty() ? path : path.parent_path() / file;
    EXPECT_TRUE(fs::exists(kTop / target)) << it->str();
    if (!anchor.empty()) {
      EXPECT_TRUE(HasAnchor(LoadPage(target.string()), anchor)) << it->str();
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Documentation, Page,
                         testing::Values("README.md", "CHANGELOG.md", "docs/architecture.md",
                                         "docs/changes.md", "docs/cookbook.md",
                                         "docs/file-format.md"),
                         [](const auto& page) {
                           std::string name = fs::path(page.param).stem().string();
                           std::erase(name, '-');
                           return name;
                         });

}  // namespace
