// qenzor: reads, copies, converts and checks map-project and draw-data documents.

#include <CLI/CLI.hpp>
#include <algorithm>
#include <iostream>
#include <new>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "commands.h"
#include "failure.h"
#include "output.h"
#include "qenzor/version.h"
#include "usage.h"

namespace {

constexpr int kFailed = 1;
constexpr int kWrongUsage = 2;

void Complain(const std::string& what) { std::cerr << tool::Complaint(what); }

CLI::App* AddCommand(CLI::App& app, tool::Options& options, const char* name, const char* what,
                     tool::Command command, tool::Command& chosen) {
  CLI::App* sub = app.add_subcommand(name, what);
  sub->add_flag("--quiet", options.Quiet, "Show no progress");
  sub->add_option("--kind", options.Kind, "Kind of document, if it is not to be found out")
      ->check(CLI::IsMember({"qen", "zor"}));
  sub->callback([command, &chosen] { chosen = command; });
  return sub;
}

/// What stands at the end of a command's help.
void Explain(CLI::App* sub, const std::string& status, const std::string& examples) {
  sub->footer("Exit status: " + status + ", 2 when the command line is wrong.\nExamples:\n" +
              examples);
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

void AddDiff(CLI::App& app, tool::Options& options, tool::Command& chosen) {
  CLI::App* diff =
      AddCommand(app, options, "diff", "Tell how two documents differ", &tool::RunDiff, chosen);
  diff->get_option("--quiet")->description("Tell by the exit status alone");
  diff->add_flag("--json", options.Json, "Print a change document, which apply carries out");
  diff->add_flag("--all", options.All, "Show all changes, not 100 at most");
  tool::AddFilterOptions(*diff, options);
  diff->add_option("A", options.In, "Document or XML; - for standard input")->required();
  diff->add_option("B", options.Out, "Document or XML; - for standard input")->required();
  diff->footer(
      "Exit status: 0 the documents are equal, 1 they differ, 2 trouble.\n"
      "Examples:\n"
      "  qenzor diff old.qen new.qen\n"
      "  qenzor diff --json old.zor new.xml > changes.json");
}

void AddApply(CLI::App& app, tool::Options& options, tool::Command& chosen) {
  CLI::App* apply =
      AddCommand(app, options, "apply", "Carry a change document out", &tool::RunApply, chosen);
  apply->add_flag("--reverse", options.Reverse, "Lead back what the changes led to");
  apply->add_flag("--partial", options.Partial, "Carry out what fits where not all does");
  apply->add_flag("--all", options.All, "Tell of all changes that do not fit, not 100 at most");
  apply->add_option("BASE", options.In, "Document or XML; - for standard input")->required();
  apply->add_option("CHANGES", options.Changes, "Change document; - for standard input")
      ->required();
  apply->add_option("OUT", options.Out, "Document to write; - for standard output")->required();
  apply->footer(
      "Exit status: 0 all is done, 1 something did not fit or failed, 2 wrong usage.\n"
      "Examples:\n"
      "  qenzor apply old.qen changes.json new.qen\n"
      "  qenzor apply --reverse new.qen changes.json old.qen");
}

void AddSchema(CLI::App& app, tool::Options& options, tool::Command& chosen) {
  CLI::App* schema = app.add_subcommand("schema", "Print a schema of what is read or written");
  schema->add_option("FORM", options.SchemaForm, "xml or json")
      ->required()
      ->check(CLI::IsMember({"xml", "json"}));
  schema->add_option("OF", options.SchemaOf, "Of xml: qen or zor; of json: changes")->required();
  schema->callback([&chosen] { chosen = &tool::RunSchema; });
}

}  // namespace

int main(int argc, char** argv) try {
  tool::Options options;
  tool::Command chosen = nullptr;
  CLI::App app("Reads, copies, converts and checks map-project and draw-data documents.");
  app.name("qenzor");
  app.set_version_flag("--version", "qenzor " QENZOR_VERSION);
  app.require_subcommand(1);
  app.footer(
      "Exit status: 0 when all is well, 1 when a command failed or check found damage, 2 when the "
      "command line is wrong.\nqenzor COMMAND --help tells of one command.");
  app.failure_message([](const CLI::App* /*app*/, const CLI::Error& error) {
    return tool::Complaint(std::string(error.what()) + " (qenzor --help tells more)");
  });

  CLI::App* copy = AddCommand(app, options, "copy", "Read a document and write it again",
                              &tool::RunCopy, chosen);
  copy->add_option("--via", options.Via, "Form that it passes through")
      ->check(CLI::IsMember({"chunk", "edit", "clone"}))
      ->capture_default_str();
  AddInOut(copy, options);
  const std::string written = "0 when OUT is written, 1 when it is not";
  Explain(copy, written, "  qenzor copy map.qen copy.qen\n  qenzor copy --via edit - -");
  CLI::App* to_xml =
      AddCommand(app, options, "to-xml", "Turn a document into XML", &tool::RunToXml, chosen);
  to_xml->add_flag("--strict", options.Strict, "Exit 1 when something is not in the XML form");
  AddEncoding(to_xml, options, {"shift_jis", "utf-8"}, "Encoding of the text");
  AddInOut(to_xml, options);
  Explain(to_xml, written + " (with --strict, when XML does not hold all of IN)",
          "  qenzor to-xml map.qen map.xml\n  qenzor to-xml --encoding utf-8 map.qen - | less");
  CLI::App* from_xml =
      AddCommand(app, options, "from-xml", "Turn XML into a document", &tool::RunFromXml, chosen);
  AddEncoding(from_xml, options, {"shift_jis", "utf-8", "auto"},
              "Encoding of the text; auto: as byte-order mark and declaration say");
  AddInOut(from_xml, options);
  Explain(from_xml, written,
          "  qenzor from-xml map.xml map.qen\n  qenzor from-xml --encoding auto map.xml map.qen");
  CLI::App* convert =
      AddCommand(app, options, "convert",
                 "Copy, or turn into XML or back, as content of IN and name of OUT say",
                 &tool::RunConvert, chosen);
  convert->add_flag("--strict", options.Strict, "Exit 1 when something is not in the XML form");
  AddEncoding(convert, options, {"shift_jis", "utf-8", "auto"}, "Encoding of XML");
  AddInOut(convert, options);
  Explain(convert, written, "  qenzor convert map.qen map.xml\n  qenzor convert map.xml map.qen");
  CLI::App* info =
      AddCommand(app, options, "info", "Tell what a document holds", &tool::RunInfo, chosen);
  info->add_flag("--json", options.Json, "Print JSON");
  info->add_option("FILE", options.In, "Document or XML; - for standard input")->required();
  Explain(info, "0 when all is told, 1 when FILE cannot be read",
          "  qenzor info map.qen\n  qenzor info --json drawing.xml");
  CLI::App* check = AddCommand(app, options, "check",
                               "Tell what is wrong with documents: an error keeps one from being "
                               "read, a warning tells of what is lost or doubtful",
                               &tool::RunCheck, chosen);
  CLI::Option* json = check->add_flag("--json", options.Json, "Print one JSON document");
  check->add_flag("--jsonl", options.JsonLines, "Print a line of JSON for each finding")
      ->excludes(json);
  check->add_flag("--strict", options.Strict, "Exit 1 for warnings too");
  check->add_flag("--roundtrip", options.RoundTrip,
                  "Tell what a binary document loses on its way through XML");
  check->add_flag("--geometry", options.Geometry,
                  "Tell where a map's objects are out of place or misshapen");
  tool::AddFrameOption(*check, options);
  check->add_flag("--recursive", options.Recursive, "Check the files in folders, and below");
  check->add_flag("--all", options.All, "Show a terminal more than 20 findings of a kind");
  check
      ->add_option("--max-findings", options.MaxFindings,
                   "How many findings of each kind are told for a file; others are counted")
      ->capture_default_str();
  check->add_option("--only", options.Only, "Codes or names of the only findings to tell of")
      ->delimiter(',')
      ->allow_extra_args(false);
  check->add_option("--skip", options.Skip, "Codes or names of findings not to tell of")
      ->delimiter(',')
      ->allow_extra_args(false);
  check->add_flag("--list-codes", options.ListCodes, "Tell what can be found, and end");
  check->add_option("--map", options.Map, "Map whose z-ids draw attributes should name");
  check->add_option("--draw", options.Draw, "Draw data that should draw a map's z-ids");
  check->add_option("--images", options.Images,
                    "Folder that should have the images that draw data name");
  AddEncoding(check, options, {"shift_jis", "utf-8", "auto"},
              "Encoding of XML; auto: as byte-order mark and declaration say");
  Explain(check, "0 when nothing counts, 1 for errors (with --strict, warnings too)",
          "  qenzor check map.qen drawing.xml\n"
          "  qenzor check --strict --roundtrip --map map.qen drawing.zor\n"
          "  qenzor check --recursive --jsonl --skip Q1061 maps/");
  check->add_option("FILE", options.Files, "Documents or XML; - for standard input");
  AddDiff(app, options, chosen);
  AddApply(app, options, chosen);
  AddSchema(app, options, chosen);

  CLI::App* salvage = AddCommand(app, options, "salvage",
                                 "Keep what can be read of a damaged document, and tell what is "
                                 "lost",
                                 &tool::RunSalvage, chosen);
  AddInOut(salvage, options);
  salvage->footer(
      "Exit status: 0 nothing was damaged, and OUT is IN byte for byte; 1 something was, and OUT "
      "is\n"
      "what is left, or there is no OUT because the file info or the root is gone; 2 wrong usage.\n"
      "Example:\n"
      "  qenzor salvage damaged.qen whole.qen");
  tool::AddPictureCommands(app, options, chosen);
  tool::AddPageCommands(app, options, chosen);

  const std::string word = argc > 1 ? argv[1] : "";
  std::vector<std::string> commands;
  for (const CLI::App* command : app.get_subcommands({})) commands.push_back(command->get_name());
  if (!word.empty() && word.front() != '-' && std::ranges::find(commands, word) == commands.end()) {
    Complain(tool::DescribeUnknownCommand(word, commands));
    return kWrongUsage;
  }
  // As with diff(1), 1 says that there are differences.
  const int failed = word == "diff" ? kWrongUsage : kFailed;
  tool::WatchSignals();
  try {
    app.parse(argc, argv);
    return chosen(options);
  } catch (const CLI::ParseError& error) {
    if (app.exit(error) != 0) return kWrongUsage;
    if (std::cout.flush()) return 0;
    Complain("standard output: cannot be written: " + tool::SystemReason());
  } catch (const tool::CWrongUsage& wrong) {
    Complain(wrong.what());
    return kWrongUsage;
  } catch (const tool::CFailure& failure) {
    Complain(failure.what());
  } catch (const std::bad_alloc&) {
    Complain("out of memory");
  }
  return failed;
} catch (const std::exception& error) {
  Complain(error.what());
  return kFailed;
}
