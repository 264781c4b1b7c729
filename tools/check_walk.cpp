#include "check_walk.h"

#include <algorithm>
#include <set>

#include "chunk_schema.h"
#include "qenzor/core/abstract_chunk.h"
#include "qenzor/core/coding.h"
#include "qenzor/qen/qen.h"
#include "qenzor/zor/zor.h"

namespace tool {

namespace {

constexpr std::uint64_t kHeaderSize = qenzor::CChunkHeader::kSize;

class CWalker {
 public:
  CWalker(std::span<const std::uint8_t> bytes, CheckResult& result)
      : m_bytes(bytes), m_result(result) {}

  void WalkDocument(std::uint64_t info_size, std::uint32_t root_id) {
    if (m_bytes.size() < info_size) {
      AddError(m_bytes.size(),
               "truncated: the file info takes " + std::to_string(info_size) + " bytes");
      return;
    }
    const ChunkSchema* root = FindSchema(root_id);
    m_path.emplace_back(root->Tag);
    if (m_bytes.size() - info_size < kHeaderSize) {
      AddError(m_bytes.size(), "truncated: the root chunk's header is missing");
      return;
    }
    const Header header = HeaderAt(info_size);
    if (header.Id != root_id)
      AddWarning(info_size, "the root chunk has id " + std::to_string(header.Id) + ", not " +
                                std::to_string(root_id));
    WalkChunk(info_size, m_bytes.size(), root, 1);
    const std::uint64_t end = info_size + kHeaderSize + header.Size;
    if (end < m_bytes.size())
      AddWarning(end,
                 std::to_string(m_bytes.size() - end) + " bytes after the root chunk are dropped");
    CheckIndices();
  }

 private:
  struct Header {
    std::uint32_t Id;
    std::uint32_t Size;
  };
  struct Reference {
    std::uint64_t Offset;
    std::string Path;
    std::string_view Tag;
    std::uint64_t Value;
  };
  /// What the walk of one chunk keeps in mind.
  struct Level {
    const ChunkSchema* Schema;
    std::uint64_t DeclaredCount = 0;
    std::uint64_t Kept = 0;
    std::set<std::uint32_t> Slots{};
    std::map<std::uint64_t, std::uint64_t> Keys{};
  };

  Header HeaderAt(std::uint64_t at) const {
    return {qenzor::little_endian::Load<std::uint32_t>(m_bytes.data() + at),
            qenzor::little_endian::Load<std::uint32_t>(m_bytes.data() + at + 4)};
  }

  /// The path of the chunk at hand; the root is left out of the paths below it.
  std::string Path() const {
    if (m_path.size() == 1) return m_path.front();
    std::string path;
    for (std::size_t i = 1; i < m_path.size(); ++i) path += (i > 1 ? "/" : "") + m_path[i];
    return path;
  }
  void AddError(std::uint64_t at, std::string reason) {
    m_result.Findings.push_back({true, at, Path(), std::move(reason)});
  }
  void AddWarning(std::uint64_t at, std::string reason) {
    if (m_dropped == 0) m_result.Findings.push_back({false, at, Path(), std::move(reason)});
  }

  // NOLINTBEGIN(misc-no-recursion): no deeper than chunks may nest

  /// Walks the chunk whose header stands at the offset, of which no more than the bytes below limit
  /// belong to it. False when the library would refuse it; the chunk at fault, or one inside, has
  /// then been reported.
  bool WalkChunk(std::uint64_t at, std::uint64_t limit, const ChunkSchema* schema,
                 std::uint32_t depth) {
    const Header header = HeaderAt(at);
    const std::uint64_t data = at + kHeaderSize;
    const std::uint64_t end = data + header.Size;
    Level level{schema};
    std::uint64_t next = data;
    if (schema != nullptr && !WalkBlock(at, std::min(end, limit), level, next)) return false;
    if (next > end) {
      AddError(at, "the fields take " + std::to_string(next - data) + " bytes, the data size is " +
                       std::to_string(header.Size));
      return false;
    }
    if (next < end && depth >= qenzor::kMaxChunkDepth) {
      AddError(at, "chunks nest more than " + std::to_string(qenzor::kMaxChunkDepth) + " deep");
      return false;
    }
    const bool whole = WalkSubChunks(next, end, limit, level, depth);
    if (whole && end > limit) {
      AddError(at,
               (limit == m_bytes.size() ? "truncated: the data size is "
                                        : "runs past the end of its parent: the data size is ") +
                   std::to_string(header.Size) + ", but only " + std::to_string(limit - data) +
                   " bytes follow");
      return false;
    }
    if (whole && schema != nullptr && schema->IsSet && level.DeclaredCount != level.Kept)
      AddWarning(data, "declares " + std::to_string(level.DeclaredCount) + " elements and holds " +
                           std::to_string(level.Kept));
    return whole;
  }

  bool WalkBlock(std::uint64_t at, std::uint64_t end, Level& level, std::uint64_t& next) {
    const std::uint64_t data = at + kHeaderSize;
    BlockWalk walk;
    walk.Bytes = m_bytes.subspan(
        data, (level.Schema->MayOverrun ? m_bytes.size() : std::max(end, data)) - data);
    walk.OnWarning = [&](std::uint64_t where, std::string reason) {
      AddWarning(data + where, std::move(reason));
    };
    walk.OnValue = [&](std::string_view tag, std::uint64_t where, std::uint64_t value) {
      if (tag.empty())
        level.DeclaredCount = value;
      else if (m_dropped == 0)
        TakeValue(tag, data + where, value);
    };
    if (!level.Schema->WalkBlock(walk)) {
      AddError(data + walk.At, walk.Error);
      return false;
    }
    next = data + level.Schema->Consumed(walk);
    return true;
  }

