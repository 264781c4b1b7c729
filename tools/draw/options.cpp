#include <string>
#include <string_view>

#include "draw/render.h"
#include "picture_options.h"

namespace tool {

namespace {

double ParsePositive(const std::string& option, const std::string& text) {
  const auto number = ParseAll<double>(text);
  if (!number.has_value() || !(*number > 0)) RefuseOption(option, text, "a number above 0");
  return *number;
}

std::pair<double, double> ParseSize(const std::string& text) {
  const std::size_t by = text.find('x');
  const std::string_view behind =
      by == std::string::npos ? "" : std::string_view(text).substr(by + 1);
  const std::uint32_t width = ParseAll<std::uint32_t>(text.substr(0, by)).value_or(0);
  const std::uint32_t height = ParseAll<std::uint32_t>(behind).value_or(0);
  if (width == 0 || height == 0) RefuseOption("--size", text, "a size in pixels as 800x600");
  return {width, height};
}

std::uint32_t ParseColor(const std::string& text) {
  constexpr std::uint32_t kOpaque = 0xFF000000;
  const bool is_long = text.size() == 9;
  const auto color = text.starts_with('#') && (is_long || text.size() == 7)
                         ? ParseAll<std::uint32_t>(std::string_view(text).substr(1), 16)
                         : std::nullopt;
  if (!color.has_value()) RefuseOption("--background", text, "a colour #RRGGBB or #AARRGGBB");
  return is_long ? *color : *color | kOpaque;
}

void AddPictureOptions(CLI::App& command, PictureOptions& options) {
  CLI::Option* scale = AddTextOption(
      command, "--scale", "N", "Draw at 1:N",
      [&options](const std::string& text) { options.Scale = ParsePositive("--scale", text); });
  AddTextOption(command, "--size", "WxH", "Fit into so many pixels (1600 of width unless told)",
                [&options](const std::string& text) { options.Size = ParseSize(text); })
      ->excludes(scale);
  AddTextOption(command, "--dpi", "N", "Pixels per inch (96)", [&options](const std::string& text) {
    options.Dpi = ParsePositive("--dpi", text);
  });
  AddTextOption(command, "--projection", "flat|mercator", "How degrees lie on the picture",
                [&options](const std::string& text) {
                  if (text != "flat" && text != "mercator")
                    RefuseOption("--projection", text, "flat or mercator");
                  options.IsMercator = text == "mercator";
                });
  AddTextOption(command, "--background", "COLOUR", "#RRGGBB or #AARRGGBB (white)",
                [&options](const std::string& text) { options.Background = ParseColor(text); });
}

}  // namespace

void AddPictureCommands(CLI::App& app, Options& options, Command& chosen) {
  CLI::App* render = app.add_subcommand("render", "Draw a map as SVG, PNG or PDF");
  render->add_flag("--quiet", options.Quiet, "Show no progress");
  render->add_option("FILES", options.Files, "MAP.qen [DRAW.zor] OUT.{svg,png,pdf}")
      ->required()
      ->expected(1, 3);
  AddPictureOptions(*render, options.Picture);
  AddStyleOptions(*render, options.Picture);
  render->add_flag("--list", options.Picture.List,
                   "Print what is drawn as JSON lines instead; there is no OUT then");
  AddFilterOptions(*render, options);
  render->callback([&options, &chosen] {
    const std::size_t most = options.Picture.List ? 2 : 3;
    const std::size_t least = options.Picture.List ? 1 : 2;
    if (options.Files.size() < least || options.Files.size() > most)
      throw CLI::ValidationError("FILES", options.Picture.List
                                              ? "--list takes MAP.qen [DRAW.zor]"
                                              : "MAP.qen [DRAW.zor] OUT is what render takes");
    if (!options.Picture.List && !FindFormat(options.Files.back()).has_value())
      throw CLI::ValidationError(
          "OUT", "\"" + options.Files.back() + "\" ends in none of .svg, .png and .pdf");
    chosen = &RunRender;
  });
}

}  // namespace tool
