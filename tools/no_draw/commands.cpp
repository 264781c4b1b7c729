// In place of draw/, where pictures are not built.

#include "commands.h"

#include <CLI/CLI.hpp>

#include "failure.h"

namespace tool {

namespace {

int RefusePicture(const Options& /*options*/) {
  throw CFailure("render", "this qenzor was built without pictures (QENZOR_DRAW)");
}

}  // namespace

void AddPictureCommands(CLI::App& app, Options& /*options*/, Command& chosen) {
  app.add_subcommand("render", "Draw a map as SVG, PNG or PDF (not in this build)")
      ->allow_extras()
      ->callback([&chosen] { chosen = &RefusePicture; });
}

}  // namespace tool
