#pragma once

// How documents of either kind are read with a reason for every failure. Kind names what differs.

#include <cerrno>
#include <memory>
#include <new>
#include <span>
#include <system_error>
#include <utility>

#include "qenzor/core/chunk_header.h"
#include "qenzor/core/fields.h"
#include "qenzor/core/read_log_impl.h"
#include "qenzor/core/result.h"
#include "qenzor/document.h"
#include "qenzor/platform/watched_file_impl.h"
#include "qenzor/platform/window_file_impl.h"

namespace qenzor {

inline Failure FailureOf(FailureKind kind, CString reason) {
  Failure failure;
  failure.Kind = kind;
  failure.Reason = std::move(reason);
  return failure;
}

/// What stands between the options and a file that is being read: hears how far it has come.
class CReadGuard {
 public:
  CReadGuard(const ReadOptions& options, std::uint64_t all) : m_options(options), m_all(all) {}

  /// Nothing to hear of, and nothing to refuse, but what no document exceeds.
  bool IsIdle() const noexcept {
    return !m_options.Progress && !m_options.Stop.stop_possible() &&
           m_options.MostBytes >= ReadOptions().MostBytes;
  }
  bool Hear(std::uint64_t done) {
    if (m_options.Progress) m_options.Progress(done, m_all);
    m_isTooLong = done > m_options.MostBytes;
    m_isCancelled = m_options.Stop.stop_requested();
    return !m_isTooLong && !m_isCancelled;
  }
  /// Puts what the caller wanted before what came of it.
  Failure Judge(Failure failure) const {
    if (m_isCancelled) return FailureOf(FailureKind::kCancelled, "the reading was asked to stop");
    return m_isTooLong ? TooLong() : std::move(failure);
  }
  Failure TooLong() const {
    return FailureOf(
        FailureKind::kTooLarge,
        "more than the " + std::to_string(m_options.MostBytes) + " bytes that are allowed");
  }
  bool IsTooLong(std::uint64_t length) const noexcept { return length > m_options.MostBytes; }

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

inline Failure WithPath(Failure failure, const CString& path) {
  failure.Path = path;
  return failure;
}

template <class Kind>
Result<typename Kind::Document> ReadPath(const CString& path, const ReadOptions& options) try {
  CWindowFile window;
  errno = 0;
  if (!window.Open(path, CFile::modeRead | CFile::typeBinary)) {
    const bool is_open_refused = errno != 0;
    return WithPath(window.IsTooLong()
                        ? FailureOf(FailureKind::kTooLarge, "longer than a document can be (4 GiB)")
                        : FailureOf(FailureKind::kCannotOpen,
                                    is_open_refused ? std::generic_category().message(errno)
                                                    : "neither a file nor a pipe"),
                    path);
  }
  auto result = ReadWindow<Kind>(window, options);
  if (!result) return WithPath(result.GetFailure(), path);
  return result;
} catch (const std::bad_alloc&) {
  return WithPath(FailureOf(FailureKind::kOutOfMemory, "memory does not suffice"), path);
}

template <class Kind>
Result<typename Kind::Document> ReadBytes(std::span<const std::uint8_t> bytes,
                                          const ReadOptions& options) try {
  CWindowFile window;
  if (!window.OpenMemory(bytes))
    return FailureOf(FailureKind::kTooLarge, "longer than a document can be (4 GiB)");
  return ReadWindow<Kind>(window, options);
} catch (const std::bad_alloc&) {
  return FailureOf(FailureKind::kOutOfMemory, "memory does not suffice");
}

template <class Kind>
Result<typename Kind::Document> ReadFile(CFile& file, const ReadOptions& options) try {
  CReadGuard guard(options, 0);
  if (guard.IsIdle()) return ReadOpenFile<Kind>(file);
  CWatchedFile watched(file, options.MostBytes,
                       [&guard](std::uint64_t done) { return guard.Hear(done); });
  auto result = ReadOpenFile<Kind>(watched);
  if (!result) return guard.Judge(result.GetFailure());
  return result;
} catch (const std::bad_alloc&) {
  return FailureOf(FailureKind::kOutOfMemory, "memory does not suffice");
}

/// The editable form of what was read.
template <class Kind>
Result<typename Kind::Edit> ToEdit(Result<typename Kind::Document> document) try {
  if (!document) return document.GetFailure();
  auto edit = std::make_unique<typename Kind::Edit>();
  Kind::Convert(*document, *edit);
  return edit;
} catch (const std::bad_alloc&) {
  return FailureOf(FailureKind::kOutOfMemory, "memory does not suffice");
}

}  // namespace qenzor
