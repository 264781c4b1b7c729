#include <fcntl.h>
#include <unistd.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <csignal>
#include <exception>
#include <iostream>
#include <new>

#include "tools/commands.h"
#include "tools/descriptor.h"
#include "tools/output.h"

namespace tool {

namespace {

constexpr int kDone = 0;
constexpr int kFailed = 1;
constexpr int kWrongUsage = 2;

/// The options and arguments that a command may have.
enum class Option { kIn, kOut, kFile, kKind, kVia, kJson, kQuiet };

struct Command {
  const char* Name;
  const char* Description;
  std::vector<Option> OptionsTaken;
  int (*Run)(const Options& options);
};

const std::vector<Command>& Commands() {
  static const std::vector<Command> commands{
      {"copy",
       "Reads a binary document and writes it again",
       {Option::kKind, Option::kVia, Option::kQuiet, Option::kIn, Option::kOut},
       &RunCopy},
      {"to-xml",
       "Turns a binary document into XML",
       {Option::kKind, Option::kQuiet, Option::kIn, Option::kOut},
       &RunToXml},
      {"from-xml",
       "Turns XML into a binary document",
       {Option::kKind, Option::kQuiet, Option::kIn, Option::kOut},
       &RunFromXml},
      {"info",
       "Tells what a document, binary or XML, holds",
       {Option::kKind, Option::kJson, Option::kQuiet, Option::kFile},
       &RunInfo},
  };
  return commands;
}

/// An option that takes one of a few words, each standing for a value.
template <class Target, class Value>
void AddChoice(CLI::App& app, const std::string& name, Target& target,
               const std::vector<std::pair<std::string, Value>>& choices,
               const std::string& description) {
  std::vector<std::string> words;
  for (const auto& [word, value] : choices) words.push_back(word);
  app.add_option_function<std::string>(
         name,
         [&target, choices](const std::string& given) {
           target =
               std::ranges::find(choices, given, &std::pair<std::string, Value>::first)->second;
         },
         description)
      ->check(CLI::IsMember(words))
      ->type_name(CLI::detail::join(words, "|"))
      ->option_text(CLI::detail::join(words, "|"));
}

void AddOption(CLI::App& app, Option option, Options& options) {
  switch (option) {
    case Option::kIn:
      app.add_option("IN", options.In, "The file to read; - for standard input")
          ->option_text(" ")
          ->required();
      break;
    case Option::kOut:
      app.add_option("OUT", options.Out, "The file to write; - for standard output")
          ->option_text(" ")
          ->required();
      break;
    case Option::kFile:
      app.add_option("FILE", options.In, "The file to read; - for standard input")
          ->option_text(" ")
          ->required();
      break;
    case Option::kKind:
      AddChoice<std::optional<BinaryKind>, BinaryKind>(
          app, "--kind", options.Kind, {{"qen", BinaryKind::kQen}, {"zor", BinaryKind::kZor}},
          "What the document is, map project or draw data; else its content tells, then its name");
      break;
    case Option::kVia:
      AddChoice<Via, Via>(app, "--via", options.Through,
                          {{"chunk", Via::kChunk}, {"edit", Via::kEdit}, {"clone", Via::kClone}},
                          "The form that the document passes through (chunk)");
      break;
    case Option::kJson:
      app.add_flag("--json", options.Json, "Print JSON");
      break;
    case Option::kQuiet:
      app.add_flag("-q,--quiet", options.Quiet, "Show no progress, which only a terminal gets");
      break;
  }
}

/// Prints a message as the one line that standard error gets.
void PrintMessage(std::string message) {
  std::ranges::replace_if(
      message, [](unsigned char c) { return c < ' ' || c == '\x7F'; }, '?');
  message = "qenzor: " + message + '\n';
  WriteAll(STDERR_FILENO, {reinterpret_cast<const std::uint8_t*>(message.data()), message.size()});
}

/// Runs what the program was asked for; the exit status.
int Run(const CLI::App& app, const Options& options) try {
  const std::string name = app.get_subcommands().front()->get_name();
  return std::ranges::find_if(Commands(), [&name](const Command& c) { return c.Name == name; })
      ->Run(options);
} catch (const std::bad_alloc&) {
  PrintMessage(options.In + ": out of memory");
  return kFailed;
} catch (const std::exception& failure) {
  PrintMessage(failure.what());
  return kFailed;
}

int PrintHelp(const std::string& text) try {
  PrintText(text);
  return kDone;
} catch (const std::exception& failure) {
  PrintMessage(failure.what());
  return kFailed;
}

int ExplainUsage(const CLI::App& app, const CLI::ParseError& error) {
  const auto commands = app.get_subcommands();
  const std::string name = commands.empty() ? "" : commands.front()->get_name() + ' ';
  PrintMessage(name + (name.empty() ? "" : ": ") + error.what() + "; see qenzor " + name +
               "--help");
  return kWrongUsage;
}

int Main(int argc, const char* const* argv) {
  Options options;
  CLI::App app("Reads, writes and converts map projects and their draw data", "qenzor");
  app.set_version_flag("--version", "qenzor " QENZOR_VERSION);
  app.require_subcommand(1);
  for (const Command& command : Commands()) {
    CLI::App* sub = app.add_subcommand(command.Name, command.Description);
    for (const Option option : command.OptionsTaken) AddOption(*sub, option, options);
  }
  try {
    app.parse(argc, argv);
  } catch (const CLI::CallForHelp&) {
    return PrintHelp(app.help());
  } catch (const CLI::CallForVersion& version) {
    return PrintHelp(std::string(version.what()) + '\n');
  } catch (const CLI::ParseError& error) {
    return ExplainUsage(app, error);
  }
  return Run(app, options);
}

/// Keeps a file that is opened from becoming a standard stream that the caller has closed. What
/// takes a stream's place fails at what the stream is for.
void FillStandardStreams() {
  for (const auto [fd, flags] :
       {std::pair{STDIN_FILENO, O_WRONLY}, {STDOUT_FILENO, O_RDONLY}, {STDERR_FILENO, O_RDONLY}})
    if (fcntl(fd, F_GETFD) < 0) OpenPath("/dev/null", flags);
}

}  // namespace

}  // namespace tool

int main(int argc, char** argv) {
  tool::FillStandardStreams();
  // A file that reaches the size limit is an error like any other.
  std::signal(SIGXFSZ, SIG_IGN);
  return tool::Main(argc, argv);
}