  void TakeValue(std::string_view tag, std::uint64_t at, std::uint64_t value) {
    if (tag == "ZId")
      m_result.ZIds.try_emplace(value, CheckResult::Place{at, Path()});
    else if (tag == "DrawInfoIdx" || tag == "MarkDataIdx")
      m_references.push_back({at, Path(), tag, value});
  }

  /// Walks sub-chunks until they fill the data; goes on behind one at fault as long as its size
  /// leaves no doubt where the next begins.
  bool WalkSubChunks(std::uint64_t next, std::uint64_t end, std::uint64_t limit, Level& level,
                     std::uint32_t depth) {
    bool whole = true;
    const std::uint64_t sub_limit = std::min(end, limit);
    while (next < end) {
      if (next >= sub_limit || sub_limit - next < kHeaderSize) {
        if (end > limit) return whole;  // cut short: reported by the chunk itself
        AddError(next, std::to_string(end - next) +
                           " bytes at the end of the data are too few for a chunk");
        return false;
      }
      whole = WalkSubChunk(next, sub_limit, level, depth) && whole;
      next += kHeaderSize + HeaderAt(next).Size;
    }
    if (level.Schema != nullptr) NoteSetSize(level);
    return whole;
  }

  bool WalkSubChunk(std::uint64_t at, std::uint64_t limit, Level& level, std::uint32_t depth) {
    const std::uint32_t id = HeaderAt(at).Id;
    const ChunkSchema* schema = FindSchema(id);
    const bool keeps = level.Schema != nullptr && level.Schema->Accepts(id);
    const bool is_elem = keeps && level.Schema->IsSet;
    std::string name = schema == nullptr ? "chunk " + std::to_string(id) : std::string(schema->Tag);
    if (is_elem) name += "[" + std::to_string(level.Kept) + "]";
    m_path.push_back(std::move(name));
    if (schema == nullptr)
      AddWarning(at, "unknown chunk id " + std::to_string(id) + ": dropped");
    else if (!keeps)
      AddWarning(at, "has no place here and is dropped");
    else if (!is_elem && !level.Slots.insert(id).second)
      AddWarning(at, "replaces an earlier one in the same place");
    else if (level.Schema->IsKeyed)
      CheckKey(at, limit, level);
    if (is_elem) ++level.Kept;
    if (!keeps) ++m_dropped;
    const bool whole = WalkChunk(at, limit, schema, depth + 1);
    if (!keeps) --m_dropped;
    m_path.pop_back();
    return whole;
  }

  // NOLINTEND(misc-no-recursion)

  /// The key of an element of the keyed set stands at the front of its data.
  void CheckKey(std::uint64_t at, std::uint64_t limit, Level& level) {
    if (limit - at < kHeaderSize + sizeof(std::uint64_t)) return;
    const auto key = qenzor::little_endian::Load<std::uint64_t>(m_bytes.data() + at + kHeaderSize);
    const auto [first, added] = level.Keys.try_emplace(key, at);
    if (!added)
      AddWarning(at, "z-id " + std::to_string(key) + " stands again and replaces the one at byte " +
                         std::to_string(first->second));
  }

  void NoteSetSize(const Level& level) {
    if (m_dropped != 0) return;
    if (level.Schema->Id == qenzor::CDrawInfoSet::kChunkId) m_draw_infos = level.Kept;
    if (level.Schema->Id == qenzor::CMarkDataSet::kChunkId) m_marks = level.Kept;
  }

  void CheckIndices() {
    for (const Reference& reference : m_references) {
      const bool names_mark = reference.Tag == "MarkDataIdx";
      const std::uint64_t count = names_mark ? m_marks : m_draw_infos;
      if (reference.Value >= count)
        m_result.Findings.push_back({false, reference.Offset, reference.Path,
                                     std::string(reference.Tag) + " " +
                                         std::to_string(reference.Value) +
                                         " lies outside the set of " + std::to_string(count) +
                                         (names_mark ? " marks" : " draw infos")});
    }
  }

  std::span<const std::uint8_t> m_bytes;
  CheckResult& m_result;
  std::vector<std::string> m_path;
  /// How many of the chunks around the one at hand are dropped.
  std::uint32_t m_dropped = 0;
  std::uint64_t m_draw_infos = 0;
  std::uint64_t m_marks = 0;
  std::vector<Reference> m_references;
};

}  // namespace

const Finding* CheckResult::FirstError() const {
  const auto found = std::ranges::find_if(Findings, &Finding::IsError);
  return found == Findings.end() ? nullptr : &*found;
}

CheckResult CheckBytes(std::span<const std::uint8_t> bytes, BinaryKind kind) {
  CheckResult result;
  CWalker walker(bytes, result);
  if (kind == BinaryKind::kQen)
    walker.WalkDocument(qenzor::PackedSize<qenzor::QenFileInfo>(), qenzor::CQenMapData::kChunkId);
  else
    walker.WalkDocument(qenzor::PackedSize<qenzor::ZorFileInfo>(), qenzor::CZorDrawData::kChunkId);
  return result;
}

}  // namespace tool
