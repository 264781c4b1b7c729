#include "documents.h"

#include <filesystem>
#include <fstream>

#include "output.h"
#include "qenzor/text/xml_file.h"

namespace tool {

namespace {

/// Keeps the first finding as one line.
class CFirstFinding : public qenzor::CFindingSink {
 public:
  bool Take(const qenzor::Finding& finding) override {
    const std::string path = qenzor::RenderPath(finding.Path);
    m_text = "byte " + std::to_string(finding.Offset) + ": " + (path.empty() ? "" : path + ": ") +
             finding.Reason;
    return false;
  }
  const std::string& GetText() const { return m_text; }

 private:
  std::string m_text;
};

}  // namespace

std::string DescribeError(const Input& input, BinaryKind kind) {
  qenzor::CheckOptions options;
  options.FirstErrorOnly = true;
  CFirstFinding first;
  qenzor::CheckBinary(input.Bytes, kind, options, first);
  return first.GetText().empty() ? "out of memory" : first.GetText();
}

CXmlPath::CXmlPath(const Input& input) : m_path(input.Path) {
  if (input.IsRegular) return;
  m_scratch = std::make_unique<CScratchFile>(std::filesystem::temp_directory_path().string());
  m_path = m_scratch->GetPath();
  std::ofstream file(m_path, std::ios::binary);
  file.write(reinterpret_cast<const char*>(input.Bytes.data()),
             static_cast<std::streamsize>(input.Bytes.size()));
  file.close();
  if (!file) throw CFailure(m_path, "cannot be written");
}

CXmlPath::~CXmlPath() = default;

std::string DescribeXmlError(const std::string& path) {
  const auto error = qenzor::FindXmlError(path);
  if (!error.has_value()) return "line 1: the root element is not that of the document's kind";
  if (error->Line == 0) return error->Reason;
  return "line " + std::to_string(error->Line) + ", column " + std::to_string(error->Column) +
         ": " + error->Reason;
}

}  // namespace tool
