#include <nlohmann/json.hpp>

#include "tools/commands.h"
#include "tools/document.h"
#include "tools/progress.h"
#include "tools/statistics.h"

namespace tool {

namespace {

using nlohmann::ordered_json;

std::string TextOf(const ordered_json& value) {
  if (value.is_string()) return value.get<std::string>();
  return value.is_null() ? "none" : value.dump();
}

/// "west -5, south 3": the members of an object on one line, an object inside in parentheses.
std::string LineOf(const ordered_json& object) {
  std::string line;
  for (const auto& [key, value] : object.items()) {
    if (!line.empty()) line += ", ";
    line += key + ' ';
    if (!value.is_object()) {
      line += TextOf(value);
      continue;
    }
    std::string inner;
    for (const auto& [inner_key, inner_value] : value.items())
      inner += (inner.empty() ? "" : ", ") + inner_key + ' ' + TextOf(inner_value);
    line += '(' + inner + ')';
  }
  return line;
}

/// The report for people: each member on a line, what a member consists of on lines below it.
std::string TextOfReport(const ordered_json& report) {
  std::string text;
  for (const auto& [key, value] : report.items()) {
    text += key + ':';
    if (!value.is_structured()) {
      text += ' ' + TextOf(value) + '\n';
      continue;
    }
    text += value.empty() ? " none\n" : "\n";
    for (const auto& [inner_key, inner] : value.items()) {
      text += "  ";
      if (value.is_object()) text += inner_key + ": ";
      text += (inner.is_object() ? LineOf(inner) : TextOf(inner)) + '\n';
    }
  }
  return text;
}

/// Bytes of the root chunk that writing the document would give; null when it cannot be stored.
template <class Kind>
ordered_json RootChunkBytes(typename Kind::Edit& edit) {
  if (!FindBreach(edit).empty()) return nullptr;
  const auto document = Owned(Kind::Make(edit));
  auto* root = Kind::RootOf(*document);
  if (root == nullptr) return nullptr;
  root->RecursiveReCalcDataSize();
  return root->GetChunkSize();
}

template <class Kind>
ordered_json Describe(Input& input, bool is_xml) {
  std::unique_ptr<typename Kind::Edit> edit;
  ordered_json root_bytes;
  if (is_xml) {
    edit = ReadXml<Kind>(input);
    root_bytes = RootChunkBytes<Kind>(*edit);
  } else {
    const auto document = ReadBinary<Kind>(input);
    root_bytes = Kind::RootOf(*document)->GetChunkSize();
    edit = std::make_unique<typename Kind::Edit>();
    Kind::Fill(*edit, *document);
  }
  ordered_json report;
  report["file"] = input.GetName();
  report["kind"] = Kind::kKindName;
  report["format"] = is_xml ? "xml" : "binary";
  report["file_bytes"] = input.GetBytes().size();
  report["root_chunk_bytes"] = std::move(root_bytes);
  report["file_info"] = DescribeFileInfo(*edit);
  DescribeContent(*edit, report);
  return report;
}

}  // namespace

int RunInfo(const Options& options) {
  ordered_json report;
  {
    Progress progress(options.Quiet);
    progress.Stage("reading");
    Input input(options.In);
    const Format format = DetectFormat(input, options.Kind);
    if (!format.Kind) FailToReadXml(input, "\"Qen\" or \"Zor\"");
    report = WithKind(*format.Kind, [&]<class Kind>(Kind /*kind*/) {
      return Describe<Kind>(input, format.IsXml);
    });
  }
  constexpr int kIndent = 2;
  // A file name may be no UTF-8, which JSON has to be.
  PrintText(options.Json
                ? report.dump(kIndent, ' ', false, ordered_json::error_handler_t::replace) + '\n'
                : TextOfReport(report));
  return 0;
}

}  // namespace tool
