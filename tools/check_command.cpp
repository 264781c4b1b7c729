#include <algorithm>
#include <iterator>
#include <optional>
#include <vector>

#include "commands.h"
#include "documents.h"
#include "progress.h"
#include "qenzor/text/xml_file.h"
#include "report.h"

namespace tool {

namespace {

/// What was found in one file.
struct FileReport {
  std::string Name;
  std::string Kind;
  std::vector<Finding> Findings;
  std::optional<qenzor::XmlError> XmlError;  ///< instead of offsets, for text
};

void CheckXml(const Input& input, BinaryKind kind, FileReport& report) {
  const CXmlPath path(input);
  report.XmlError = qenzor::FindXmlError(path.Get());
  if (report.XmlError.has_value()) return;
  WithKind(kind, [&](auto name) {
    using Kind = decltype(name);
    const std::unique_ptr<typename Kind::Edit> edit(Kind::FromText(path.Get()));
    if (edit == nullptr) {
      report.XmlError = qenzor::XmlError{1, 1, "the root element is not that of the kind"};
      return;
    }
    if (const std::string limit = FindUnstorable(*edit); !limit.empty())
      report.Findings.push_back({true, 0, "", limit});
  });
}

/// One warning for each z-id that stands here and not there.
void FindMissing(const CheckResult& here, const CheckResult& there, const std::string& what,
                 FileReport& report) {
  for (const auto& [z_id, place] : here.ZIds)
    if (!there.ZIds.contains(z_id))
      report.Findings.push_back(
          {false, place.Offset, place.Path, "z-id " + std::to_string(z_id) + what});
}

/// Compares the z-ids that draw attributes draw with those of the map's objects; what the map's are
/// missing is reported of the map, with the errors that keep it from being read.
FileReport CompareZIds(const CheckResult& drawing, const Options& options, FileReport& report) {
  const Input input = ReadInput(options.Map);
  const CheckResult map = CheckBytes(input.Bytes, BinaryKind::kQen);
  FileReport map_report{input.Name, "Qen", {}, {}};
  std::ranges::copy_if(map.Findings, std::back_inserter(map_report.Findings), &Finding::IsError);
  FindMissing(map, drawing, " has no draw attribute in " + report.Name, map_report);
  FindMissing(drawing, map, " stands nowhere in " + input.Name, report);
  return map_report;
}

/// Checks one file, and the map that it is compared with.
std::vector<FileReport> CheckFile(const std::string& path, const Options& options) {
  const Input input = ReadInput(path);
  const DocumentKind found = FindKind(input, options.Kind);
  std::vector<FileReport> reports{
      {input.Name, found.Kind == BinaryKind::kQen ? "Qen" : "Zor", {}, {}}};
  if (found.IsXml) {
    CheckXml(input, found.Kind, reports.front());
    return reports;
  }
  CheckResult result = CheckBytes(input.Bytes, found.Kind);
  reports.front().Findings = std::move(result.Findings);
  if (!options.Map.empty() && found.Kind == BinaryKind::kZor) {
    FileReport map_report = CompareZIds(result, options, reports.front());
    if (!map_report.Findings.empty()) reports.push_back(std::move(map_report));
  }
  return reports;
}

Json ReportJson(const FileReport& report) {
  Json findings = Json::array();
  if (report.XmlError.has_value())
    findings.push_back({{"severity", "error"},
                        {"line", report.XmlError->Line},
                        {"column", report.XmlError->Column},
                        {"path", ""},
                        {"reason", report.XmlError->Reason}});
  for (const Finding& finding : report.Findings)
    findings.push_back({{"severity", finding.IsError ? "error" : "warning"},
                        {"offset", finding.Offset},
                        {"path", finding.Path},
                        {"reason", finding.Reason}});
  return {{"file", report.Name}, {"kind", report.Kind}, {"findings", findings}};
}

std::string ReportText(const FileReport& report) {
  std::string text;
  if (report.XmlError.has_value())
    text += report.Name + ": line " + std::to_string(report.XmlError->Line) + ", column " +
            std::to_string(report.XmlError->Column) + ": error: " + report.XmlError->Reason + '\n';
  for (const Finding& finding : report.Findings)
    text += report.Name + ": byte " + std::to_string(finding.Offset) + ": " +
            (finding.IsError ? "error: " : "warning: ") +
            (finding.Path.empty() ? "" : finding.Path + ": ") + finding.Reason + '\n';
  return text.empty() ? report.Name + ": nothing found\n" : text;
}

bool HasError(const FileReport& report) {
  return report.XmlError.has_value() ||
         std::ranges::any_of(report.Findings, [](const Finding& f) { return f.IsError; });
}

}  // namespace

int RunCheck(const Options& options) {
  std::string text;
  Json json = Json::array();
  bool failed = false;
  {
    CProgress progress(options.Quiet);
    for (const std::string& path : options.Files) {
      progress.Stage("checking " + path);
      for (const FileReport& report : CheckFile(path, options)) {
        failed = failed || HasError(report) || (options.Strict && !report.Findings.empty());
        if (options.Json)
          json.push_back(ReportJson(report));
        else
          text += ReportText(report);
      }
    }
  }
  if (options.Json)
    PrintReport(json, true);
  else
    PrintText(text);
  return failed ? 1 : 0;
}

}  // namespace tool
