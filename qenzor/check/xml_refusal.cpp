#include <algorithm>
#include <optional>
#include <vector>

#include "qenzor/check/xml_text_impl.h"
#include "qenzor/check/xml_walk_impl.h"

namespace qenzor::check {

namespace {

using Kind = CXmlTokens::Kind;

struct OpenElement {
  std::string_view Tag;
  std::uint64_t Offset;
};

/// How far the elements of a text go, up to what does not fit together.
struct Outline {
  std::vector<OpenElement> Open;
  std::string_view EndTag;     ///< one that closes another element than the one that is open
  std::string_view Tag;        ///< of an element that has an attribute twice
  std::string_view Attribute;  ///< the attribute
  std::optional<std::uint64_t> Loose;  ///< a < that begins no tag, in the innermost element
  std::uint64_t Offset = 0;
  OpenElement Root;
  bool HasRoot = false;
  bool IsWhole = false;      ///< all of the text has been gone over
  std::string_view Unended;  ///< a comment or CDATA section that has no end
};

class COutliner {
 public:
  COutliner(std::string_view text, XmlEncoding encoding) : m_tokens(text, encoding) {}

  Outline Find() {
    while (Take(m_tokens.Next())) continue;
    return std::move(m_outline);
  }

 private:
  /// False where the elements end, or no longer fit together.
  bool Take(Kind kind) {
    m_outline.Offset = m_tokens.GetOffset();
    switch (kind) {
      case Kind::kStart:
      case Kind::kEmpty:
        return TakeTag(kind);
      case Kind::kEnd:
        return TakeEndTag();
      case Kind::kUnknown:
        m_outline.Loose = m_outline.Offset;
        return true;
      case Kind::kStop:
        m_outline.IsWhole = m_tokens.IsAtEnd();
        FindUnended();
        return false;
      default:
        return true;
    }
  }

  void FindUnended() {
    std::string_view rest = m_tokens.GetRest();
    while (!rest.empty() && IsXmlSpace(rest.front())) rest.remove_prefix(1);
    if (rest.starts_with("<!--") || rest.starts_with("<![CDATA[")) m_outline.Unended = rest;
  }

  bool TakeTag(Kind kind) {
    const OpenElement element{m_tokens.GetContent(), m_outline.Offset};
    if (!m_outline.HasRoot) m_outline.Root = element;
    m_outline.HasRoot = true;
    const auto& attributes = m_tokens.GetAttributes();
    for (auto at = attributes.begin(); at != attributes.end(); ++at)
      if (std::find_if(attributes.begin(), at, [&](const XmlAttribute& earlier) {
            return earlier.Name == at->Name;
          }) != at) {
        m_outline.Tag = element.Tag;
        m_outline.Attribute = at->Name;
        m_outline.Offset = m_tokens.OffsetOf(at->Name);
        return false;
      }
    if (kind == Kind::kEmpty) return true;
    m_outline.Open.push_back(element);
    m_outline.Loose.reset();
    return true;
  }

  bool TakeEndTag() {
    if (m_outline.Open.empty() || m_outline.Open.back().Tag != m_tokens.GetContent()) {
      m_outline.EndTag = m_tokens.GetContent();
      return false;
    }
    m_outline.Open.pop_back();
    m_outline.IsWhole = m_outline.Open.empty();
    return !m_outline.IsWhole;
  }

  CXmlTokens m_tokens;
  Outline m_outline;
};

/// The element that is open, and where a loose < may have swallowed its end.
CString DescribeOpen(const Outline& outline, const CReporter& reporter) {
  const OpenElement& element = outline.Open.back();
  CString text =
      CString(element.Tag) + ", which begins at " + reporter.DescribePlace(element.Offset);
  if (outline.Loose.has_value())
    text += " (the < at " + reporter.DescribePlace(*outline.Loose) +
            " begins no tag; in a text, write &lt;)";
  return text;
}

/// Where a line and a column stand in the text.
std::uint64_t OffsetAt(std::string_view text, std::uint32_t line, std::uint32_t column) {
  std::size_t at = 0;
  for (; line > 1 && at < text.size(); ++at) {
    const bool ends =
        text[at] == '\n' || (text[at] == '\r' && !text.substr(at + 1).starts_with('\n'));
    if (ends) --line;
  }
  return std::min<std::size_t>(at + column - std::min<std::uint32_t>(column, 1), text.size());
}

/// What the reader says, for whoever does not know the rules of XML.
CString Explain(const CString& reason) {
  if (reason.find("not well-formed") == CString::npos) return reason;
  return reason +
         " (an attribute is a name, = and a value in quotes; a tag ends in > or />; in a text < is "
         "written &lt;)";
}

}  // namespace

void ReportXmlRefusal(std::string_view text, const DocumentSchema& schema, const Failure& failure,
                      CReporter& reporter) {
  const Outline outline = COutliner(text, reporter.GetOptions().Encoding).Find();
  const auto report = [&](Code code, std::uint64_t offset, CString reason) {
    reporter.Report(code, offset, nullptr, [&] { return std::move(reason); });
  };
  if (failure.Kind == FailureKind::kNotSuchDocument && outline.HasRoot)
    return report(
        Code::kXmlWrongRoot, outline.Root.Offset,
        "the outermost element is " + CString(outline.Root.Tag) + ", not " + CString(schema.Tag));
  if (!outline.Attribute.empty())
    return report(
        Code::kXmlRefused, outline.Offset,
        CString(outline.Tag) + " has the attribute " + CString(outline.Attribute) + " twice");
  if (!outline.Unended.empty())
    return report(Code::kXmlRefused,
                  static_cast<std::uint64_t>(outline.Unended.data() - text.data()),
                  outline.Unended.starts_with("<!--") ? "this comment has no end (-->)"
                                                      : "this CDATA section has no end (]]>)");
  if (!outline.EndTag.empty())
    return report(Code::kXmlRefused, outline.Offset,
                  "the end tag of " + CString(outline.EndTag) + " stands where " +
                      (outline.Open.empty() ? CString("no element is open")
                                            : DescribeOpen(outline, reporter) + ", is open"));
  if (outline.IsWhole && !outline.Open.empty())
    return report(Code::kXmlRefused, text.size(),
                  "the text ends inside " + DescribeOpen(outline, reporter));
  const std::uint64_t offset = failure.Line == 0 ? 0 : OffsetAt(text, failure.Line, failure.Column);
  report(Code::kXmlRefused, offset,
         outline.Open.empty() || outline.IsWhole
             ? Explain(failure.Reason)
             : Explain(failure.Reason) + ", inside " + DescribeOpen(outline, reporter));
}

}  // namespace qenzor::check
