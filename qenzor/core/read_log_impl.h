#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include "qenzor/core/result.h"
#include "qenzor/platform/file.h"

namespace qenzor {

class CAbstractChunk;
class CChunkHeader;

/// Collects why the reading that is under way on its thread fails, and where. The signatures of the
/// reading operations are fixed and leave no room for it. They look for the log only once something
/// cannot be read, so reading what can be read costs nothing; then every chunk around adds its
/// level of the path.
class CReadLog {
 public:
  /// Collects, while it lives, for a document that begins at the position.
  explicit CReadLog(std::uint64_t front) noexcept;
  ~CReadLog();
  CReadLog(const CReadLog&) = delete;
  CReadLog& operator=(const CReadLog&) = delete;

  /// The one that collects on this thread, or null.
  static CReadLog* Get() noexcept;

  /// The first reason counts. The position is the file's.
  void Note(FailureKind kind, std::uint64_t position, CString reason);
  /// Forgets what was noted, for a reason that is nearer to the root of the matter.
  void Forget() noexcept;
  bool HasReason() const noexcept { return m_failure.has_value(); }
  /// Adds the next level outwards.
  void AddLevel(std::string_view tag);
  /// Says which element of a set the outermost level is.
  void SetIndex(std::uint32_t index);

  /// What was noted; nothing if no reason was.
  std::optional<Failure> Take();

 private:
  std::uint64_t m_front;
  CReadLog* m_before;
  std::optional<Failure> m_failure;
  std::vector<CString> m_levels;  ///< from the inside
};

// What the reading code calls where something cannot be read: nothing happens without a log. All
// give false.

bool NoteShortField(CFile& file, std::string_view tag, std::uint64_t size, std::uint64_t there);
bool NoteTooLongText(CFile& file, std::string_view tag, std::uint32_t size, std::uint32_t most);
bool NoteNoMemory(CFile& file) noexcept;
/// The file stands behind the fields, which took so many bytes.
bool NoteTooDeep(CFile& file, std::uint32_t fields);
bool NoteWrongSize(CFile& file, std::uint32_t data_size, std::uint32_t fields, std::uint32_t left);
/// The sub-chunk at the index could not be read; so many bytes of the data were left for it.
bool NoteSubChunk(CFile& file, const CAbstractChunk& parent, std::uint32_t index,
                  std::uint32_t left);
/// The last sub-chunk, which the file stands behind, takes so many bytes too many.
bool NoteOverrun(CFile& file, const CAbstractChunk& parent, const CChunkHeader& last,
                 std::uint32_t index, std::uint32_t excess);
/// Nothing came of the chunk.
bool NoteLevel(const CAbstractChunk& chunk);

}  // namespace qenzor
