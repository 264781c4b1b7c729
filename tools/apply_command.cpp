// apply.

#include <array>
#include <cstdio>
#include <fstream>
#include <iostream>

#include "commands.h"
#include "documents.h"
#include "output.h"
#include "progress.h"
#include "qenzor/work/apply.h"
#include "qenzor/work/change_document.h"

namespace tool {

namespace {

/// Misfits that are told unless all are asked for.
constexpr std::size_t kMostTold = 100;

/// All of a file of changes, and a little more of one that is too long.
std::string ReadText(std::istream& file, const std::string& name) {
  std::string text;
  std::array<char, 65536> block;
  while (text.size() <= qenzor::kMaxChangeBytes &&
         file.read(block.data(), block.size()).gcount() > 0)
    text.append(block.data(), static_cast<std::size_t>(file.gcount()));
  if (file.bad()) throw CFailure(name, "cannot be read");
  return text;
}

std::unique_ptr<qenzor::ChangeDocument> ReadChanges(const Options& options,
                                                    const std::string& name) {
  std::string text;
  if (options.Changes == "-") {
    text = ReadText(std::cin, name);
  } else {
    std::ifstream file(options.Changes, std::ios::binary);
    if (!file) throw CFailure(name, SystemReason());
    text = ReadText(file, name);
  }
  auto changes = qenzor::ParseChanges(text);
  if (!changes) throw CFailure(name, changes.GetFailure().Describe());
  if (!options.Reverse) return changes.Take();
  if (const auto reversed = ReverseChanges(*changes); !reversed)
    throw CFailure(name, reversed.GetFailure().Describe());
  return changes.Take();
}

void TellMisfits(const std::string& name, const qenzor::ChangeDocument& changes,
                 const std::vector<qenzor::Misfit>& misfits, bool all) {
  std::size_t told = 0;
  for (const qenzor::Misfit& misfit : misfits) {
    if (!all && told++ == kMostTold) {
      std::cerr << Complaint(name + ": … and " + std::to_string(misfits.size() - kMostTold) +
                             " more that do not fit (--all tells them)");
      return;
    }
    std::cerr << Complaint(name + ": /changes/" + std::to_string(misfit.Index) + ": " +
                           misfit.Reason + ": " + DescribeChange(changes.Changes[misfit.Index]));
  }
}

}  // namespace

int RunApply(const Options& options) {
  if (options.In == "-" && options.Changes == "-")
    throw CWrongUsage("only one of BASE and CHANGES can come from standard input");
  CProgress progress(options.Quiet);
  progress.Stage("reading");
  const std::string name = options.Changes == "-" ? "standard input" : options.Changes;
  const auto changes = ReadChanges(options, name);
  const Input base = ReadInput(options.In, options.Kind, Need::kFront);
  const DocumentKind found = FindKind(base, options.Kind);
  return WithKind(found.Kind, [&](auto kind) {
    using Kind = decltype(kind);
    const auto document = ReadEitherForm<Kind>(base, found.IsXml);
    progress.Stage("applying");
    const auto report = Apply(*document, *changes);
    if (!report) throw CFailure(name, report.GetFailure().Describe());
    progress.Wipe();
    TellMisfits(name, *changes, report->Misfits, options.All);
    if (report->Misfits.empty() || options.Partial) {
      progress.Stage("writing");
      Input result = base;
      result.Name = name;
      SaveOutput(result, options.Out,
                 [&](const std::string& path) { return Kind::Save(*document, path); });
    }
    return report->Misfits.empty() ? 0 : 1;
  });
}

}  // namespace tool
