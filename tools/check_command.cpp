#include <unistd.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <new>
#include <optional>

#include "commands.h"
#include "documents.h"
#include "files.h"
#include "finding_printer.h"
#include "progress.h"

namespace tool {

namespace {

using qenzor::CCheckCounts;
using qenzor::CheckOptions;
using qenzor::FindingKind;
using qenzor::Severity;

/// Findings of a kind that a terminal shows of a file, unless it is asked for more.
constexpr std::uint64_t kMaxOnTerminal = 20;

const FindingKind& KindNamed(std::string_view name) { return *qenzor::FindFindingKind(name); }

/// A file that could be opened, and what it is.
struct Opened {
  Input File;
  DocumentKind Kind;
};

/// The document that others are compared with, read once.
struct Partner {
  Opened Document;
  qenzor::ZIdResult ZIds;
};

qenzor::ZIdResult ZIdsOf(const Opened& document, qenzor::XmlEncoding encoding) {
  if (!document.Kind.IsXml) return qenzor::CollectZIds(document.File.Bytes, document.Kind.Kind);
  return qenzor::CollectXmlZIds(LoadText(document.File), document.Kind.Kind, encoding);
}

class CDeafSink : public qenzor::CFindingSink {
 public:
  bool Take(const qenzor::Finding& /*finding*/) override { return true; }
};

/// Checks files one after another and prints what is found in each.
class CChecker {
 public:
  explicit CChecker(const Options& options)
      : m_options(options), m_progress(options.Quiet), m_printer(FormOf(options)) {
    m_check.MaxDetails = options.MaxFindings;
    const bool for_people = !options.Json && !options.JsonLines && ::isatty(STDOUT_FILENO) != 0;
    if (for_people && !options.All)
      m_check.MaxDetails = std::min(m_check.MaxDetails, kMaxOnTerminal);
    m_check.RoundTrip = options.RoundTrip;
    m_check.Geometry = options.Geometry;
    m_check.Frame = options.Frame;
    m_check.Encoding = EncodingOf(options);
    if (!options.Images.empty())
      m_check.HasImage = [&options](const std::string& name) {
        std::error_code ignored;
        return std::filesystem::is_regular_file(std::filesystem::path(options.Images) / name,
                                                ignored);
      };
    for (const FindingKind& kind : qenzor::FindingKinds())
      if (!IsWanted(kind)) m_check.Skipped.insert(kind.Code);
  }

  int Run() try {
    OpenPartner(m_options.Map, "--map", BinaryKind::kQen);
    OpenPartner(m_options.Draw, "--draw", BinaryKind::kZor);
    ForEachFile(m_options.Files, m_options.Recursive,
                [&](const std::string& path, bool in_folder) { CheckFile(path, in_folder); });
    if (m_files != 1 || m_passed_over > 0) m_printer.Summarise(m_files, m_passed_over);
    RefuseUseless("--map", BinaryKind::kQen);
    RefuseUseless("--draw", BinaryKind::kZor);
    m_printer.Finish();
    return m_failed ? 1 : 0;
  } catch (const CWrongUsage&) {
    m_printer.Finish();
    throw;
  }

 private:
  static CFindingPrinter::Form FormOf(const Options& options) {
    if (options.JsonLines) return CFindingPrinter::Form::kJsonLines;
    return options.Json ? CFindingPrinter::Form::kJson : CFindingPrinter::Form::kText;
  }

  bool IsWanted(const FindingKind& kind) const {
    const auto names = [&kind](const std::vector<std::string>& codes) {
      return std::ranges::any_of(codes, [&kind](const std::string& code) {
        return code == kind.Name || code == qenzor::CodeText(kind);
      });
    };
    return (m_options.Only.empty() || names(m_options.Only)) && !names(m_options.Skip);
  }

  /// Tells of something that is not found in a document's content.
  void Tell(CCheckCounts& counts, const char* code, const std::string& reason,
            std::uint64_t offset = 0) {
    const FindingKind& kind = KindNamed(code);
    if (m_check.Skipped.contains(kind.Code)) return;
    m_printer.Take({&kind, offset, 0, 0, nullptr, reason});
    counts.Add(kind, true);
  }

  /// What a failure says behind the file's name.
  static std::string ReasonOf(const CFailure& failure, const std::string& name) {
    const std::string reason = failure.what();
    return reason.starts_with(name + ": ") ? reason.substr(name.size() + 2) : reason;
  }

  /// Runs f, whose findings are those of a file.
  template <class F>
  void ReportOn(const std::string& name, const std::string& kind, F&& f) {
    m_progress.Wipe();
    m_printer.BeginFile(name, kind);
    CCheckCounts counts;
    try {
      f(counts);
    } catch (const std::bad_alloc&) {
      Tell(counts, "out-of-memory", "the memory does not suffice");
    } catch (const CFailure& failure) {
      Tell(counts, "file-unreadable", ReasonOf(failure, name));
    }
    m_printer.EndFile(counts);
    m_failed = m_failed || counts.Of(Severity::kError) > 0 ||
               (m_options.Strict && counts.Of(Severity::kWarning) > 0);
  }

