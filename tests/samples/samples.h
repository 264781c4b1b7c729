#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <string>
#include <vector>

#include "examples/support/topology.h"
#include "qenzor/platform/file.h"
#include "qenzor/qen/qen.h"
#include "qenzor/zor/zor.h"

namespace qenzor::samples {

using Bytes = std::vector<std::uint8_t>;

inline std::string PathOf(const std::string& name) { return QENZOR_SAMPLES "/" + name; }

/// A file of the running test's own; removed with the object.
class TemporaryFile {
 public:
  TemporaryFile() {
    const auto* test = testing::UnitTest::GetInstance()->current_test_info();
    m_path = testing::TempDir() + "qenzor-" + test->test_suite_name() + "-" + test->name();
  }
  ~TemporaryFile() { std::filesystem::remove(m_path); }
  TemporaryFile(const TemporaryFile&) = delete;
  TemporaryFile& operator=(const TemporaryFile&) = delete;

  const std::string& Path() const { return m_path; }

 private:
  std::string m_path;
};

/// All of a file; fails the test when it cannot be read.
inline std::string TextOf(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  EXPECT_TRUE(file) << path;
  return {std::istreambuf_iterator<char>(file), {}};
}

inline Bytes BytesOf(const std::string& path) {
  const std::string text = TextOf(path);
  return {text.begin(), text.end()};
}

/// The bytes that the document writes.
template <class Document>
Bytes BytesOf(Document& document) {
  CMemFile file;
  EXPECT_TRUE(document.Write(&file));
  return file.GetBytes();
}

inline Bytes BytesOf(CQenEdit& edit) {
  const std::unique_ptr<CQen> map(edit.EditDataToQenData());
  return BytesOf(*map);
}

inline Bytes BytesOf(CZorEdit& edit) {
  const std::unique_ptr<CZor> style(edit.EditDataToZorData());
  return BytesOf(*style);
}

/// The XML that the converter makes of the document.
template <class Converter, class Document>
std::string XmlOf(Document& document) {
  CMemFile sink;
  {
    CStdioFile file(sink);
    Converter().ConvertChunkToText(file, document, 0);
    file.Flush();
  }
  return {sink.GetBytes().begin(), sink.GetBytes().end()};
}

inline world::Topology WorldTopology() {
  std::ifstream file(PathOf("world/countries-110m.json"), std::ios::binary);
  return world::ReadTopology(file);
}

}  // namespace qenzor::samples
