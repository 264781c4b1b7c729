// What docs/file-format.md shows must be what the library does.

#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "qenzor/catalogue.h"
#include "qenzor/core/chunk_factory.h"
#include "qenzor/core/unknown_chunk.h"
#include "tests/docs/page.h"

namespace {

const std::string kPage = "docs/file-format.md";

/// The bytes of a dump: each line an offset, bytes in hexadecimal, two spaces, a remark.
std::vector<std::uint8_t> BytesOf(const std::string& dump) {
  std::vector<std::uint8_t> bytes;
  std::istringstream lines(dump);
  for (std::string line; std::getline(lines, line);) {
    if (line.empty()) continue;
    EXPECT_EQ(bytes.size(), std::stoul(line)) << line;
    for (std::size_t at = 5; at + 1 < line.size() && line[at] != ' '; at += 3)
      bytes.push_back(static_cast<std::uint8_t>(std::stoul(line.substr(at, 2), nullptr, 16)));
  }
  return bytes;
}

std::string WithCrLf(const std::string& text) {
  std::string result;
  for (const char c : text) result += c == '\n' ? "\r\n" : std::string(1, c);
  return result;
}

/// The dump under the heading reads, and is written the same; the XML below it is its XML form.
template <class Document, class Converter>
void CheckExample(const std::string& heading, const std::string& language) {
  const std::string page = LoadPage(kPage);
  const std::string section = page.substr(page.find("\n## " + heading + "\n"));
  const auto bytes = BytesOf(Between(section, "```" + language + "\n", "```"));
  ASSERT_FALSE(bytes.empty());

  Document document;
  ASSERT_TRUE(document.Read(bytes.data(), static_cast<std::uint32_t>(bytes.size())));
  qenzor::CMemFile written;
  ASSERT_TRUE(document.Write(&written));
  EXPECT_EQ(written.GetBytes(), bytes);

  qenzor::CMemFile text;
  qenzor::CStdioFile xml(text);
  Converter().ConvertChunkToText(xml, document, 0);
  xml.Flush();
  EXPECT_EQ(std::string(text.GetBytes().begin(), text.GetBytes().end()),
            WithCrLf(Between(section, "```xml\n", "```")));
}

TEST(FileFormatPage, MapProjectExampleIsWhatTheLibraryReadsAndWrites) {
  CheckExample<qenzor::CQen, qenzor::CQenTextConverter>("A whole map project", "qen");
}

TEST(FileFormatPage, DrawDataExampleIsWhatTheLibraryReadsAndWrites) {
  CheckExample<qenzor::CZor, qenzor::CZorTextConverter>("A whole draw-data document", "zor");
}

TEST(FileFormatPage, NamesTheClassOfEveryChunkId) {
  const auto rows = TableAfter(LoadPage(kPage), "\n## Chunk ids\n");
  std::size_t row = 0;
  for (std::uint32_t id = 0; id <= qenzor::kChunkIds; ++id) {
    const std::unique_ptr<qenzor::CAbstractChunk> chunk(
        qenzor::CChunkFactory::CreateInstance({id, 0}));
    if (qenzor::class_cast<qenzor::CUnKnownChunk>(chunk.get()) != nullptr) continue;
    ASSERT_LT(row, rows.size());
    EXPECT_EQ(rows[row][0], std::to_string(id));
    EXPECT_EQ(rows[row][1], '`' + std::string(chunk->GetRuntimeClass().Name) + '`');
    ++row;
  }
  EXPECT_EQ(row, rows.size());
}

TEST(FileFormatPage, BucketsOfTheTableAreThoseOfTheLibrary) {
  const auto rows = TableAfter(LoadPage(kPage), "\n## The order of a keyed set\n");
  ASSERT_FALSE(rows.empty());
  for (const auto& row : rows)
    EXPECT_EQ(row[1], std::to_string(qenzor::BucketOfKey(std::stoull(row[0]),
                                                         qenzor::CDrawAtterSet::kBuckets)))
        << row[0];
}

TEST(FileFormatPage, KeysComeOutInTheOrderThatThePageTells) {
  qenzor::CDrawAtterSet set;
  for (const std::uint64_t key : {1U, 2U, 20U, 8192U}) {
    auto element = std::make_unique<qenzor::CDrawAtter>();
    element->ZId = key;
    set.SubChunkSet(0, element.release());
  }
  std::string order;
  for (const auto* element : set.GetElems())
    order += (order.empty() ? "" : ", ") + std::to_string(element->ZId);
  EXPECT_NE(LoadPage(kPage).find("Read in the order 1, 2, 20, 8192, these are written as " + order),
            std::string::npos)
      << order;
}

}  // namespace
