#pragma once

#include <CLI/CLI.hpp>
#include <charconv>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

#include "commands.h"

namespace tool {

// What the commands that draw have in common.

[[noreturn]] inline void RefuseOption(const std::string& option, const std::string& text,
                                      const std::string& what) {
  throw CLI::ValidationError(option, "\"" + text + "\" is not " + what);
}

/// The number that all of the text is.
template <class Number, class... Base>
std::optional<Number> ParseAll(std::string_view text, Base... base) {
  Number number{};
  const auto [stop, error] =
      std::from_chars(text.data(), text.data() + text.size(), number, base...);
  if (error != std::errc() || stop != text.data() + text.size()) return std::nullopt;
  return number;
}

/// An option whose every value is handed to take.
template <class Take>
CLI::Option* AddTextOption(CLI::App& command, const char* name, const char* value, const char* help,
                           Take take) {
  return command
      .add_option_function<std::vector<std::string>>(
          name,
          [take](const std::vector<std::string>& texts) {
            for (const std::string& text : texts) take(text);
          },
          help)
      ->type_name(value)
      ->allow_extra_args(false);
}

/// Adds what says how things are drawn, wherever they are drawn.
void AddStyleOptions(CLI::App& command, PictureOptions& options);

}  // namespace tool
