#include "input.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <optional>
#include <string_view>
#include <utility>

#include "qenzor/core/coding.h"
#include "qenzor/core/fields.h"
#include "qenzor/qen/qen.h"
#include "qenzor/zor/zor.h"

namespace tool {

namespace {

/// An open file, or standard input, which stays open.
class CDescriptor {
 public:
  explicit CDescriptor(const std::string& path)
      : m_is_standard(path == "-"),
        m_file(m_is_standard ? STDIN_FILENO : ::open(path.c_str(), O_RDONLY | O_CLOEXEC)) {}
  ~CDescriptor() {
    if (!m_is_standard && m_file >= 0) ::close(m_file);
  }
  CDescriptor(const CDescriptor&) = delete;
  CDescriptor& operator=(const CDescriptor&) = delete;

  bool IsOpen() const { return m_file >= 0; }
  /// The size of a regular file.
  std::optional<std::uint64_t> FindSize() const {
    struct stat status {};
    if (m_is_standard || ::fstat(m_file, &status) != 0 || !S_ISREG(status.st_mode))
      return std::nullopt;
    return static_cast<std::uint64_t>(status.st_size);
  }
  /// As many bytes as there are, at most size; 0 at the end, below 0 when that fails.
  ssize_t Read(std::uint8_t* bytes, std::size_t size) const {
    ssize_t count = 0;
    do count = ::read(m_file, bytes, size);
    while (count < 0 && errno == EINTR);
    return count;
  }

 private:
  bool m_is_standard;
  int m_file;
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

/// Whether the declaration at the front ends with a tag.
bool HasOpenDeclaration(std::string_view text) {
  const std::size_t end = text.find('>');
  return text.starts_with("<?xml") && end != std::string_view::npos && text[end - 1] != '?';
}

bool IsUtf16(const std::vector<std::uint8_t>& bytes) {
  return bytes.size() > 1 && bytes[0] + bytes[1] == 0xFF + 0xFE &&
         (bytes[0] == 0xFF || bytes[0] == 0xFE);
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
      : m_input{path == "-" ? "standard input" : path, path, false, 0, {}}, m_file(path) {
    if (!m_file.IsOpen()) Fail();
    const std::optional<std::uint64_t> size = m_file.FindSize();
    m_input.IsRegular = size.has_value();
    m_input.Size = size.value_or(0);
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
  [[noreturn]] void Fail() const { throw CFailure(m_input.Name, SystemReason()); }
  [[noreturn]] void FailTooLong(std::uint64_t most) const {
    throw CFailure(m_input.Name, most == kMaxSize || m_input.Size > kMaxSize
                                     ? "longer than a document can be (4 GiB)"
                                     : "goes on for more than 16 MiB after the document's end");
  }
  void ReadUpTo(std::uint64_t size) {
    std::vector<std::uint8_t>& bytes = m_input.Bytes;
    while (bytes.size() < size && !m_is_at_end) {
      const std::size_t before = bytes.size();
      // Where the size is known, no more is asked for: one call reads a small file.
      const std::uint64_t known = m_input.Size > before ? m_input.Size - before : kFrontSize;
      bytes.resize(before + std::min({size - before, known, std::uint64_t{kMostAtOnce}}));
      const ssize_t count = m_file.Read(bytes.data() + before, bytes.size() - before);
      if (count < 0) Fail();
      bytes.resize(before + static_cast<std::size_t>(count));
      m_is_at_end = count == 0 || (m_input.IsRegular && bytes.size() == m_input.Size);
    }
  }

  static constexpr std::size_t kMostAtOnce = std::size_t{1} << 20U;

  Input m_input;
  CDescriptor m_file;
  bool m_is_at_end = false;
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
  if (root.has_value())
    throw CUnknownKind(input.Name, "the outermost element is " + std::string(*root) +
                                       ", neither Qen nor Zor (case matters)" +
                                       (HasOpenDeclaration(TextOf(input.Bytes))
                                            ? "; the declaration at the front has no end (?>)"
                                            : ""));
  if (IsUtf16(input.Bytes))
    throw CUnknownKind(input.Name, "this is UTF-16 text; save it as Shift_JIS or UTF-8");
  if (extension == "xml") throw CUnknownKind(input.Name, "no XML element stands at the front");
  throw CUnknownKind(input.Name, "neither a map-project nor a draw-data document (see --kind)");
}

}  // namespace tool
