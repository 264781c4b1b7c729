#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "qenzor/view/filters.h"
#include "qenzor/view/frame.h"

namespace CLI {
class App;
}

namespace tool {

/// What pictures are asked to be like.
struct PictureOptions {
  std::optional<double> Scale;
  std::optional<std::pair<double, double>> Size;  ///< in pixels
  double Dpi = 96;
  bool IsMercator = false;
  std::string Images;  ///< a folder
  std::map<std::uint8_t, std::string> Fonts;
  std::uint32_t Background = 0xFFFFFFFF;
  bool AllLabels = false;
  bool DefaultStyle = false;
  bool List = false;
};

/// What the command line asks for; each command looks at its own part.
struct Options {
  std::string Kind;  ///< "qen", "zor", or empty: found out
  std::string Via = "chunk";
  std::string Encoding = "shift_jis";  ///< of XML text: "shift_jis", "utf-8" or "auto"
  std::string In;
  std::string Out;
  std::string Images;  ///< folder in which check looks for images
  std::string Map;     ///< a map whose z-ids check compares
  std::string Draw;    ///< draw data whose z-ids check compares
  std::vector<std::string> Files;
  std::uint64_t MaxFindings = 1000;  ///< told of each kind and file
  std::vector<std::string> Only;     ///< codes or names of findings
  std::vector<std::string> Skip;
  bool ListCodes = false;
  bool RoundTrip = false;
  bool Geometry = false;
  bool Recursive = false;
  bool All = false;  ///< a terminal gets all findings too
  bool JsonLines = false;
  qenzor::Filters Filters;
  qenzor::FrameOptions Frame;
  PictureOptions Picture;
  std::string Changes;     ///< a change document
  std::string SchemaForm;  ///< "xml" or "json"
  std::string SchemaOf;    ///< what the schema describes
  bool Reverse = false;
  bool Partial = false;
  bool Json = false;
  bool Strict = false;
  bool Quiet = false;
};

// Each command returns the exit status, or throws CFailure.

int RunCopy(const Options& options);
int RunToXml(const Options& options);
int RunFromXml(const Options& options);
int RunConvert(const Options& options);
int RunInfo(const Options& options);
int RunCheck(const Options& options);
int RunSalvage(const Options& options);
int RunDiff(const Options& options);
int RunApply(const Options& options);
int RunSchema(const Options& options);

/// Adds to a command the option that says where a map's objects lie.
void AddFrameOption(CLI::App& command, Options& options);
/// Adds that and the filters that all commands take, which set the options' filters.
void AddFilterOptions(CLI::App& command, Options& options);
/// Says on standard error that no object passes the filters.
void TellNoMatch();

using Command = int (*)(const Options&);

/// Adds the commands that make pictures, where these are built; the one that is called is chosen.
void AddPictureCommands(CLI::App& app, Options& options, Command& chosen);
/// Adds the command that makes web pages, where these are built.
void AddPageCommands(CLI::App& app, Options& options, Command& chosen);

}  // namespace tool
