#pragma once

// How documents of either kind, binary or XML, are read with a reason for every failure. Kind names
// what differs.

#include <cerrno>
#include <memory>
#include <new>
#include <span>
#include <system_error>
#include <utility>
#include <variant>

#include "qenzor/core/chunk_header.h"
#include "qenzor/core/fields.h"
#include "qenzor/core/read_log_impl.h"
#include "qenzor/core/result.h"
#include "qenzor/document.h"
#include "qenzor/platform/memory_budget_impl.h"
#include "qenzor/platform/watched_file_impl.h"
#include "qenzor/platform/window_file_impl.h"
#include "qenzor/text/xml_memory_impl.h"

namespace qenzor {

inline Failure FailureOf(FailureKind kind, CString reason) {
  Failure failure;
  failure.Kind = kind;
  failure.Reason = std::move(reason);
  return failure;
}

/// Applies the options to a file that is being read.
class CReadGuard {
 public:
  CReadGuard(const ReadOptions& options, std::uint64_t all) : m_options(options), m_all(all) {}

  /// Whether there is nothing to report and nothing to refuse.
  bool IsIdle() const noexcept {
    return !m_options.Progress && !m_options.Stop.stop_possible() &&
           m_options.MostBytes == ReadOptions::kNoLimit;
  }
  bool Hear(std::uint64_t done) {
    if (m_options.Progress) m_options.Progress(done, m_all);
    m_isTooLong = done > m_options.MostBytes;
    m_isCancelled = m_options.Stop.stop_requested();
    return !m_isTooLong && !m_isCancelled;
  }
  /// The failure, unless the caller's limits or wish to stop are the reason for it.
  Failure Judge(const Failure& failure) const {
    if (m_isCancelled) return FailureOf(FailureKind::kCancelled, "the reading was asked to stop");
    return m_isTooLong ? TooLong() : failure;
  }
  Failure TooLong() const {
    return FailureOf(
        FailureKind::kTooLarge,
        "more than the " + std::to_string(m_options.MostBytes) + " bytes that are allowed");
  }
  bool IsTooLong(std::uint64_t length) const noexcept { return length > m_options.MostBytes; }
  /// Whether bytes have been kept back.
  bool HasRefused() const noexcept { return m_isTooLong || m_isCancelled; }

