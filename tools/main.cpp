// qenzor: reads, copies, converts and checks map-project and draw-data documents.

#include <CLI/CLI.hpp>
#include <iostream>
#include <new>
#include <set>
#include <string>
#include <utility>

#include "commands.h"
#include "failure.h"
#include "output.h"
#include "qenzor/version.h"

namespace {

constexpr int kFailed = 1;
constexpr int kWrongUsage = 2;

void Complain(const std::string& what) { std::cerr << tool::Complaint(what); }

using Command = int (*)(const tool::Options&);

CLI::App* AddCommand(CLI::App& app, tool::Options& options, const char* name, const char* what,
                     Command command, Command& chosen) {
  CLI::App* sub = app.add_subcommand(name, what);
  sub->add_flag("--quiet", options.Quiet, "Show no progress");
  sub->add_option("--kind", options.Kind, "Kind of document, if it is not to be found out")
      ->check(CLI::IsMember({"qen", "zor"}));
  sub->callback([command, &chosen] { chosen = command; });
  return sub;
}

void AddEncoding(CLI::App* sub, tool::Options& options, std::set<std::string> names,
                 const char* what) {
  sub->add_option("--encoding", options.Encoding, what)
      ->check(CLI::IsMember(std::move(names), CLI::ignore_case))
      ->capture_default_str();
}

void AddInOut(CLI::App* sub, tool::Options& options) {
  sub->add_option("IN", options.In, "File to read; - for standard input")->required();
  sub->add_option("OUT", options.Out, "File to write; - for standard output")->required();
}

}  // namespace

int main(int argc, char** argv) try {
  tool::Options options;
  Command chosen = nullptr;
  CLI::App app("Reads, copies, converts and checks map-project and draw-data documents.");
  app.name("qenzor");
  app.set_version_flag("--version", "qenzor " QENZOR_VERSION);
  app.require_subcommand(1);
  app.failure_message([](const CLI::App* /*app*/, const CLI::Error& error) {
    return tool::Complaint(std::string(error.what()) + " (qenzor --help tells more)");
  });

  CLI::App* copy = AddCommand(app, options, "copy", "Read a document and write it again",
                              &tool::RunCopy, chosen);
  copy->add_option("--via", options.Via, "Form that it passes through")
      ->check(CLI::IsMember({"chunk", "edit", "clone"}))
      ->capture_default_str();
  AddInOut(copy, options);
  CLI::App* to_xml =
      AddCommand(app, options, "to-xml", "Turn a document into XML", &tool::RunToXml, chosen);
  AddEncoding(to_xml, options, {"shift_jis", "utf-8"}, "Encoding of the text");
  AddInOut(to_xml, options);
  CLI::App* from_xml =
      AddCommand(app, options, "from-xml", "Turn XML into a document", &tool::RunFromXml, chosen);
  AddEncoding(from_xml, options, {"shift_jis", "utf-8", "auto"},
              "Encoding of the text; auto: as byte-order mark and declaration say");
  AddInOut(from_xml, options);
  CLI::App* info =
      AddCommand(app, options, "info", "Tell what a document holds", &tool::RunInfo, chosen);
  info->add_flag("--json", options.Json, "Print JSON");
  info->add_option("FILE", options.In, "Document or XML; - for standard input")->required();
  CLI::App* check = AddCommand(app, options, "check",
                               "Tell what is wrong with documents: errors refuse to be read, "
                               "warnings are dropped silently",
                               &tool::RunCheck, chosen);
  check->add_flag("--json", options.Json, "Print JSON");
  check->add_flag("--strict", options.Strict, "Exit 1 for warnings too");
  check
      ->add_option("--max-findings", options.MaxFindings,
                   "How many findings of each kind are told for a file; others are counted")
      ->capture_default_str();
  check->add_option("--map", options.Map, "Map whose z-ids draw attributes should name");
  check->add_option("FILE", options.Files, "Documents or XML; - for standard input")->required();

  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& error) {
    if (app.exit(error) != 0) return kWrongUsage;
    if (std::cout.flush()) return 0;
    Complain("standard output cannot be written");
    return kFailed;
  }
  tool::WatchSignals();
  try {
    return chosen(options);
  } catch (const tool::CFailure& failure) {
    Complain(failure.what());
  } catch (const std::bad_alloc&) {
    Complain("out of memory");
  }
  return kFailed;
} catch (const std::exception& error) {
  Complain(error.what());
  return kFailed;
}
