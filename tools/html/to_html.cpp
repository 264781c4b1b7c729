// to-html.

#include <CLI/CLI.hpp>
#include <filesystem>
#include <iostream>
#include <memory>
#include <string>

#include "documents.h"
#include "output.h"
#include "picture_options.h"
#include "progress.h"
#include "qenzor/html/page.h"

namespace tool {

namespace {

int RunToHtml(const Options& options) {
  const bool has_drawing = options.Files.size() == 3;
  CProgress progress(options.Quiet);
  progress.Stage("reading");
  const auto map = ReadAny<QenKind>(options.Files[0], "map project");
  const auto drawing = has_drawing ? ReadAny<ZorKind>(options.Files[1], "drawing") : nullptr;
  qenzor::HtmlContent content;
  content.Map = map.get();
  content.Drawing = drawing.get();
  content.Frame = options.Frame;
  content.Which = options.Filters;
  content.DefaultStyle = options.Picture.DefaultStyle;
  content.AllLabels = options.Picture.AllLabels;
  content.Images = options.Picture.Images;
  content.Fonts = options.Picture.Fonts;
  content.Title = std::filesystem::path(options.Files[0]).filename().string();
  const auto warn = [&](const std::string& what) {
    progress.Wipe();
    std::cerr << Complaint("warning: " + what);
  };
  progress.Stage("writing the page");
  WriteOutput(options.Files.back(),
              [&](qenzor::CFile& file) { return WriteHtmlPage(content, file, warn); });
  return 0;
}

}  // namespace

void AddPageCommands(CLI::App& app, Options& options, Command& chosen) {
  CLI::App* page =
      app.add_subcommand("to-html", "Make one web page to look around in a map, without network");
  page->add_flag("--quiet", options.Quiet, "Show no progress");
  page->add_option("FILES", options.Files, "MAP.qen [DRAW.zor] OUT.html")
      ->required()
      ->expected(2, 3);
  AddStyleOptions(*page, options.Picture);
  AddFilterOptions(*page, options);
  page->callback([&chosen] { chosen = &RunToHtml; });
}

}  // namespace tool
