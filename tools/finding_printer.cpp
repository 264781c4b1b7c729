#include "finding_printer.h"

#include <algorithm>
#include <cstdio>

#include "failure.h"

namespace tool {

namespace {

constexpr const char* kFileIndent = "    ";
constexpr const char* kFindingIndent = "      ";

void Put(std::string_view text) {
  if (std::fwrite(text.data(), 1, text.size(), stdout) != text.size())
    throw CFailure("standard output", "cannot be written: " + SystemReason());
}

void Flush() {
  if (std::fflush(stdout) != 0)
    throw CFailure("standard output", "cannot be written: " + SystemReason());
}

std::string Dump(const Json& json, int indent) {
  return json.dump(indent, ' ', false, Json::error_handler_t::replace);
}

/// The JSON as it stands inside other JSON: every line but the first behind the indent.
std::string DumpInside(const Json& json, std::string_view indent) {
  std::string text;
  for (const char c : Dump(json, 2)) {
    text += c;
    if (c == '\n') text += indent;
  }
  return text;
}

std::string CodeAndName(const qenzor::FindingKind& kind) {
  return " [" + qenzor::CodeText(kind) + ' ' + std::string(kind.Name) + "]\n";
}

/// One line, whatever a file may be called or hold.
std::string OneLine(std::string text) {
  std::replace_if(
      text.begin(), text.end(), [](unsigned char c) { return c < ' ' || c == 0x7F; }, '?');
  return text;
}

/// Whether a finding is about a file as such, so that no place in it is worth telling.
bool IsOfWholeFile(const qenzor::Finding& finding) {
  return finding.Kind->Name.starts_with("file-") || finding.Kind->Name == "out-of-memory";
}

}  // namespace

void CFindingPrinter::BeginFile(const std::string& name, const std::string& kind) {
  m_name = name;
  m_kind = kind;
  m_has_findings = false;
  if (m_form == Form::kJson)
    Put((m_has_files ? ",\n  {\n" : "[\n  {\n") + (kFileIndent + Dump("file", -1)) + ": " +
        Dump(name, -1) + ",\n" + kFileIndent + Dump("kind", -1) + ": " + Dump(kind, -1) + ",\n" +
        kFileIndent + Dump("findings", -1) + ": [");
  m_has_files = true;
}

bool CFindingPrinter::Take(const qenzor::Finding& finding) {
  switch (m_form) {
    case Form::kText:
      TakeText(finding);
      break;
    case Form::kJson:
      Put((m_has_findings ? ",\n" : "\n") +
          (kFindingIndent + DumpInside(FindingJson(finding), kFindingIndent)));
      break;
    case Form::kJsonLines: {
      Json line{{"file", m_name}, {"kind", m_kind}};
      line.update(FindingJson(finding));
      Put(Dump(line, -1) + '\n');
      break;
    }
  }
  m_has_findings = true;
  return true;
}

Json CFindingPrinter::FindingJson(const qenzor::Finding& finding) const {
  Json json{{"code", qenzor::CodeText(*finding.Kind)},
            {"name", finding.Kind->Name},
            {"severity", qenzor::SeverityName(finding.Kind->Severity)}};
  if (finding.Line != 0) {
    json["line"] = finding.Line;
    json["column"] = finding.Column;
  } else {
    json["offset"] = finding.Offset;
  }
  json["path"] = qenzor::RenderPath(finding.Path);
  json["reason"] = finding.Reason;
  const auto add = [&json](const char* name, const std::optional<std::uint64_t>& value) {
    if (value.has_value()) json[name] = *value;
  };
  add("segment", finding.GetSegment());
  add("layer", finding.GetLayer());
  add("zid", finding.GetZId());
  add("index", finding.GetIndex());
  return json;
}

void CFindingPrinter::TakeText(const qenzor::Finding& finding) {
  const std::string path = qenzor::RenderPath(finding.Path);
  const std::string place =
      finding.Line != 0 ? "line " + std::to_string(finding.Line) + ", column " +
                              std::to_string(finding.Column) + ": "
      : IsOfWholeFile(finding) ? ""
                               : "byte " + std::to_string(finding.Offset) + ": ";
  Put(OneLine(m_name + ": " + place + std::string(qenzor::SeverityName(finding.Kind->Severity)) +
              ": " + (path.empty() ? "" : path + ": ") + finding.Reason) +
      CodeAndName(*finding.Kind));
}

void CFindingPrinter::EndFile(const qenzor::CCheckCounts& counts) {
  for (std::size_t i = 0; i < m_sums.size(); ++i)
    m_sums.at(i) += counts.Of(static_cast<qenzor::Severity>(i));
  if (m_form == Form::kJson) {
    EndFileJson(counts);
  } else {
    for (const qenzor::FindingKind& kind : qenzor::FindingKinds()) {
      const std::uint64_t more = counts.Untold(kind);
      if (more == 0) continue;
      if (m_form == Form::kText)
        Put(OneLine(m_name) + ": … and " + std::to_string(more) + " more" + CodeAndName(kind));
      else
        Put(Dump({{"file", m_name},
                  {"kind", m_kind},
                  {"code", qenzor::CodeText(kind)},
                  {"name", kind.Name},
                  {"severity", qenzor::SeverityName(kind.Severity)},
                  {"more", more}},
                 -1) +
            '\n');
    }
    if (m_form == Form::kText && !m_has_findings) Put(OneLine(m_name) + ": nothing found\n");
  }
  Flush();
}

void CFindingPrinter::EndFileJson(const qenzor::CCheckCounts& counts) {
  Json more = Json::array();
  for (const qenzor::FindingKind& kind : qenzor::FindingKinds())
    if (const std::uint64_t count = counts.Untold(kind); count > 0)
      more.push_back({{"code", qenzor::CodeText(kind)}, {"name", kind.Name}, {"count", count}});
  Put((m_has_findings ? std::string("\n") + kFileIndent : "") + "],\n" + kFileIndent +
      Dump("more", -1) + ": " + DumpInside(more, kFileIndent) + "\n  }");
}

void CFindingPrinter::Summarise(std::uint64_t files, std::uint64_t passed_over) {
  if (m_form != Form::kText) return;
  const auto counted = [](std::uint64_t count, const std::string& what) {
    return std::to_string(count) + ' ' + what + (count == 1 ? "" : "s");
  };
  Put(counted(files, "file") + " checked: " + counted(m_sums[2], "error") + ", " +
      counted(m_sums[1], "warning") + ", " + counted(m_sums[0], "note") +
      (passed_over == 0 ? "" : "; " + counted(passed_over, "other file") + " passed over") + '\n');
}

void CFindingPrinter::Finish() {
  if (m_form == Form::kJson) Put(m_has_files ? "\n]\n" : "[]\n");
  Flush();
}

void PrintCodes(bool as_json) {
  Json codes = Json::array();
  std::string text;
  for (const qenzor::FindingKind& kind : qenzor::FindingKinds()) {
    const std::string code = qenzor::CodeText(kind);
    codes.push_back({{"code", code},
                     {"name", kind.Name},
                     {"severity", qenzor::SeverityName(kind.Severity)},
                     {"meaning", kind.Meaning},
                     {"proposal", kind.Proposal}});
    text += code + ' ' + std::string(kind.Name) + " (" +
            std::string(qenzor::SeverityName(kind.Severity)) + ")\n    " +
            std::string(kind.Meaning) + ' ' + std::string(kind.Proposal) + '\n';
  }
  Put(as_json ? Dump(codes, 2) + '\n' : text);
  Flush();
}

}  // namespace tool
