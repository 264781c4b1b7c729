#include "qenzor/check/salvage.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "qenzor/check/binary_walk_impl.h"
#include "qenzor/check/indexed_set_impl.h"
#include "qenzor/core/chunk_header.h"
#include "qenzor/core/coding.h"

namespace qenzor {

namespace {

using check::ClassSchema;
using check::DocumentSchema;
using std::to_string;

constexpr std::uint64_t kHeaderSize = CChunkHeader::kSize;
/// So many times the document's bytes are looked at to find what is whole; real damage takes a
/// few. What has not been found whole by then is still kept by its parts.
constexpr std::uint64_t kMaxLooks = 32;

class CDeafSink : public CFindingSink {
 public:
  bool Take(const Finding& /*finding*/) override { return true; }
};

/// Where a chunk ends, as far as can be told.
struct Extent {
  std::uint64_t End;  ///< of the chunk where IsKnown, else the farthest that it can reach
  bool IsKnown;
};

class CSalvage {
 public:
  CSalvage(std::span<const std::uint8_t> bytes, BinaryKind kind, const LossSink& lose)
      : m_bytes(bytes), m_lose(lose), m_reporter(kind, m_options, m_nobody) {
    m_options.MaxDetails = 0;
  }

  Salvaged Run(const DocumentSchema& schema) {
    m_salvaged.Bytes.reserve(m_bytes.size());
    Append(0, schema.InfoSize);
    const PathNode root{nullptr, schema.Root->Tag, schema.Root->Id};
    const std::uint64_t at = schema.InfoSize;
    const std::uint64_t declared = EndOf(at);
    const Extent extent =
        FindExtent(at, std::max<std::uint64_t>(declared, m_bytes.size()), *schema.Root, nullptr);
    const std::uint64_t next = *TakeParts(root, at, extent, *schema.Root, 1);
    if (declared > m_bytes.size())
      Tell(m_bytes.size(), declared - m_bytes.size(), &root,
           "the file ends so many bytes too early");
    else if (extent.IsKnown)
      Append(next, m_bytes.size());
    else if (next < m_bytes.size())
      Tell(next, m_bytes.size() - next, &root, "stands behind all that belongs here");
    return std::move(m_salvaged);
  }

 private:
  std::uint32_t Number(std::uint64_t at) const {
    return little_endian::Load<std::uint32_t>(m_bytes.data() + at);
  }
  /// Where the chunk at the place ends by its own account.
  std::uint64_t EndOf(std::uint64_t at) const { return at + kHeaderSize + Number(at + 4); }
  /// What is there of what ends at the place.
  std::uint64_t Present(std::uint64_t end) const {
    return std::min<std::uint64_t>(end, m_bytes.size());
  }
  bool HasHeader(std::uint64_t at, std::uint64_t end) const {
    return at <= Present(end) && Present(end) - at >= kHeaderSize;
  }

  void Append(std::uint64_t from, std::uint64_t to) {
    m_salvaged.Bytes.insert(m_salvaged.Bytes.end(),
                            m_bytes.begin() + static_cast<std::ptrdiff_t>(from),
                            m_bytes.begin() + static_cast<std::ptrdiff_t>(to));
  }
  void Tell(std::uint64_t at, std::uint64_t size, const PathNode* node, CString reason) {
    ++m_salvaged.Losses;
    m_lose({at, size, node, std::move(reason)});
  }

  /// Whether a whole chunk, header and all, stands between the places.
  bool IsWhole(std::uint64_t at, std::uint64_t end, std::uint32_t depth) {
    if (end > m_bytes.size() || end - at > m_looks) return false;
    m_looks -= end - at;
    return check::IsWholeChunk(m_bytes.first(end), at, depth, m_reporter);
  }

  /// Whether a chunk seems to begin at the place, in a chunk of the class that ends there.
  bool Begins(std::uint64_t at, std::uint64_t end, const ClassSchema& schema) {
    if (!HasHeader(at, end) || EndOf(at) > end) return false;
    return schema.Accepts(Number(at)) ||
           (EndOf(at) > at + kHeaderSize && IsWhole(at, EndOf(at), 1));
  }

  /// Whether the sizes of what seem to be sub-chunks add up to the end.
  bool AddsUp(std::uint64_t at, std::uint64_t end, const ClassSchema& schema) const {
    while (at < end && HasHeader(at, end) && schema.Accepts(Number(at))) at = EndOf(at);
    return at == end;
  }

  /// Of the chunk at the place, in a parent that ends at limit; the parent of the root is null.
  Extent FindExtent(std::uint64_t at, std::uint64_t limit, const ClassSchema& schema,
                    const ClassSchema* parent) {
    const std::uint64_t end = EndOf(at);
    bool is_known = end == limit || (end < limit && end > m_bytes.size()) ||
                    (end < limit && parent != nullptr && Begins(end, limit, *parent));
    if (!is_known && end < limit) {
      const auto fields = FindFieldsEnd(at, end, schema);
      is_known = fields.has_value() && *fields < end && AddsUp(*fields, end, schema);
    }
    return {is_known ? end : limit, is_known};
  }

  std::optional<std::uint64_t> FindFieldsEnd(std::uint64_t at, std::uint64_t end,
                                             const ClassSchema& schema) {
    return check::FindFieldsEnd(m_bytes.first(Present(end)), at, schema, m_reporter);
  }

  // NOLINTBEGIN(misc-no-recursion): no deeper than classes have places for each other

