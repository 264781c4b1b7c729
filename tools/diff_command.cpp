// diff.

#include <string>

#include "commands.h"
#include "documents.h"
#include "progress.h"
#include "qenzor/view/walk.h"
#include "qenzor/work/change_document.h"
#include "qenzor/work/diff.h"
#include "report.h"

namespace tool {

namespace {

/// Changes that are shown unless all are asked for.
constexpr std::uint64_t kMostShown = 100;

/// Prints changes as they come: a line each for people, or a change document.
class CChangePrinter {
 public:
  CChangePrinter(const Options& options, qenzor::ClassFamily kind)
      : m_options(options), m_kind(kind) {}

  /// False when no more is wanted.
  bool Take(const qenzor::Change& change) {
    ++m_count;
    if (m_options.Quiet) return false;
    if (m_options.Json) {
      Print((m_count == 1 ? qenzor::RenderChangesFront(m_kind) + '\n' : ",\n") +
            qenzor::RenderChange(change));
    } else if (m_options.All || m_count <= kMostShown) {
      Print(qenzor::DescribeChange(change) + '\n');
    }
    return true;
  }
  void Finish() {
    if (!m_options.Quiet && m_options.Json)
      Print((m_count == 0 ? qenzor::RenderChangesFront(m_kind) : "") +
            std::string(qenzor::kChangesEnd));
    else if (!m_options.Quiet && !m_options.All && m_count > kMostShown)
      Print("… and " + std::to_string(m_count - kMostShown) + " more (--all shows them)\n");
    if (!m_text.empty()) PrintText(m_text);
  }
  bool IsAnyTold() const { return m_count > 0; }

 private:
  void Print(const std::string& text) {
    constexpr std::size_t kEnough = 65536;
    m_text += text;
    if (m_text.size() < kEnough) return;
    PrintText(m_text);
    m_text.clear();
  }

  const Options& m_options;
  qenzor::ClassFamily m_kind;
  std::uint64_t m_count = 0;
  std::string m_text;
};

void Require(const qenzor::Result<void>& result) {
  if (!result) throw CFailure("diff", result.GetFailure().Describe());
}

bool AnyPasses(const qenzor::CQen& map, const Options& options) {
  const qenzor::CFrame frame(map, options.Frame);
  return qenzor::CObjectCursor(map, frame, options.Filters).Next() != nullptr;
}

void Compare(const qenzor::CQen& before, const qenzor::CQen& after, const Options& options,
             CChangePrinter& printer) {
  const bool filters = !options.Filters.PassAll();
  if (filters && !AnyPasses(before, options) && !AnyPasses(after, options)) TellNoMatch();
  Require(Diff(before, after, [&](const qenzor::Change& change) { return printer.Take(change); },
               {options.Filters, options.Frame}));
}

void Compare(const qenzor::CZor& before, const qenzor::CZor& after, const Options& options,
             CChangePrinter& printer) {
  if (!options.Filters.PassAll())
    throw CWrongUsage("filters choose the objects of maps, and these are draw data");
  Require(Diff(before, after, [&](const qenzor::Change& change) { return printer.Take(change); }));
}

}  // namespace

int RunDiff(const Options& options) {
  if (options.In == "-" && options.Out == "-")
    throw CWrongUsage("only one of the documents can come from standard input");
  CProgress progress(options.Quiet);
  progress.Stage("reading");
  const Input before = ReadInput(options.In, options.Kind, Need::kFront);
  const DocumentKind found = FindKind(before, options.Kind);
  const Input after = ReadInput(options.Out, options.Kind, Need::kFront);
  const DocumentKind other = FindKind(after, options.Kind);
  if (found.Kind != other.Kind)
    throw CFailure(after.Name, "is a document of the other kind than " + before.Name);
  return WithKind(found.Kind, [&](auto kind) {
    using Kind = decltype(kind);
    const auto before_document = ReadEitherForm<Kind>(before, found.IsXml);
    const auto after_document = ReadEitherForm<Kind>(after, other.IsXml);
    progress.Stage("comparing");
    CChangePrinter printer(options, Kind::kKind == BinaryKind::kQen ? qenzor::ClassFamily::kQen
                                                                    : qenzor::ClassFamily::kZor);
    Compare(*before_document, *after_document, options, printer);
    progress.Wipe();
    printer.Finish();
    return printer.IsAnyTold() ? 1 : 0;
  });
}

}  // namespace tool
