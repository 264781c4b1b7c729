#include "input.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <optional>
#include <string_view>
#include <system_error>
#include <utility>

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

std::string_view TextOf(const std::vector<std::uint8_t>& bytes) {
  std::string_view text(reinterpret_cast<const char*>(bytes.data()), bytes.size());
  if (text.starts_with("\xEF\xBB\xBF")) text.remove_prefix(3);
  return text;
}

bool BeginsAsXml(std::string_view text) {
  const std::size_t at = text.find_first_not_of(" \t\r\n");
  return at != std::string_view::npos && text[at] == '<';
}

/// The tag of the first element, past declarations, comments and white space; nothing if the bytes
/// do not begin as XML does.
std::optional<std::string_view> FindRootTag(const std::vector<std::uint8_t>& bytes) {
  std::string_view text = TextOf(bytes);
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

/// Bytes that are looked at before any more are read.
constexpr std::size_t kFrontSize = 65536;
/// The most that a document can have (its sizes have 32 bits).
constexpr std::uint64_t kMaxSize = 0xFFFFFFFF;
/// The most that may follow the root chunk: whatever of it a reader may look at is much less.
constexpr std::uint64_t kMaxTail = 16U << 20U;

constexpr std::size_t InfoSizeOf(BinaryKind kind) {
  return kind == BinaryKind::kQen ? qenzor::PackedSize<qenzor::QenFileInfo>()
                                  : qenzor::PackedSize<qenzor::ZorFileInfo>();
}

/// The most bytes that a document with this front is read with.
std::uint64_t MaxSizeOf(const Input& input, BinaryKind kind) {
  const std::size_t at = InfoSizeOf(kind);
  if (input.Bytes.size() < at + qenzor::CChunkHeader::kSize) return kMaxSize;
  const auto root = qenzor::little_endian::Load<std::uint32_t>(input.Bytes.data() + at + 4);
  return std::min(kMaxSize, at + qenzor::CChunkHeader::kSize + root + kMaxTail);
}

/// Reads a file in two steps: its front, then the rest.
class CInputReader {
 public:
  explicit CInputReader(const std::string& path)
      : m_input{path == "-" ? "standard input" : path, path, false, 0, {}},
        m_file(path == "-" ? stdin : std::fopen(path.c_str(), "rb")) {
    if (m_file == nullptr) Fail();
    std::error_code error;
    m_input.IsRegular = path != "-" && std::filesystem::is_regular_file(path, error);
    if (m_input.IsRegular) m_input.Size = std::filesystem::file_size(path, error);
    ReadUpTo(kFrontSize);
  }

  Input& GetInput() { return m_input; }
  /// The rest, unless the front is enough. There must be no more than most in all.
  Input Finish(bool front_is_enough, std::uint64_t most) {
    if (m_input.Size > most) FailTooLong(most);
    if (m_input.IsRegular && front_is_enough) return std::move(m_input);
    m_input.Bytes.reserve(m_input.Size);
    ReadUpTo(most + 1);
    m_input.Size = m_input.Bytes.size();
    if (m_input.Size > most) FailTooLong(most);
    return std::move(m_input);
  }

 private:
  [[noreturn]] void Fail() const {
    throw CFailure(m_input.Name, std::generic_category().message(errno));
  }
  [[noreturn]] void FailTooLong(std::uint64_t most) const {
    throw CFailure(m_input.Name, most == kMaxSize || m_input.Size > kMaxSize
                                     ? "longer than a document can be (4 GiB)"
                                     : "goes on for more than 16 MiB after the document's end");
  }
  void ReadUpTo(std::uint64_t size) {
    std::array<std::uint8_t, kFrontSize> block;
    std::size_t count = 1;
    while (m_input.Bytes.size() < size && count > 0) {
      count = std::fread(block.data(), 1,
                         std::min<std::uint64_t>(block.size(), size - m_input.Bytes.size()),
                         m_file.get());
      m_input.Bytes.insert(m_input.Bytes.end(), block.begin(), block.begin() + count);
    }
    if (std::ferror(m_file.get()) != 0) Fail();
  }

  Input m_input;
  std::unique_ptr<std::FILE, FileCloser> m_file;
};

}  // namespace

Input ReadInput(const std::string& path, const std::string& asked, Need need) {
  CInputReader reader(path);
  const Input& input = reader.GetInput();
  const bool hides_root = BeginsAsXml(TextOf(input.Bytes)) && !FindRootTag(input.Bytes);
  if (hides_root) return reader.Finish(false, kMaxSize);
  const DocumentKind kind = FindKind(input, asked);
  if (kind.IsXml) return reader.Finish(true, kMaxSize);
  return reader.Finish(need == Need::kFront, MaxSizeOf(input, kind.Kind));
}

Input ReadXmlInput(const std::string& path) {
  CInputReader reader(path);
  Input& input = reader.GetInput();
  if (BeginsAsXml(TextOf(input.Bytes)))
    return reader.Finish(FindRootTag(input.Bytes).has_value(), kMaxSize);
  // The parser shall say what is wrong with the front; the rest is not worth reading.
  input.IsRegular = false;
  return std::move(input);
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
  if (HasIdAt(input.Bytes, InfoSizeOf(BinaryKind::kQen), qenzor::CQenMapData::kChunkId))
    return {BinaryKind::kQen, false};
  if (HasIdAt(input.Bytes, InfoSizeOf(BinaryKind::kZor), qenzor::CZorDrawData::kChunkId))
    return {BinaryKind::kZor, false};
  if (xml_kind.has_value()) return {*xml_kind, true};
  const std::size_t dot = input.Path.rfind('.');
  const std::string extension = dot == std::string::npos ? "" : input.Path.substr(dot + 1);
  if (const auto kind = KindOfName(extension, "qen", "zor"); kind.has_value())
    return {*kind, false};
  if (extension == "xml" || root.has_value())
    throw CUnknownKind(input.Name, root.has_value() ? "the root element is neither Qen nor Zor"
                                                    : "byte 0: no XML element stands at the front");
  throw CUnknownKind(input.Name, "neither a map-project nor a draw-data document (see --kind)");
}

}  // namespace tool