 private:
  const ReadOptions& m_options;
  std::uint64_t m_all;
  bool m_isTooLong = false;
  bool m_isCancelled = false;
};

/// Why nothing came of the document that stands at the front.
template <class Kind>
Failure ExplainDocument(const typename Kind::Document& document, std::optional<Failure> noted,
                        std::uint64_t read) {
  constexpr std::uint32_t kInfoSize = PackedSize<typename Kind::Info>();
  constexpr std::uint32_t kRootId = Kind::Root::kChunkId;
  Failure failure = std::move(noted).value_or(Failure());
  if (failure.Kind == FailureKind::kOutOfMemory) return failure;
  if (read < kInfoSize + CChunkHeader::kSize) {
    failure.Offset = read;
    failure.Reason = read < kInfoSize
                         ? "truncated: the file info takes " + std::to_string(kInfoSize) + " bytes"
                         : "truncated: the root chunk's header is missing";
  } else if (const std::uint32_t id = Kind::RootIdOf(document); id != kRootId) {
    failure =
        FailureOf(FailureKind::kNotSuchDocument, "the root chunk has id " + std::to_string(id) +
                                                     ", not " + std::to_string(kRootId));
    failure.Offset = kInfoSize;
  } else if (failure.Reason.empty()) {
    failure.Offset = read;
    failure.Reason = "breaks off";
  }
  if (failure.ChunkPath.empty()) failure.ChunkPath = Kind::Root::kTag;
  return failure;
}

/// Reads the document at the file's position.
template <class Kind>
Result<typename Kind::Document> ReadOpenFile(CFile& file) {
  const std::uint64_t front = file.GetPosition();
  CReadLog log(front);
  auto document = std::make_unique<typename Kind::Document>();
  if (document->Read(&file) && Kind::RootIdOf(*document) == Kind::Root::kChunkId) return document;
  return ExplainDocument<Kind>(*document, log.Take(), file.GetPosition() - front);
}

/// The same from an open window.
template <class Kind>
Result<typename Kind::Document> ReadWindow(CWindowFile& window, const ReadOptions& options) {
  CReadGuard guard(options, window.IsLengthKnown() ? window.GetLeft() : 0);
  if (window.IsLengthKnown() && guard.IsTooLong(window.GetLeft())) return guard.TooLong();
  if (!guard.IsIdle()) window.SetWatch([&guard](std::uint64_t done) { return guard.Hear(done); });
  auto result = ReadOpenFile<Kind>(window);
  if (result) return result;
  if (const int error = window.GetError(); error != 0)
    return FailureOf(FailureKind::kCannotRead, std::generic_category().message(error));
  return guard.Judge(result.GetFailure());
}

/// What read gives, unless it takes more memory than the options allow. It may throw
/// std::bad_alloc.
template <class Read>
auto ReadWithin(const ReadOptions& options, Read&& read) -> decltype(read()) {
  CMemoryBudget budget(options.MostMemory);
  auto result = [&]() -> decltype(read()) {
    try {
      return read();
    } catch (const std::bad_alloc&) {
      return OutOfMemory({});
    }
  }();
  if (!budget.IsExceeded()) return result;
  Failure failure = result ? Failure() : result.GetFailure();
  failure.Kind = FailureKind::kTooLarge;
  failure.Reason = "takes more than the " + std::to_string(options.MostMemory) +
                   " bytes of memory that are allowed";
  return failure;
}

template <class FromPath, class FromBytes, class FromFile>
auto VisitSource(const CDocumentSource& source, FromPath&& from_path, FromBytes&& from_bytes,
                 FromFile&& from_file) {
  if (auto* const* file = std::get_if<CFile*>(&source.Get())) return from_file(*file);
  using Bytes = std::span<const std::uint8_t>;
  if (const auto* bytes = std::get_if<Bytes>(&source.Get())) return from_bytes(*bytes);
  const auto* view = std::get_if<std::string_view>(&source.Get());
  const CString path = view != nullptr ? CString(*view) : std::get<CString>(source.Get());
  auto result = from_path(path);
  if (result) return result;
  Failure failure = result.GetFailure();
  failure.Path = path;
  return decltype(result)(std::move(failure));
}

// The chunk form.

template <class Kind>
Result<typename Kind::Document> ReadPath(const CString& path, const ReadOptions& options) {
  CWindowFile window;
  errno = 0;
  if (window.Open(path, CFile::modeRead | CFile::typeBinary))
    return ReadWindow<Kind>(window, options);
  if (window.IsTooLong())
    return FailureOf(FailureKind::kTooLarge, "longer than a document can be (4 GiB)");
  return FailureOf(FailureKind::kCannotOpen, errno != 0 ? std::generic_category().message(errno)
                                                        : "neither a file nor a pipe");
}

template <class Kind>
Result<typename Kind::Document> ReadBytes(std::span<const std::uint8_t> bytes,
                                          const ReadOptions& options) {
  CWindowFile window;
  if (!window.OpenMemory(bytes))
    return FailureOf(FailureKind::kTooLarge, "longer than a document can be (4 GiB)");
  return ReadWindow<Kind>(window, options);
}

template <class Kind>
Result<typename Kind::Document> ReadFile(CFile& file, const ReadOptions& options) {
  CReadGuard guard(options, 0);
  if (guard.IsIdle()) return ReadOpenFile<Kind>(file);
  CWatchedFile watched(file, options.MostBytes,
                       [&guard](std::uint64_t done) { return guard.Hear(done); });
  auto result = ReadOpenFile<Kind>(watched);
  if (!result) return guard.Judge(result.GetFailure());
  return result;
}

template <class Kind>
Result<typename Kind::Document> ReadDocument(const CDocumentSource& source,
                                             const ReadOptions& options) {
  return ReadWithin(options, [&] {
    return VisitSource(
        source, [&](const CString& path) { return ReadPath<Kind>(path, options); },
        [&](std::span<const std::uint8_t> bytes) { return ReadBytes<Kind>(bytes, options); },
        [&](CFile* file) { return ReadFile<Kind>(*file, options); });
  });
}

/// The editable form of what is read.
template <class Kind>
Result<typename Kind::Edit> ReadEdit(const CDocumentSource& source, const ReadOptions& options) {
  return ReadWithin(options, [&]() -> Result<typename Kind::Edit> {
    const auto document = ReadDocument<Kind>(source, options);
    if (!document) return document.GetFailure();
    auto edit = std::make_unique<typename Kind::Edit>();
    Kind::Convert(*document, *edit);
    return edit;
  });
}

// XML. All is the number of bytes, 0 where it is not known.

template <class Kind>
Result<typename Kind::Edit> ReadXmlText(CFile& file, std::uint64_t all,
                                        const XmlReadOptions& options) {
  CReadGuard guard(options, all);
  if (guard.IsTooLong(all)) return guard.TooLong();
  if (guard.IsIdle()) return Kind::ReadXmlPieces(file, options);
  CWatchedFile watched(file, options.MostBytes,
                       [&guard](std::uint64_t done) { return guard.Hear(done); });
  const std::uint64_t front = file.GetPosition();
  auto result = Kind::ReadXmlPieces(watched, options);
  if (result && !guard.HasRefused()) guard.Hear(file.GetPosition() - front);
  // Text that is kept back may be text that nothing needs.
  if (guard.HasRefused()) return guard.Judge({});
  return result;
}

template <class Kind>
Result<typename Kind::Edit> ParseXml(std::string_view text, const XmlReadOptions& options) {
  CTextView file(text);
  return ReadWithin(options, [&] { return ReadXmlText<Kind>(file, text.size(), options); });
}

template <class Kind>
Result<typename Kind::Edit> ReadXmlPath(const CString& path, const XmlReadOptions& options) {
  CFile file;
  if (!file.Open(path, CFile::modeRead | CFile::typeBinary))
    return FailureOf(FailureKind::kCannotOpen, "the file cannot be opened");
  return ReadXmlText<Kind>(file, file.GetLength(), options);
}

template <class Kind>
Result<typename Kind::Edit> ReadXml(const CDocumentSource& source, const XmlReadOptions& options) {
  return ReadWithin(options, [&] {
    return VisitSource(
        source, [&](const CString& path) { return ReadXmlPath<Kind>(path, options); },
        [&](std::span<const std::uint8_t> bytes) {
          return ParseXml<Kind>({reinterpret_cast<const char*>(bytes.data()), bytes.size()},
                                options);
        },
        [&](CFile* file) { return ReadXmlText<Kind>(*file, 0, options); });
  });
}

}  // namespace qenzor
