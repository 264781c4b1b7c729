#include <algorithm>
#include <vector>

#include "qenzor/check/xml_tokens_impl.h"
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
  std::string_view EndTag;  ///< one that closes another element than the one that is open
  std::uint64_t Offset = 0;
  std::uint64_t Root = 0;  ///< where the outermost element begins
  bool HasRoot = false;
  bool IsWhole = false;  ///< all of the text has been gone over
};

Outline FindOutline(std::string_view text) {
  Outline outline;
  CXmlTokens tokens(text);
  while (true) {
    const Kind kind = tokens.Next();
    outline.Offset = tokens.GetOffset();
    if (kind == Kind::kStop) {
      outline.IsWhole = tokens.IsAtEnd();
      return outline;
    }
    if (!outline.HasRoot && (kind == Kind::kStart || kind == Kind::kEmpty)) {
      outline.HasRoot = true;
      outline.Root = outline.Offset;
    }
    if (kind == Kind::kStart) outline.Open.push_back({tokens.GetContent(), outline.Offset});
    if (kind != Kind::kEnd) continue;
    if (outline.Open.empty() || outline.Open.back().Tag != tokens.GetContent()) {
      outline.EndTag = tokens.GetContent();
      return outline;
    }
    outline.Open.pop_back();
    if (outline.Open.empty()) {
      outline.IsWhole = true;
      return outline;
    }
  }
}

CString Describe(const OpenElement& element, const CReporter& reporter) {
  return CString(element.Tag) + ", which begins at " + reporter.DescribePlace(element.Offset);
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

}  // namespace

void ReportXmlRefusal(std::string_view text, const DocumentSchema& schema, const Failure& failure,
                      CReporter& reporter) {
  const Outline outline = FindOutline(text);
  if (failure.Kind == FailureKind::kNotSuchDocument && outline.HasRoot)
    return reporter.Report(Code::kXmlWrongRoot, outline.Root, nullptr,
                           [&] { return "the outermost element is not " + CString(schema.Tag); });
  if (!outline.EndTag.empty())
    return reporter.Report(Code::kXmlRefused, outline.Offset, nullptr, [&] {
      const CString end = "the end tag of " + CString(outline.EndTag) + " stands where ";
      return outline.Open.empty() ? end + "no element is open"
                                  : end + Describe(outline.Open.back(), reporter) + ", is open";
    });
  if (outline.IsWhole && !outline.Open.empty())
    return reporter.Report(Code::kXmlRefused, text.size(), nullptr, [&] {
      return "the text ends inside " + Describe(outline.Open.back(), reporter);
    });
  const std::uint64_t offset = failure.Line == 0 ? 0 : OffsetAt(text, failure.Line, failure.Column);
  reporter.Report(Code::kXmlRefused, offset, nullptr, [&] {
    return outline.Open.empty() || outline.IsWhole
               ? failure.Reason
               : failure.Reason + ", inside " + Describe(outline.Open.back(), reporter);
  });
}

}  // namespace qenzor::check
