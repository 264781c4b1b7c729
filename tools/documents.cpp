#include "documents.h"

#include <fstream>
#include <iterator>

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
  const char* const asked = kind == BinaryKind::kQen ? "qen" : "zor";
  const Input again = input.IsRegular ? ReadInput(input.Path, asked, Need::kAll) : Input{};
  qenzor::CheckBinary(input.IsRegular ? again.Bytes : input.Bytes, kind, options, first);
  return first.GetText().empty() ? "out of memory" : first.GetText();
}

std::string LoadText(const Input& input) {
  if (!input.IsRegular) return std::string(TextOf(input));
  std::ifstream file(input.Path, std::ios::binary);
  std::string text{std::istreambuf_iterator<char>(file), {}};
  if (!file) throw CFailure(input.Name, "cannot be read");
  return text;
}

std::string DescribeXmlError(const qenzor::Failure& failure) {
  if (failure.Line == 0) return failure.Reason;
  const std::string line = "line " + std::to_string(failure.Line);
  if (failure.Kind == qenzor::FailureKind::kNotSuchDocument)
    return line + ": the root element is not that of the document's kind";
  return line + ", column " + std::to_string(failure.Column) + ": " + failure.Reason;
}

}  // namespace tool
