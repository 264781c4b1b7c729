#include "picture_options.h"

#include <cstdint>
#include <utility>

namespace tool {

namespace {

std::pair<std::uint8_t, std::string> ParseFont(const std::string& text) {
  const std::size_t equals = text.find('=');
  const auto id = ParseAll<std::uint8_t>(std::string_view(text).substr(0, equals));
  if (!id.has_value() || equals == std::string::npos || equals + 1 == text.size())
    RefuseOption("--font", text, "a font number from 0 to 255 and a family as 1=Sans");
  return {*id, text.substr(equals + 1)};
}

}  // namespace

void AddStyleOptions(CLI::App& command, PictureOptions& options) {
  AddTextOption(command, "--images", "DIR", "Folder of the images that the drawing names",
                [&options](const std::string& text) { options.Images = text; });
  AddTextOption(command, "--font", "ID=FAMILY", "Font family for a font number",
                [&options](const std::string& text) {
                  const auto [id, family] = ParseFont(text);
                  options.Fonts[id] = family;
                });
  command.add_flag("--all-labels", options.AllLabels, "Leave out no label that covers another");
  command.add_flag("--default-style", options.DefaultStyle,
                   "Draw plainly what has no draw attribute");
}

}  // namespace tool
