// Where documents come from, and what they are.

#include <filesystem>
#include <limits>

#include "documents_impl.h"

namespace qenzor::python {

namespace {

template <class Kind>
Result<Document> Finish(Result<typename Kind::Chunks> document) {
  if (!document) return document.GetFailure();
  return std::unique_ptr<Document>(new ChunkDocument<Kind>(document.Take()));
}

/// The document of an edit form, which is given up.
template <class Kind, class Take>
Result<Document> FinishXml(Result<typename Kind::Edit> edit, const CString& path,
                           const Take& take) {
  if (!edit) return edit.GetFailure();
  if (auto storable = CheckStorable(*edit, StoredForm::kXml); !storable) {
    Failure failure = storable.GetFailure();
    failure.Path = path;
    return failure;
  }
  std::unique_ptr<typename Kind::Chunks> document(take(*edit));
  if (document == nullptr) return NoMemory();
  return std::unique_ptr<Document>(new ChunkDocument<Kind>(std::move(document)));
}

// What a source is.

constexpr std::size_t kFrontSize = 65536;

bool HasIdAt(std::span<const std::uint8_t> bytes, std::size_t at, std::uint32_t id) {
  return bytes.size() >= at + sizeof(id) &&
         little_endian::Load<std::uint32_t>(bytes.data() + at) == id;
}

std::string_view TextOf(std::span<const std::uint8_t> bytes) {
  return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

/// The tag of the first element, past declarations, comments and white space; nothing if the bytes
/// do not begin as XML does.
std::optional<std::string_view> FindRootTag(std::string_view text) {
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

struct Format {
  BinaryKind Kind;
  bool IsXml;
};

std::optional<Format> FindFormat(std::span<const std::uint8_t> front, const ReadChoice& choice) {
  const auto root = FindRootTag(TextOf(front));
  std::optional<BinaryKind> xml_kind;
  if (root == "Qen") xml_kind = BinaryKind::kQen;
  if (root == "Zor") xml_kind = BinaryKind::kZor;
  if (choice.Kind.has_value()) return Format{*choice.Kind, xml_kind.has_value()};
  if (HasIdAt(front, PackedSize<QenFileInfo>(), CQenMapData::kChunkId))
    return Format{BinaryKind::kQen, false};
  if (HasIdAt(front, PackedSize<ZorFileInfo>(), CZorDrawData::kChunkId))
    return Format{BinaryKind::kZor, false};
  if (xml_kind.has_value()) return Format{*xml_kind, true};
  return std::nullopt;
}

Failure UnknownFormat(const Source& source) {
  Failure failure = FailureOf(FailureKind::kNotSuchDocument,
                              "neither a map project nor draw data, binary or XML");
  failure.Offset = 0;
  failure.Path = source.Path.value_or("");
  return failure;
}

/// So many bytes of the file, or all there are.
Result<std::vector<std::uint8_t>> LoadFile(const CString& path, std::size_t most) {
  CFile file;
  if (!file.Open(path, CFile::modeRead | CFile::typeBinary)) {
    Failure failure = ReadQen(path).GetFailure();
    failure.Kind = FailureKind::kCannotOpen;
    return failure;
  }
  auto bytes = std::make_unique<std::vector<std::uint8_t>>();
  while (bytes->size() < most) {
    const std::size_t have = bytes->size();
    const auto step = static_cast<std::uint32_t>(std::min(most - have, kFrontSize));
    bytes->resize(have + step);
    const std::uint32_t count = file.Read(bytes->data() + have, step);
    bytes->resize(have + count);
    if (count == 0) break;
  }
  return bytes;
}

template <class From>
Result<Document> ReadAs(const From& from, const Format& format, const CString& path,
                        XmlEncoding encoding) {
  XmlReadOptions options;
  options.Encoding = encoding;
  const auto text = [&] {
    if constexpr (std::is_same_v<From, CString>)
      return from;
    else
      return TextOf(from);
  }();
  constexpr bool kIsPath = std::is_same_v<From, CString>;
  if (!format.IsXml)
    return format.Kind == BinaryKind::kQen ? Finish<QenKind>(ReadQen(from))
                                           : Finish<ZorKind>(ReadZor(from));
  if (format.Kind == BinaryKind::kQen) {
    auto edit = [&] {
      if constexpr (kIsPath)
        return ReadQenXml(text, options);
      else
        return ParseQenXml(text, options);
    }();
    return FinishXml<QenKind>(std::move(edit), path, [](CQenEdit& e) { return e.TakeQenData(); });
  }
  auto edit = [&] {
    if constexpr (kIsPath)
      return ReadZorXml(text, options);
    else
      return ParseZorXml(text, options);
  }();
  return FinishXml<ZorKind>(std::move(edit), path, [](CZorEdit& e) { return e.TakeZorData(); });
}

}  // namespace

Result<Document> ReadAny(const Source& source, const ReadChoice& choice) try {
  const CString path = source.Path.value_or("");
  std::unique_ptr<std::vector<std::uint8_t>> loaded;
  std::span<const std::uint8_t> bytes = source.Bytes;
  std::error_code error;
  const bool is_regular = source.Path.has_value() && std::filesystem::is_regular_file(path, error);
  if (source.Path.has_value()) {
    auto front = LoadFile(path, is_regular ? kFrontSize : std::numeric_limits<std::size_t>::max());
    if (!front) return front.GetFailure();
    loaded = front.Take();
    bytes = *loaded;
  }
  const auto format = FindFormat(bytes.first(std::min(bytes.size(), kFrontSize)), choice);
  if (!format.has_value()) return UnknownFormat(source);
  auto document = is_regular ? ReadAs(path, *format, path, choice.Encoding)
                             : ReadAs(bytes, *format, path, choice.Encoding);
  if (document) return document;
  Failure failure = document.GetFailure();
  failure.Path = path;
  return failure;
} catch (const std::bad_alloc&) {
  return NoMemory();
}

Result<Content> LoadAny(const Source& source, const ReadChoice& choice) try {
  auto content = std::make_unique<Content>();
  if (source.Path.has_value()) {
    auto bytes = LoadFile(*source.Path, std::numeric_limits<std::size_t>::max());
    if (!bytes) return bytes.GetFailure();
    content->Bytes = std::move(*bytes);
  } else {
    content->Bytes.assign(source.Bytes.begin(), source.Bytes.end());
  }
  const std::span<const std::uint8_t> all = content->Bytes;
  const auto format = FindFormat(all.first(std::min(all.size(), kFrontSize)), choice);
  if (!format.has_value()) return UnknownFormat(source);
  content->Kind = format->Kind;
  content->IsXml = format->IsXml;
  return content;
} catch (const std::bad_alloc&) {
  return NoMemory();
}

}  // namespace qenzor::python
