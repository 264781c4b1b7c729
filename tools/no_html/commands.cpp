// In place of html/, where pages are not built.

#include "commands.h"

#include <CLI/CLI.hpp>

#include "failure.h"

namespace tool {

namespace {

int RefusePage(const Options& /*options*/) {
  throw CFailure("to-html", "this qenzor was built without web pages (QENZOR_HTML)");
}

}  // namespace

void AddPageCommands(CLI::App& app, Options& /*options*/, Command& chosen) {
  app.add_subcommand("to-html", "Make one web page to look around in a map (not in this build)")
      ->allow_extras()
      ->callback([&chosen] { chosen = &RefusePage; });
}

}  // namespace tool
