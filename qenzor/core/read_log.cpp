#include <algorithm>
#include <memory>
#include <utility>

#include "qenzor/core/chunk_factory.h"
#include "qenzor/core/read_log_impl.h"
#include "qenzor/core/unknown_chunk.h"

namespace qenzor {

namespace {

// NOLINTNEXTLINE(cppcoreguidelines-avoid-non-const-global-variables)
thread_local CReadLog* t_log = nullptr;

/// Sets are the only chunks whose sub-chunks have numbers.
bool IsSet(const CAbstractChunk& chunk) {
  const CRuntimeClass* cls = &chunk.GetRuntimeClass();
  while (cls != nullptr && !cls->Name.starts_with("ChunkSet")) cls = cls->Base;
  return cls != nullptr;
}

/// Has note say something to the log, if there is one. What cannot be said is left out: the
/// reading has failed anyway.
template <class Say>
bool Tell(Say&& say) noexcept try {
  if (CReadLog* log = CReadLog::Get(); log != nullptr) say(*log);
  return false;
} catch (...) {
  return false;
}

}  // namespace

CReadLog::CReadLog(std::uint64_t front) noexcept
    : m_front(front), m_before(std::exchange(t_log, this)) {}

CReadLog::~CReadLog() { t_log = m_before; }

CReadLog* CReadLog::Get() noexcept { return t_log; }

void CReadLog::Note(FailureKind kind, std::uint64_t position, CString reason) {
  if (m_failure.has_value()) return;
  Failure failure;
  failure.Kind = kind;
  failure.Offset = position - m_front;
  failure.Reason = std::move(reason);
  m_failure = std::move(failure);
}

void CReadLog::Forget() noexcept {
  m_failure.reset();
  m_levels.clear();
}

void CReadLog::AddLevel(std::string_view tag) { m_levels.emplace_back(tag); }

void CReadLog::SetIndex(std::uint32_t index) {
  if (!m_levels.empty()) m_levels.back() += "[" + std::to_string(index) + "]";
}

std::optional<Failure> CReadLog::Take() {
  if (m_failure.has_value()) {
    // As elsewhere, the middle of a very long path is left out.
    constexpr std::size_t kMostLevels = 12;
    if (m_levels.size() > kMostLevels) {
      const auto first = m_levels.begin() + kMostLevels / 2;
      *first = "…";
      m_levels.erase(first + 1, m_levels.end() - kMostLevels / 2);
    }
    std::for_each(m_levels.rbegin(), m_levels.rend(), [this](const CString& level) {
      m_failure->ChunkPath += (m_failure->ChunkPath.empty() ? "" : "/") + level;
    });
  }
  m_levels.clear();
  return std::exchange(m_failure, std::nullopt);
}

bool NoteShortField(CFile& file, std::string_view tag, std::uint64_t size, std::uint64_t there) {
  return Tell([&](CReadLog& log) {
    log.Note(FailureKind::kDamaged, file.GetPosition() - (file.ReadsAsMemory() ? 0 : there),
             CString(tag) + " takes " + std::to_string(size) + " bytes, but only " +
                 std::to_string(there) + " are there");
  });
}

bool NoteTooLongText(CFile& file, std::string_view tag, std::uint32_t size, std::uint32_t most) {
  return Tell([&](CReadLog& log) {
    log.Note(FailureKind::kDamaged, file.GetPosition() - 2,
             "the block of " + CString(tag) + " has " + std::to_string(size) + " bytes, at most " +
                 std::to_string(most) + " are taken");
  });
}

bool NoteTooDeep(CFile& file, std::uint32_t fields) {
  return Tell([&](CReadLog& log) {
    log.Note(FailureKind::kDamaged, file.GetPosition() - fields - CChunkHeader::kSize,
             "chunks nest more than " + std::to_string(kMaxChunkDepth) + " deep");
  });
}

bool NoteWrongSize(CFile& file, std::uint32_t data_size, std::uint32_t fields, std::uint32_t left) {
  return Tell([&](CReadLog& log) {
    const std::string size = std::to_string(data_size);
    log.Note(FailureKind::kDamaged, file.GetPosition() - fields - CChunkHeader::kSize,
             fields > data_size
                 ? "the fields take " + std::to_string(fields) + " bytes, the data size is " + size
                 : "truncated: the data size is " + size + ", but only " +
                       std::to_string(std::uint64_t{fields} + left) + " bytes follow");
  });
}

bool NoteSubChunk(CFile& file, const CAbstractChunk& parent, std::uint32_t index,
                  std::uint32_t left) {
  return Tell([&](CReadLog& log) {
    if (left < CChunkHeader::kSize) {
      log.Forget();
      log.Note(FailureKind::kDamaged, file.GetPosition(),
               std::to_string(left) + " bytes at the end of the data are too few for a chunk");
    } else if (!log.HasReason()) {
      log.Note(FailureKind::kDamaged, file.GetPosition(),
               "truncated: " + std::to_string(left) + " bytes of the data are missing");
    } else if (IsSet(parent)) {
      log.SetIndex(index);
    }
  });
}

bool NoteOverrun(CFile& file, const CAbstractChunk& parent, const CChunkHeader& last,
                 std::uint32_t index, std::uint32_t excess) {
  return Tell([&](CReadLog& log) {
    log.Note(FailureKind::kDamaged, file.GetPosition() - last.DataSize - CChunkHeader::kSize,
             "runs past the end of its parent: the data size is " + std::to_string(last.DataSize) +
                 ", but only " + std::to_string(last.DataSize - excess) + " bytes follow");
    const std::unique_ptr<CAbstractChunk> chunk(CChunkFactory::CreateInstance(last));
    if (chunk == nullptr) return;
    NoteLevel(*chunk);
    if (IsSet(parent)) log.SetIndex(index);
  });
}

bool NoteLevel(const CAbstractChunk& chunk) {
  return Tell([&](CReadLog& log) {
    log.AddLevel(class_cast<CUnKnownChunk>(&chunk) != nullptr
                     ? "chunk " + std::to_string(chunk.GetHeader().ChunkId)
                     : CString(chunk.GetRuntimeClass().Name));
  });
}

bool NoteNoMemory(CFile& file) noexcept {
  return Tell([&](CReadLog& log) {
    log.Forget();
    log.Note(FailureKind::kOutOfMemory, file.GetPosition(), "out of memory");
  });
}

}  // namespace qenzor
