#include "input.h"

#include <array>
#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <optional>
#include <string_view>
#include <system_error>

#include "failure.h"
#include "qenzor/core/coding.h"
#include "qenzor/core/fields.h"
#include "qenzor/qen/qen.h"
#include "qenzor/zor/zor.h"

namespace tool {

namespace {

struct FileCloser {
  void operator()(std::FILE* file) const {
    if (file != stdin) static_cast<void>(std::fclose(file));
  }
};

bool HasIdAt(const std::vector<std::uint8_t>& bytes, std::size_t at, std::uint32_t id) {
  return bytes.size() >= at + 4 &&
         qenzor::little_endian::Load<std::uint32_t>(bytes.data() + at) == id;
}

/// The tag of the first element, past declarations, comments and white space; nothing if the bytes
/// do not begin as XML does.
std::optional<std::string_view> FindRootTag(const std::vector<std::uint8_t>& bytes) {
  std::string_view text(reinterpret_cast<const char*>(bytes.data()), bytes.size());
  if (text.starts_with("\xEF\xBB\xBF")) text.remove_prefix(3);
  while (true) {
    const std::size_t at = text.find_first_not_of(" \t\r\n");
    if (at == std::string_view::npos || text[at] != '<') return std::nullopt;
    text.remove_prefix(at + 1);
    if (!text.starts_with('?') && !text.starts_with('!'))
      return text.substr(0, text.find_first_of(" \t\r\n/>"));
    const std::string_view end = text.starts_with("!--") ? "-->" : ">";
    const std::size_t past = text.find(end);
    if (past == std::string_view::npos) return std::nullopt;
    text.remove_prefix(past + end.size());
  }
}

std::optional<BinaryKind> KindOfName(std::string_view name, std::string_view qen,
                                     std::string_view zor) {
  if (name == qen) return BinaryKind::kQen;
  if (name == zor) return BinaryKind::kZor;
  return std::nullopt;
}

}  // namespace

Input ReadInput(const std::string& path) {
  Input input{path == "-" ? "standard input" : path, path, false, {}};
  std::error_code ignored;
  input.IsRegular = path != "-" && std::filesystem::is_regular_file(path, ignored);
  const std::unique_ptr<std::FILE, FileCloser> file(path == "-" ? stdin
                                                                : std::fopen(path.c_str(), "rb"));
  if (file == nullptr) throw CFailure(input.Name, std::generic_category().message(errno));
  std::array<std::uint8_t, 65536> block;
  while (const std::size_t count = std::fread(block.data(), 1, block.size(), file.get()))
    input.Bytes.insert(input.Bytes.end(), block.begin(), block.begin() + count);
  if (std::ferror(file.get()) != 0)
    throw CFailure(input.Name, std::generic_category().message(errno));
  if (input.Bytes.size() > 0xFFFFFFFFU)
    throw CFailure(input.Name, "longer than a document can be (4 GiB)");
  return input;
}

std::optional<BinaryKind> FindXmlKind(const Input& input, const std::string& asked) {
  if (const auto kind = KindOfName(asked, "qen", "zor"); kind.has_value()) return kind;
  const auto root = FindRootTag(input.Bytes);
  return root.has_value() ? KindOfName(*root, "Qen", "Zor") : std::nullopt;
}

DocumentKind FindKind(const Input& input, const std::string& asked) {
  const auto root = FindRootTag(input.Bytes);
  const auto xml_kind = root.has_value() ? KindOfName(*root, "Qen", "Zor") : std::nullopt;
  const auto asked_kind = KindOfName(asked, "qen", "zor");
  if (asked_kind.has_value()) return {*asked_kind, xml_kind.has_value()};
  constexpr std::size_t kQenRoot = qenzor::PackedSize<qenzor::QenFileInfo>();
  constexpr std::size_t kZorRoot = qenzor::PackedSize<qenzor::ZorFileInfo>();
  if (HasIdAt(input.Bytes, kQenRoot, qenzor::CQenMapData::kChunkId))
    return {BinaryKind::kQen, false};
  if (HasIdAt(input.Bytes, kZorRoot, qenzor::CZorDrawData::kChunkId))
    return {BinaryKind::kZor, false};
  if (xml_kind.has_value()) return {*xml_kind, true};
  const std::size_t dot = input.Path.rfind('.');
  const std::string extension = dot == std::string::npos ? "" : input.Path.substr(dot + 1);
  if (const auto kind = KindOfName(extension, "qen", "zor"); kind.has_value())
    return {*kind, false};
  if (extension == "xml" || root.has_value())
    throw CFailure(input.Name, root.has_value() ? "the root element is neither Qen nor Zor"
                                                : "byte 0: no XML element stands at the front");
  throw CFailure(input.Name, "neither a map-project nor a draw-data document (see --kind)");
}

}  // namespace tool