  /// Opens a file and finds out what it is; nothing, and reported, when that fails. What is not
  /// known is passed over in a folder.
  std::optional<Opened> Open(const std::string& path, const std::string& kind, bool in_folder) {
    const std::string name = path == "-" ? "standard input" : path;
    const char* code = "file-unreadable";
    std::string reason;
    try {
      m_progress.Stage("checking " + name);
      Input input = ReadInput(path, kind, Need::kAll);
      const DocumentKind found = FindKind(input, kind);
      return Opened{std::move(input), found};
    } catch (const CUnknownKind& failure) {
      if (in_folder) {
        ++m_passed_over;
        return std::nullopt;
      }
      code = "file-not-recognised";
      reason = ReasonOf(failure, name);
    } catch (const CFailure& failure) {
      reason = ReasonOf(failure, name);
    } catch (const std::bad_alloc&) {
      code = "out-of-memory";
      reason = "the memory does not suffice";
    }
    ++m_files;
    ReportOn(name, "", [&](CCheckCounts& counts) { Tell(counts, code, reason); });
    return std::nullopt;
  }

  void CheckFile(const std::string& path, bool in_folder) {
    const std::optional<Opened> opened = Open(path, m_options.Kind, in_folder);
    if (!opened.has_value()) return;
    ++m_files;
    const BinaryKind kind = opened->Kind.Kind;
    m_seen.at(static_cast<std::size_t>(kind)) = true;
    const Partner* const partner = PartnerOf(kind);
    CheckOptions check = m_check;
    if (partner != nullptr && partner->ZIds.IsWhole) {
      check.OtherZIds = &partner->ZIds.ZIds;
      check.OtherName = partner->Document.File.Name;
    }
    ReportOn(opened->File.Name, KindName(kind), [&](CCheckCounts& counts) {
      CCheckCounts other;
      if (const auto looks = FindOtherKind(opened->File, kind); looks.has_value())
        Tell(other, "file-other-kind", *looks);
      counts = CheckAs(*opened, check, m_printer);
      counts.Add(other);
    });
    if (partner != nullptr) CheckPartner(*partner, *opened);
  }

  static CCheckCounts CheckAs(const Opened& document, const CheckOptions& check,
                              qenzor::CFindingSink& sink) {
    const BinaryKind kind = document.Kind.Kind;
    if (!document.Kind.IsXml) return qenzor::CheckBinary(document.File.Bytes, kind, check, sink);
    return qenzor::CheckXml(LoadText(document.File), kind, check, sink);
  }

  const Partner* PartnerOf(BinaryKind kind) const {
    const auto& partner = m_partners.at(
        static_cast<std::size_t>(kind == BinaryKind::kQen ? BinaryKind::kZor : BinaryKind::kQen));
    return partner.has_value() ? &*partner : nullptr;
  }

  void OpenPartner(const std::string& path, const std::string& option, BinaryKind kind) {
    if (path.empty()) return;
    std::optional<Opened> opened = Open(path, "", false);
    if (!opened.has_value()) return;
    if (opened->Kind.Kind != kind)
      throw CWrongUsage(option + ' ' + path + ": this is " + KindWord(opened->Kind.Kind) +
                        ", not " + KindWord(kind));
    qenzor::ZIdResult z_ids = ZIdsOf(*opened, m_check.Encoding);
    const Partner& partner = m_partners.at(static_cast<std::size_t>(kind))
                                 .emplace(Partner{std::move(*opened), std::move(z_ids)});
    if (partner.ZIds.IsWhole) return;
    const CheckOptions errors =
        Only([](const FindingKind& found) { return found.Severity == Severity::kError; });
    ReportOn(partner.Document.File.Name, KindName(kind),
             [&](CCheckCounts& counts) { counts = CheckAs(partner.Document, errors, m_printer); });
  }

  /// Tells what the partner has and the document lacks, if there is any.
  void CheckPartner(const Partner& partner, const Opened& document) {
    const qenzor::ZIdResult z_ids = ZIdsOf(document, m_check.Encoding);
    if (!z_ids.IsWhole || !partner.ZIds.IsWhole) return;
    CheckOptions check = Only([&](const FindingKind& found) {
      return found.Name == "z-id-not-drawn" || found.Name == "z-id-nowhere" ||
             found.Name == "attribute-fits-nothing";
    });
    check.OtherZIds = &z_ids.ZIds;
    check.OtherName = document.File.Name;
    CDeafSink nobody;
    if (CheckAs(partner.Document, check, nobody).Of(Severity::kWarning) == 0) return;
    ReportOn(partner.Document.File.Name, KindName(partner.Document.Kind.Kind),
             [&](CCheckCounts& counts) { counts = CheckAs(partner.Document, check, m_printer); });
  }

  /// Refuses a document to compare with when there was none to compare.
  void RefuseUseless(const std::string& option, BinaryKind partner) const {
    const BinaryKind kind = partner == BinaryKind::kQen ? BinaryKind::kZor : BinaryKind::kQen;
    if (!m_partners.at(static_cast<std::size_t>(partner)).has_value() ||
        m_seen.at(static_cast<std::size_t>(kind)))
      return;
    throw CWrongUsage(option + " is of no use: none of the files is " + KindWord(kind));
  }

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
  std::array<std::optional<Partner>, 2> m_partners;  ///< by their kind
  std::array<bool, 2> m_seen{};                      ///< kinds of the files that were checked
  std::uint64_t m_files = 0;
  std::uint64_t m_passed_over = 0;
  bool m_failed = false;
};

}  // namespace

int RunCheck(const Options& options) {
  for (const auto* codes : {&options.Only, &options.Skip})
    for (const std::string& code : *codes)
      if (qenzor::FindFindingKind(code) == nullptr)
        throw CWrongUsage("no kind of finding is called " + code + " (see --list-codes)");
  if (options.ListCodes) {
    PrintCodes(options.Json);
    return 0;
  }
  if (options.Files.empty()) throw CWrongUsage("check: FILE is required");
  return CChecker(options).Run();
}

}  // namespace tool
