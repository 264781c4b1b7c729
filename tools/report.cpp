#include "report.h"

#include <cstdio>

#include "failure.h"

namespace tool {

namespace {

// NOLINTNEXTLINE(misc-no-recursion): as deep as our own report
void AppendLines(std::string& text, const Json& node, const std::string& indent) {
  for (const auto& [name, value] : node.items()) {
    text += indent + name + ":";
    if (value.is_object()) {
      text += '\n';
      AppendLines(text, value, indent + "  ");
    } else if (value.is_array() && (value.empty() || !value.front().is_object())) {
      for (const Json& item : value) text += ' ' + item.dump();
      text += '\n';
    } else if (value.is_array()) {
      text += '\n';
      for (const Json& item : value) {
        text += indent + "  -\n";
        AppendLines(text, item, indent + "    ");
      }
    } else {
      text += ' ' + (value.is_string() ? value.get<std::string>() : value.dump()) + '\n';
    }
  }
}

}  // namespace

void PrintText(const std::string& text) {
  if (std::fwrite(text.data(), 1, text.size(), stdout) != text.size() || std::fflush(stdout) != 0)
    throw CFailure("standard output", "cannot be written: " + SystemReason());
}

void PrintReport(const Json& report, bool as_json) {
  std::string text;
  if (as_json)
    text = report.dump(2, ' ', false, Json::error_handler_t::replace) + '\n';
  else
    AppendLines(text, report, "");
  PrintText(text);
}

}  // namespace tool