  /// Keeps the fields of a chunk, and of its sub-chunks what can be kept. Gives the place behind
  /// it; nothing, and nothing is kept, when the fields are not whole.
  std::optional<std::uint64_t> TakeParts(const PathNode& node, std::uint64_t at,
                                         const Extent& extent, const ClassSchema& schema,
                                         std::uint32_t depth) {
    const auto fields = FindFieldsEnd(at, extent.End, schema);
    if (!fields.has_value()) return std::nullopt;
    const std::size_t begin = m_salvaged.Bytes.size();
    Append(at, *fields);
    check::CIndexedSet set(schema, m_salvaged.Bytes);
    const std::uint64_t next = TakeSubChunks(node, *fields, extent, schema, depth, set);
    if (schema.IsSet) Store(begin + kHeaderSize, set.Close(Number(at + kHeaderSize)));
    Store(begin + 4, m_salvaged.Bytes.size() - begin - kHeaderSize);
    if (!extent.IsKnown && next != EndOf(at))
      Tell(at + 4, 0, &node,
           "the data size is made right: " + to_string(next - at - kHeaderSize) + " instead of " +
               to_string(Number(at + 4)));
    return next;
  }

  void Store(std::size_t at, std::uint64_t number) {
    little_endian::Store(m_salvaged.Bytes.data() + at, static_cast<std::uint32_t>(number));
  }

  /// Gives the place behind the last sub-chunk, or the end where that is known.
  std::uint64_t TakeSubChunks(const PathNode& parent, std::uint64_t at, const Extent& extent,
                              const ClassSchema& schema, std::uint32_t depth,
                              check::CIndexedSet& set) {
    while (at < Present(extent.End)) {
      const auto next = TakeSubChunk(parent, at, extent, schema, depth, set);
      if (!next.has_value()) break;
      at = *next;
    }
    return at;
  }

  /// Gives the place behind a sub-chunk, or behind what is lost there; nothing where the parent
  /// seems to end.
  std::optional<std::uint64_t> TakeSubChunk(const PathNode& parent, std::uint64_t at,
                                            const Extent& extent, const ClassSchema& schema,
                                            std::uint32_t depth, check::CIndexedSet& set) {
    const std::uint64_t end = Present(extent.End);
    const bool has_header = HasHeader(at, end);
    const std::uint32_t id = has_header ? Number(at) : 0;
    const ClassSchema* const known =
        has_header && schema.Accepts(id) ? check::FindClass(id) : nullptr;
    if (!extent.IsKnown && known == nullptr) return std::nullopt;
    if (has_header && EndOf(at) <= end && IsWhole(at, EndOf(at), depth + 1)) {
      if (known != nullptr) set.Keep();
      Append(at, EndOf(at));
      return EndOf(at);
    }
    if (known == nullptr) {
      const bool is_one =
          has_header && EndOf(at) < extent.End && Begins(EndOf(at), extent.End, schema);
      const std::uint64_t next = is_one ? Present(EndOf(at)) : FindNext(at + 1, end, schema, depth);
      Tell(at, next - at, &parent,
           has_header ? "holds nothing that belongs here" : "is too little for a chunk");
      set.Lose(nullptr, next - at, is_one);
      return next;
    }
    PathNode node{&parent, known->Tag, id};
    if (schema.IsSet) node.Index = set.GetPosition();
    const Extent inner = FindExtent(at, extent.End, *known, &schema);
    auto next = TakeParts(node, at, inner, *known, depth + 1);
    if (next.has_value()) {
      set.Keep();
      return next;
    }
    if (!inner.IsKnown && !extent.IsKnown) return std::nullopt;
    next = inner.IsKnown ? Present(inner.End) : FindNext(at + 1, end, schema, depth);
    Tell(at, *next - at, &node, "is damaged");
    set.Lose(known, *next - at, inner.IsKnown);
    return next;
  }

  // NOLINTEND(misc-no-recursion)

  /// Where the next whole sub-chunk begins, or the end.
  std::uint64_t FindNext(std::uint64_t at, std::uint64_t end, const ClassSchema& schema,
                         std::uint32_t depth) {
    for (; HasHeader(at, end); ++at)
      if (schema.Accepts(Number(at)) && EndOf(at) <= end && IsWhole(at, EndOf(at), depth + 1))
        return at;
    return end;
  }

  std::span<const std::uint8_t> m_bytes;
  const LossSink& m_lose;
  CDeafSink m_nobody;
  CheckOptions m_options;
  check::CReporter m_reporter;
  std::uint64_t m_looks = kMaxLooks * m_bytes.size();
  Salvaged m_salvaged;
};

Failure Gone(const char* reason) {
  Failure failure;
  failure.Reason = reason;
  return failure;
}

}  // namespace

Result<Salvaged> SalvageBinary(std::span<const std::uint8_t> bytes, BinaryKind kind,
                               const LossSink& lose) {
  const DocumentSchema& schema = kind == BinaryKind::kQen ? check::QenSchema() : check::ZorSchema();
  if (bytes.size() < schema.InfoSize) return Gone("the file info is gone: nothing can be kept");
  if (bytes.size() - schema.InfoSize < kHeaderSize)
    return Gone("the root chunk is gone: nothing can be kept");
  CheckOptions options;
  options.MaxDetails = 0;
  options.FirstErrorOnly = true;
  CDeafSink nobody;
  check::CReporter reporter(kind, options, nobody);
  check::CContentListener listener;
  if (check::WalkBinary(bytes, schema, reporter, listener))
    return std::make_unique<Salvaged>(Salvaged{{bytes.begin(), bytes.end()}, 0});
  if (little_endian::Load<std::uint32_t>(bytes.data() + schema.InfoSize) != schema.Root->Id)
    return Gone("the root chunk is gone: nothing can be kept");
  return std::make_unique<Salvaged>(CSalvage(bytes, kind, lose).Run(schema));
}

}  // namespace qenzor
