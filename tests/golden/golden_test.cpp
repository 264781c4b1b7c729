// Every conversion beside what a model of the formats, written independently, makes of the same
// input; see tests/data/golden/README.md.

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "qenzor/qen/qen.h"
#include "qenzor/zor/zor.h"

namespace {

namespace fs = std::filesystem;
using qenzor::CMemFile;
using qenzor::CStdioFile;

struct Qen {
  using Document = qenzor::CQen;
  static constexpr const char* kExtension = ".qen";
  static std::unique_ptr<Document> ThroughEdit(Document& document) {
    qenzor::CQenEdit edit;
    edit.QenDataToEditData(&document);
    return std::unique_ptr<Document>(edit.EditDataToQenData());
  }
  static void ToText(CStdioFile& file, Document& document) {
    qenzor::CQenTextConverter().ConvertChunkToText(file, document, 0);
  }
  static std::unique_ptr<Document> FromText(const fs::path& path) {
    const std::unique_ptr<qenzor::CQenEdit> edit(
        qenzor::CQenTextConverter().ConvertTextToQenEdit(path.string()));
    return edit == nullptr ? nullptr : std::unique_ptr<Document>(edit->EditDataToQenData());
  }
};

struct Zor {
  using Document = qenzor::CZor;
  static constexpr const char* kExtension = ".zor";
  static std::unique_ptr<Document> ThroughEdit(Document& document) {
    qenzor::CZorEdit edit;
    edit.ZorDataToEditData(&document);
    return std::unique_ptr<Document>(edit.EditDataToZorData());
  }
  static void ToText(CStdioFile& file, Document& document) {
    qenzor::CZorTextConverter().ConvertChunkToText(file, document, 0);
  }
  static std::unique_ptr<Document> FromText(const fs::path& path) {
    const std::unique_ptr<qenzor::CZorEdit> edit(
        qenzor::CZorTextConverter().ConvertTextToZorEdit(path.string()));
    return edit == nullptr ? nullptr : std::unique_ptr<Document>(edit->EditDataToZorData());
  }
};

std::string Load(const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

std::string ToString(const CMemFile& file) {
  return {file.GetBytes().begin(), file.GetBytes().end()};
}

template <class Document>
std::string Written(Document& document) {
  CMemFile file;
  EXPECT_TRUE(document.Write(&file));
  return ToString(file);
}

template <class Kind>
void CheckDocument(const fs::path& folder) {
  const std::string extension = Kind::kExtension;
  const std::string bytes = Load(folder / ("in" + extension));
  typename Kind::Document document;
  const bool reads = document.Read(bytes.data(), static_cast<std::uint32_t>(bytes.size()));
  ASSERT_EQ(reads, !fs::exists(folder / "refused"));
  if (!reads) return;
  EXPECT_EQ(Written(document), Load(folder / ("chunk" + extension)));
  EXPECT_EQ(Written(*Kind::ThroughEdit(document)), Load(folder / ("edit" + extension)));
  const std::unique_ptr<typename Kind::Document> clone(document.Clone());
  EXPECT_EQ(Written(*clone), Load(folder / ("clone" + extension)));
  CMemFile sink;
  CStdioFile text(sink);
  Kind::ToText(text, document);
  text.Close();
  EXPECT_EQ(ToString(sink), Load(folder / "text.xml"));
}

/// The bytes of the document that the text stands for; nothing when the text is refused.
template <class Kind>
std::optional<std::string> Convert(const fs::path& folder) {
  const auto document = Kind::FromText(folder / "in.xml");
  if (document == nullptr) return std::nullopt;
  CMemFile file;
  if (!document->Write(&file)) return std::nullopt;
  return ToString(file);
}

void CheckText(const fs::path& folder) {
  const auto qen = Convert<Qen>(folder);
  const auto zor = Convert<Zor>(folder);
  if (fs::exists(folder / "refused")) {
    EXPECT_FALSE(qen.has_value() || zor.has_value());
  } else if (fs::exists(folder / "from-xml.qen")) {
    EXPECT_EQ(qen, Load(folder / "from-xml.qen"));
  } else {
    EXPECT_EQ(zor, Load(folder / "from-xml.zor"));
  }
}

std::vector<std::string> Cases() {
  std::vector<std::string> cases;
  for (const auto& entry : fs::directory_iterator(fs::path(QENZOR_TEST_DATA) / "golden"))
    if (entry.is_directory()) cases.push_back(entry.path().filename().string());
  std::ranges::sort(cases);
  return cases;
}

class Golden : public testing::TestWithParam<std::string> {};

TEST_P(Golden, ConvertsAsTheModelDoes) {
  const fs::path folder = fs::path(QENZOR_TEST_DATA) / "golden" / GetParam();
  if (fs::exists(folder / "in.qen"))
    CheckDocument<Qen>(folder);
  else if (fs::exists(folder / "in.zor"))
    CheckDocument<Zor>(folder);
  else
    CheckText(folder);
}

INSTANTIATE_TEST_SUITE_P(Conversions, Golden, testing::ValuesIn(Cases()),
                         [](const auto& test_info) {
                           std::string name = test_info.param;
                           for (char& c : name)
                             if (std::isalnum(static_cast<unsigned char>(c)) == 0) c = '_';
                           return name;
                         });

}  // namespace
