#include "documents.h"

#include <cctype>
#include <cerrno>
#include <fstream>

namespace tool {

namespace {

/// Keeps the first finding as one line.
class CFirstFinding : public qenzor::CFindingSink {
 public:
  bool Take(const qenzor::Finding& finding) override {
    const std::string path = qenzor::RenderPath(finding.Path);
    m_text = (finding.Line == 0 ? "byte " + std::to_string(finding.Offset)
                                : "line " + std::to_string(finding.Line) + ", column " +
                                      std::to_string(finding.Column)) +
             ": " + (path.empty() ? "" : path + ": ") + finding.Reason;
    return false;
  }
  const std::string& GetText() const { return m_text; }

 private:
  std::string m_text;
};

}  // namespace

qenzor::XmlEncoding EncodingOf(const Options& options) {
  using qenzor::XmlEncoding;
  const char first = static_cast<char>(std::tolower(options.Encoding.front()));
  return first == 'u'   ? XmlEncoding::kUtf8
         : first == 'a' ? XmlEncoding::kAuto
                        : XmlEncoding::kShiftJis;
}

std::string DescribeError(const Input& input, BinaryKind kind) {
  qenzor::CheckOptions options;
  options.FirstErrorOnly = true;
  CFirstFinding first;
  const char* const asked = kind == BinaryKind::kQen ? "qen" : "zor";
  const Input again = input.IsRegular ? ReadInput(input.Path, asked, Need::kAll) : Input{};
  qenzor::CheckBinary(input.IsRegular ? again.Bytes : input.Bytes, kind, options, first);
  if (first.GetText().empty()) return "out of memory";
  const auto looks = FindOtherKind(input, kind);
  return first.GetText() + (looks.has_value() ? "; " + *looks : "");
}

std::optional<std::string> FindOtherKind(const Input& input, BinaryKind kind) {
  try {
    const DocumentKind looks = FindKind(input, "");
    if (looks.Kind == kind) return std::nullopt;
    constexpr std::size_t kLength = 6;
    const std::string ident(TextOf(input).substr(0, kLength));
    return std::string("this looks like ") + KindWord(looks.Kind) + " (" +
           (looks.IsXml ? KindName(looks.Kind) : ident) + ")";
  } catch (const CUnknownKind&) {
    return std::nullopt;
  }
}

std::string LoadText(const Input& input) {
  if (!input.IsRegular) return std::string(TextOf(input));
  errno = 0;
  std::ifstream file(input.Path, std::ios::binary);
  std::string text(file ? input.Size : 0, '\0');
  file.read(text.data(), static_cast<std::streamsize>(text.size()));
  if (!file) throw CFailure(input.Name, errno == 0 ? "was cut short" : SystemReason());
  return text;
}

std::string DescribeXmlError(const Input& input, BinaryKind kind, const qenzor::Failure& failure,
                             qenzor::XmlEncoding encoding) {
  if (failure.Line == 0) return failure.Reason;
  qenzor::CheckOptions options;
  options.FirstErrorOnly = true;
  options.Encoding = encoding;
  CFirstFinding first;
  qenzor::CheckXml(LoadText(input), kind, options, first);
  return first.GetText().empty() ? failure.Reason : first.GetText();
}

}  // namespace tool
