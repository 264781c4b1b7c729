// copy, to-xml, from-xml, and convert, which is one of them.

#include <algorithm>
#include <cctype>
#include <iostream>
#include <optional>
#include <span>

#include "commands.h"
#include "documents.h"
#include "losses.h"
#include "output.h"
#include "progress.h"

namespace tool {

namespace {

/// Saves a document through the form that is asked for.
template <class Kind>
void SaveThrough(const Input& input, const Options& options,
                 std::unique_ptr<typename Kind::Document> document) {
  const auto save = [&](auto&& content) {
    SaveOutput(input, options.Out, [&](const std::string& path) {
      return Kind::Save(std::forward<decltype(content)>(content), path);
    });
  };
  if (options.Via == "edit") {
    typename Kind::Edit edit;
    Kind::ToEdit(*document, edit);
    document.reset();
    return save(std::move(edit));
  }
  if (options.Via == "clone") document.reset(document->Clone());
  if (document == nullptr) throw CFailure(input.Name, "out of memory");
  save(*document);
}

DocumentKind FindBinaryKind(const Input& input, const Options& options) {
  const DocumentKind kind = FindKind(input, options.Kind);
  if (kind.IsXml) throw CFailure(input.Name, "is XML already (use from-xml)");
  return kind;
}

/// Whether the content is that of a binary document.
bool IsBinary(const Input& input) try {
  constexpr std::size_t kEnough = 64;
  Input content{input.Name, "", false, 0, {}};
  const std::span<const std::uint8_t> front(input.Bytes);
  const auto part = front.first(std::min(front.size(), kEnough));
  content.Bytes.assign(part.begin(), part.end());
  return !FindKind(content, "").IsXml;
} catch (const CUnknownKind&) {
  return false;
}

/// The kind of document that a file's name tells, or that it is XML.
struct NamedForm {
  std::optional<BinaryKind> Kind;
  bool IsXml = false;
};

NamedForm FormOfName(const std::string& path) {
  std::string extension = path.substr(std::min(path.rfind('.'), path.size()));
  std::ranges::transform(extension, extension.begin(),
                         [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  if (extension == ".qen") return {BinaryKind::kQen};
  if (extension == ".zor") return {BinaryKind::kZor};
  return {std::nullopt, extension == ".xml"};
}

int Copy(const Input& input, const Options& options, CProgress& progress) {
  return WithKind(FindBinaryKind(input, options).Kind, [&](auto kind) {
    using Kind = decltype(kind);
    auto document = ReadDocument<Kind>(input);
    progress.Stage("copying");
    SaveThrough<Kind>(input, options, std::move(document));
    return 0;
  });
}

int ToXml(const Input& input, const Options& options, CProgress& progress) {
  return WithKind(FindBinaryKind(input, options).Kind, [&](auto kind) {
    using Kind = decltype(kind);
    const auto document = ReadDocument<Kind>(input);
    progress.Stage("writing XML");
    SaveOutput(input, options.Out, [&](const std::string& path) {
      return Kind::SaveXml(*document, path, EncodingOf(options));
    });
    const std::string losses = DescribeLosses(input, Kind::kKind, EncodingOf(options));
    if (losses.empty()) return 0;
    progress.Wipe();
    std::cerr << Complaint(input.Name + ": " + losses);
    return options.Strict ? 1 : 0;
  });
}

int FromXml(const Input& input, const Options& options, CProgress& progress) {
  if (IsBinary(input))
    throw CFailure(input.Name, "is a binary document, not XML (copy and to-xml read those)");
  qenzor::XmlReadOptions reading;
  reading.Encoding = EncodingOf(options);
  reading.Warn = [&](std::string_view what) {
    progress.Wipe();
    std::cerr << Complaint(input.Name + ": warning: " + std::string(what) + " (see --encoding)");
  };
  qenzor::Failure failure;
  const auto convert = [&]<class Kind>(Kind /*kind*/) {
    auto edit = Kind::FromText(input, reading);
    if (!edit) {
      failure = edit.GetFailure();
      return false;
    }
    progress.Stage("writing");
    SaveOutput(input, options.Out,
               [&](const std::string& path) { return Kind::Save(std::move(*edit), path); });
    return true;
  };
  // What the front of the text looks like decides which kind is tried first; the parser decides
  // which it is.
  const auto looks = FindXmlKind(input, options.Kind);
  const bool zor_first = looks == BinaryKind::kZor;
  if (zor_first ? convert(ZorKind{}) : convert(QenKind{})) return 0;
  const bool is_other = failure.Kind == qenzor::FailureKind::kNotSuchDocument;
  if (is_other && options.Kind.empty()) {
    if (zor_first ? convert(QenKind{}) : convert(ZorKind{})) return 0;
  }
  const BinaryKind kind = looks.value_or(BinaryKind::kQen);
  const bool is_neither =
      options.Kind.empty() && failure.Kind == qenzor::FailureKind::kNotSuchDocument;
  throw CFailure(input.Name, DescribeXmlError(input, kind, failure, reading.Encoding) +
                                 (is_neither ? " or Zor (case matters)" : ""));
}

}  // namespace

int RunCopy(const Options& options) {
  CProgress progress(options.Quiet);
  progress.Stage("reading");
  return Copy(ReadInput(options.In, options.Kind, Need::kFront), options, progress);
}

int RunToXml(const Options& options) {
  CProgress progress(options.Quiet);
  progress.Stage("reading");
  return ToXml(ReadInput(options.In, options.Kind, Need::kFront), options, progress);
}

int RunFromXml(const Options& options) {
  CProgress progress(options.Quiet);
  progress.Stage("reading XML");
  return FromXml(ReadXmlInput(options.In), options, progress);
}

int RunConvert(const Options& options) {
  const NamedForm out = FormOfName(options.Out);
  if (!out.IsXml && !out.Kind.has_value())
    throw CWrongUsage("convert: " + options.Out + " does not end in .qen, .zor or .xml, which " +
                      "tells what to make (copy, to-xml and from-xml take any name)");
  CProgress progress(options.Quiet);
  progress.Stage("reading");
  const Input input = ReadInput(options.In, options.Kind, Need::kFront);
  const DocumentKind in = FindKind(input, options.Kind);
  if (out.Kind.has_value() && *out.Kind != in.Kind)
    throw CFailure(input.Name, std::string("is ") + KindWord(in.Kind) + ", but the name of " +
                                   options.Out + " says " + KindWord(*out.Kind));
  if (in.IsXml && out.IsXml)
    throw CFailure(input.Name, "is XML already (convert makes .qen or .zor of it)");
  return in.IsXml    ? FromXml(input, options, progress)
         : out.IsXml ? ToXml(input, options, progress)
                     : Copy(input, options, progress);
}

}  // namespace tool
