#include "documents.h"

#include <cerrno>
#include <system_error>

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
  const char* const asked = kind == BinaryKind::kQen ? "qen" : "zor";
  const Input again = input.IsRegular ? ReadInput(input.Path, asked, Need::kAll) : Input{};
  qenzor::CheckBinary(input.IsRegular ? again.Bytes : input.Bytes, kind, options, first);
  return first.GetText().empty() ? "out of memory" : first.GetText();
}

CXmlPath::CXmlPath(const Input& input) : m_path(input.Path) {
  if (input.IsRegular) return;
  m_copy.reset(std::tmpfile());
  if (m_copy == nullptr ||
      std::fwrite(input.Bytes.data(), 1, input.Bytes.size(), m_copy.get()) != input.Bytes.size() ||
      std::fflush(m_copy.get()) != 0)
    throw CFailure(input.Name, "cannot be copied: " + std::generic_category().message(errno));
  m_path = "/dev/fd/" + std::to_string(::fileno(m_copy.get()));
}

std::string DescribeXmlError(const std::string& path) {
  const auto error = qenzor::FindXmlError(path);
  if (!error.has_value()) return "line 1: the root element is not that of the document's kind";
  if (error->Line == 0) return error->Reason;
  return "line " + std::to_string(error->Line) + ", column " + std::to_string(error->Column) +
         ": " + error->Reason;
}

}  // namespace tool
