#include <CLI/CLI.hpp>
#include <iostream>
#include <string>

#include "commands.h"
#include "failure.h"

namespace tool {

namespace {

/// Passes on a refusal: of the command line, or of a file that it names.
template <class T>
void Require(const std::string& option, const qenzor::Result<T>& result) {
  if (result) return;
  const qenzor::Failure& failure = result.GetFailure();
  if (failure.Path.empty()) throw CWrongUsage(option + ": " + failure.Reason);
  qenzor::Failure rest = failure;
  rest.Path.clear();
  throw CFailure(failure.Path, rest.Describe());
}

}  // namespace

void AddFilterOptions(CLI::App& command, Options& options) {
  for (const qenzor::FilterOption& filter : qenzor::kFilterOptions) {
    const std::string name = "--" + std::string(filter.Name);
    command
        .add_option_function<std::vector<std::string>>(
            name,
            [&options, name, filter](const std::vector<std::string>& texts) {
              for (const std::string& text : texts)
                Require(name, options.Filters.Add(filter.Name, text));
            },
            std::string(filter.Help))
        ->type_name(std::string(filter.Value))
        ->allow_extra_args(false);
  }
  AddFrameOption(command, options);
}

void AddFrameOption(CLI::App& command, Options& options) {
  command
      .add_option_function<std::string>(
          "--frame",
          [&options](const std::string& words) {
            const auto frame = qenzor::FrameOptions::Parse(words);
            Require("--frame", frame);
            options.Frame = *frame;
          },
          "How the map's numbers are to be understood: unit, origin, rows, coef, crs, plain")
      ->type_name("KEY=VALUE,...");
}

void TellNoMatch() { std::cerr << "qenzor: no object passes the filters\n"; }

}  // namespace tool
