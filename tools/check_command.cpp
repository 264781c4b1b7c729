#include <new>
#include <optional>

#include "commands.h"
#include "documents.h"
#include "finding_printer.h"
#include "progress.h"

namespace tool {

namespace {

using qenzor::CheckCounts;
using qenzor::CheckOptions;
using qenzor::FindingKind;
using qenzor::Severity;

const FindingKind& KindNamed(std::string_view name) { return *qenzor::FindFindingKind(name); }

const char* KindName(BinaryKind kind) { return kind == BinaryKind::kQen ? "Qen" : "Zor"; }

/// The map that draw data are compared with, read once.
struct MapToCompare {
  Input File;
  qenzor::ZIdResult ZIds;
};

/// Checks files one after another and prints what is found in each.
class CChecker {
 public:
  explicit CChecker(const Options& options)
      : m_options(options),
        m_progress(options.Quiet),
        m_printer(options.Json ? CFindingPrinter::Form::kJson : CFindingPrinter::Form::kText) {
    m_check.MaxDetails = options.MaxFindings;
  }

  int Run() {
    if (!m_options.Map.empty()) OpenMap();
    for (const std::string& path : m_options.Files) CheckFile(path);
    m_printer.Finish();
    return m_failed ? 1 : 0;
  }

 private:
  /// Runs f, whose findings are those of a file; what keeps it from being checked is one too.
  template <class F>
  void ReportOn(const std::string& name, const std::string& kind, F&& f) {
    m_progress.Wipe();
    m_printer.BeginFile(name, kind);
    CheckCounts counts;
    const auto report = [&](const char* code, const std::string& reason) {
      const FindingKind& found = KindNamed(code);
      m_printer.Take({&found, 0, 0, 0, nullptr, reason});
      counts.Add(found, true);
    };
    try {
      f(counts, report);
    } catch (const std::bad_alloc&) {
      report("out-of-memory", "the memory does not suffice");
    }
    m_printer.EndFile(counts);
    m_failed = m_failed || counts.Of(Severity::kError) > 0 ||
               (m_options.Strict && counts.Of(Severity::kWarning) > 0);
  }

  /// Opens a file and finds out what it is; nothing, and reported, when that fails.
  std::optional<std::pair<Input, DocumentKind>> Open(const std::string& path,
                                                     const std::string& kind) {
    const std::string name = path == "-" ? "standard input" : path;
    const char* code = "file-unreadable";
    std::string reason;
    try {
      m_progress.Stage("checking " + name);
      Input input = ReadInput(path, kind, Need::kAll);
      const DocumentKind found = FindKind(input, kind);
      return std::pair(std::move(input), found);
    } catch (const CUnknownKind& failure) {
      code = "file-not-recognised";
      reason = std::string(failure.what()).substr(name.size() + 2);
    } catch (const CFailure& failure) {
      reason = std::string(failure.what()).substr(name.size() + 2);
    } catch (const std::bad_alloc&) {
      code = "out-of-memory";
      reason = "the memory does not suffice";
    }
    ReportOn(name, "", [&](CheckCounts&, auto report) { report(code, reason); });
    return std::nullopt;
  }

  void CheckFile(const std::string& path) {
    auto opened = Open(path, m_options.Kind);
    if (!opened.has_value()) return;
    const auto& [input, kind] = *opened;
    ReportOn(input.Name, KindName(kind.Kind), [&](CheckCounts& counts, auto /*report*/) {
      counts = kind.IsXml ? CheckXml(input, kind.Kind) : CheckBytes(input, kind.Kind);
    });
    if (m_map.has_value() && !kind.IsXml && kind.Kind == BinaryKind::kZor) CheckMap(input);
  }

  CheckCounts CheckBytes(const Input& input, BinaryKind kind) {
    CheckOptions check = m_check;
    if (m_map.has_value() && m_map->ZIds.IsWhole && kind == BinaryKind::kZor) {
      check.OtherZIds = &m_map->ZIds.ZIds;
      check.OtherName = m_map->File.Name;
    }
    return qenzor::CheckBinary(input.Bytes, kind, check, m_printer);
  }

  CheckCounts CheckXml(const Input& input, BinaryKind kind) {
    CheckCounts counts;
    const auto report = [&](const char* code, std::uint32_t line, std::uint32_t column,
                            const std::string& reason) {
      const FindingKind& found = KindNamed(code);
      m_printer.Take({&found, 0, line, column, nullptr, reason});
      counts.Add(found, true);
    };
    WithKind(kind, [&](auto name) {
      using Kind = decltype(name);
      const auto edit = Kind::FromText(input);
      if (const qenzor::Failure& failure = edit.GetFailure(); !edit)
        report("xml-refused", failure.Line, failure.Column, failure.Reason);
      else if (const std::string limit = FindUnstorable(*edit); !limit.empty())
        report("xml-unstorable", 0, 0, limit);
    });
    return counts;
  }

  void OpenMap() {
    auto opened = Open(m_options.Map, "qen");
    if (!opened.has_value()) return;
    m_map = MapToCompare{std::move(opened->first), {}};
    m_map->ZIds = qenzor::CollectZIds(m_map->File.Bytes, BinaryKind::kQen);
    if (m_map->ZIds.IsWhole) return;
    ReportOn(m_map->File.Name, "Qen", [&](CheckCounts& counts, auto /*report*/) {
      counts = qenzor::CheckBinary(
          m_map->File.Bytes, BinaryKind::kQen,
          Only([](const FindingKind& found) { return found.Severity == Severity::kError; }),
          m_printer);
    });
  }

  /// Tells what the map has and the draw data lack, if there is any.
  void CheckMap(const Input& drawing) {
    const qenzor::ZIdResult drawn = qenzor::CollectZIds(drawing.Bytes, BinaryKind::kZor);
    if (!drawn.IsWhole || !m_map->ZIds.IsWhole) return;
    const FindingKind& not_drawn = KindNamed("z-id-not-drawn");
    CheckOptions check = Only([&](const FindingKind& found) { return &found == &not_drawn; });
    check.OtherZIds = &drawn.ZIds;
    check.OtherName = drawing.Name;
    CDeaf nobody;
    if (qenzor::CheckBinary(m_map->File.Bytes, BinaryKind::kQen, check, nobody).Of(not_drawn) == 0)
      return;
    ReportOn(m_map->File.Name, "Qen", [&](CheckCounts& counts, auto /*report*/) {
      counts = qenzor::CheckBinary(m_map->File.Bytes, BinaryKind::kQen, check, m_printer);
    });
  }

  class CDeaf : public qenzor::CFindingSink {
   public:
    bool Take(const qenzor::Finding& /*finding*/) override { return false; }
  };

  template <class Wanted>
  CheckOptions Only(Wanted&& wanted) const {
    CheckOptions check = m_check;
    for (const FindingKind& kind : qenzor::FindingKinds())
      if (!wanted(kind)) check.Skipped.insert(kind.Code);
    return check;
  }

  const Options& m_options;
  CProgress m_progress;
  CFindingPrinter m_printer;
  CheckOptions m_check;
  std::optional<MapToCompare> m_map;
  bool m_failed = false;
};

}  // namespace

int RunCheck(const Options& options) { return CChecker(options).Run(); }

}  // namespace tool
