#include <algorithm>

#include "qenzor/check/binary_walk_impl.h"
#include "qenzor/core/abstract_chunk.h"
#include "qenzor/core/coding.h"
#include "qenzor/core/stored_text.h"

namespace qenzor::check {

namespace {

constexpr std::uint64_t kHeaderSize = CChunkHeader::kSize;
/// Some readers count points in signed 16 bits.
constexpr std::uint64_t kMaxPoints = 32767;

using std::to_string;

class CBinaryWalk {
 public:
  CBinaryWalk(std::span<const std::uint8_t> bytes, CReporter& reporter, CContentListener& listener)
      : m_bytes(bytes), m_reporter(reporter), m_listener(listener) {}

  bool WalkDocument(const DocumentSchema& schema) {
    if (m_bytes.size() < schema.InfoSize) {
      m_reporter.Report(Code::kTruncated, m_bytes.size(), nullptr, [&] {
        return "truncated: the file info takes " + to_string(schema.InfoSize) + " bytes";
      });
      return false;
    }
    PathNode root{nullptr, schema.Root->Tag, schema.Root->Id};
    PathNode info_node{&root, schema.InfoTag};
    Block info{info_node, 0, schema.InfoSize, false};
    WalkFields(info, schema.InfoFields);
    if (m_bytes.size() - schema.InfoSize < kHeaderSize) {
      m_reporter.Report(Code::kTruncated, m_bytes.size(), &root,
                        [] { return "truncated: the root chunk's header is missing"; });
      return false;
    }
    const Header header = HeaderAt(schema.InfoSize);
    if (header.Id != schema.Root->Id)
      m_reporter.Report(Code::kRootId, schema.InfoSize, &root, [&] {
        return "the root chunk has id " + to_string(header.Id) + ", not " +
               to_string(schema.Root->Id);
      });
    m_is_cut = schema.InfoSize + kHeaderSize + header.Size > m_bytes.size();
    const bool whole = WalkChunk(root, schema.InfoSize, m_bytes.size(), schema.Root, 1);
    const std::uint64_t end = schema.InfoSize + kHeaderSize + header.Size;
    if (end < m_bytes.size())
      m_reporter.Report(Code::kBytesAfterRoot, end, &root, [&] {
        return to_string(m_bytes.size() - end) + " bytes after the root chunk are dropped";
      });
    return whole;
  }

  bool IsWhole(std::uint64_t at, std::uint32_t depth) {
    const std::uint32_t id = HeaderAt(at).Id;
    PathNode node{nullptr, {}, id};
    return WalkChunk(node, at, m_bytes.size(), FindClass(id), depth);
  }

  std::optional<std::uint64_t> FindFieldsEnd(std::uint64_t at, const ClassSchema& schema) {
    PathNode node{nullptr, schema.Tag, schema.Id};
    Block block{node, at + kHeaderSize, m_bytes.size(), false};
    return WalkBlock(block, schema) ? std::optional(block.At) : std::nullopt;
  }

 private:
  struct Header {
    std::uint32_t Id;
    std::uint32_t Size;
  };
  /// The fields of one chunk, as far as they have been walked.
  struct Block {
    PathNode& Node;
    std::uint64_t At;
    std::uint64_t Limit;
    bool IsCutShort;  ///< the file ends before the chunk does
    std::uint64_t DeclaredCount = 0;
    std::uint64_t BeforeElements = 0;  ///< where the last array's elements begin
  };
  /// What the walk of one chunk keeps in mind of its sub-chunks.
  struct Level {
    const ClassSchema* Schema;
    std::uint64_t Kept = 0;
    std::uint32_t Slots = 0;
  };

  template <class T>
  T Load(std::uint64_t at) const {
    return little_endian::Load<T>(m_bytes.data() + at);
  }
  Header HeaderAt(std::uint64_t at) const {
    return {Load<std::uint32_t>(at), Load<std::uint32_t>(at + 4)};
  }
  /// A number of so many bytes, its sign extended where it has one.
  std::uint64_t LoadNumber(std::uint64_t at, const FieldSchema& field) const {
    const bool is_signed = field.Shape == Shape::kSigned;
    switch (field.Width) {
      case 1:
        return Load<std::uint8_t>(at);
      case 2:
        return is_signed ? static_cast<std::uint64_t>(Load<std::int16_t>(at))
                         : Load<std::uint16_t>(at);
      case 4:
        return is_signed ? static_cast<std::uint64_t>(Load<std::int32_t>(at))
                         : Load<std::uint32_t>(at);
      default:
        return Load<std::uint64_t>(at);
    }
  }

  /// What is dropped has no say but for errors, which it shares with everything.
  template <class Describe>
  void Warn(Code code, std::uint64_t at, const PathNode& node, Describe&& describe) {
    if (m_dropped == 0) m_reporter.Report(code, at, &node, std::forward<Describe>(describe));
  }

  /// Of what an unknown chunk holds, one error is enough: it may be no chunks at all.
  template <class Describe>
  void Fail(Code code, std::uint64_t at, const PathNode& node, Describe&& describe) {
    if (m_unknown > 0 && m_is_unknown_told) return;
    m_is_unknown_told = true;
    m_reporter.Report(code, at, &node, std::forward<Describe>(describe));
  }

  // NOLINTBEGIN(misc-no-recursion): no deeper than chunks may nest

  /// Walks the chunk whose header stands at the offset, of which no more than the bytes below limit
  /// belong to it. False when the library would refuse it; the chunk at fault, or one inside, has
  /// then been reported.
  bool WalkChunk(PathNode& node, std::uint64_t at, std::uint64_t limit, const ClassSchema* schema,
                 std::uint32_t depth) {
    const Header header = HeaderAt(at);
    const std::uint64_t data = at + kHeaderSize;
    const std::uint64_t end = data + header.Size;
    Block block{node, data, std::min(end, limit), m_is_cut && end > m_bytes.size()};
    if (schema != nullptr) {
      if (m_dropped == 0) m_listener.Open(node, *schema, at);
      if (!WalkBlock(block, *schema)) return false;
    }
    if (block.At > end) {
      Fail(Code::kFieldOverrun, at, node, [&] {
        return "the fields take " + to_string(block.At - data) + " bytes, the data size is " +
               to_string(header.Size);
      });
      return false;
    }
    if (block.At < end && depth >= kMaxChunkDepth) {
      Fail(Code::kTooDeep, at, node,
           [] { return "chunks nest more than " + to_string(kMaxChunkDepth) + " deep"; });
      return false;
    }
    Level level{schema};
    if (!WalkSubChunks(node, block.At, end, limit, level, depth)) return false;
    if (end > limit) {
      const bool at_file_end = m_is_cut && limit == m_bytes.size();
      Fail(at_file_end ? Code::kTruncated : Code::kChunkOverrun, at, node, [&] {
        return (at_file_end ? "truncated: the data size is "
                            : "runs past the end of its parent: the data size is ") +
               to_string(header.Size) + ", but only " + to_string(limit - data) + " bytes follow";
      });
      return false;
    }
    if (schema == nullptr) return true;
    if (schema->IsSet && block.DeclaredCount != level.Kept)
      Warn(Code::kSetCount, data, node, [&] {
        return "declares " + to_string(block.DeclaredCount) + " elements and holds " +
               to_string(level.Kept);
      });
    if (m_dropped == 0) m_listener.Close(node, *schema, level.Kept);
    return true;
  }

  bool WalkBlock(Block& block, const ClassSchema& schema) {
    const std::uint64_t data = block.At;
    if (schema.IsSet) {
      if (!Skip(block, "element count", sizeof(std::uint32_t))) return false;
      block.DeclaredCount = Load<std::uint32_t>(data);
      return true;
    }
    if (schema.Consumed != nullptr) block.Limit = m_bytes.size();
    block.Limit = std::max(block.Limit, data);
    if (!WalkFields(block, schema.Fields)) return false;
    if (schema.Consumed == nullptr) return true;
    const auto size = static_cast<std::uint32_t>(block.At - data);
    block.At =
        data + schema.Consumed(static_cast<std::uint32_t>(block.BeforeElements - data), size);
    if (block.At != data + size)
      Warn(Code::kNameWraps, data, block.Node, [&] {
        return CString(schema.Fields.front().Members.front().Tag) +
               " is so long that the count of the fields' bytes wraps; their end is read as "
               "sub-chunks";
      });
    return true;
  }

  /// Moves on by size bytes; false, and reported, when there are fewer.
  bool Skip(Block& block, std::string_view tag, std::uint64_t size) {
    const std::uint64_t left = block.Limit - std::min(block.At, block.Limit);
    if (size > left) {
      Fail(block.IsCutShort ? Code::kTruncated : Code::kFieldOverrun, block.At, block.Node, [&] {
        return CString(tag) + " takes " + to_string(size) + " bytes, but only " + to_string(left) +
               " are there";
      });
      return false;
    }
    block.At += size;
    return true;
  }

  bool WalkFields(Block& block, std::span<const FieldSchema> fields) {
    return std::ranges::all_of(fields, [&](const FieldSchema& f) { return WalkField(block, f); });
  }

  bool WalkField(Block& block, const FieldSchema& field) {
    std::uint64_t count = 1;
    if (field.CountWidth != 0) {
      const std::uint64_t at = block.At;
      if (!Skip(block, field.Tag, field.CountWidth)) return false;
      count = field.CountWidth == 2 ? Load<std::uint16_t>(at) : Load<std::uint32_t>(at);
      block.BeforeElements = block.At;
      if (field.Shape == Shape::kPoint && count > kMaxPoints)
        Warn(Code::kTooManyPoints, at, block.Node, [&] {
          return to_string(count) + " points, more than the " + to_string(kMaxPoints) +
                 " that all readers take";
        });
    }
    switch (field.Shape) {
      case Shape::kChunk:
        return true;
      case Shape::kText:
        return WalkText(block, field);
      case Shape::kGroup:
        return WalkFields(block, field.Members);
      default:
        return field.Size != 0 ? WalkValues(block, field, count) : WalkRecords(block, field, count);
    }
  }

  bool WalkRecords(Block& block, const FieldSchema& field, std::uint64_t count) {
    for (std::uint64_t i = 0; i < count; ++i)
      if (!WalkFields(block, field.Members)) return false;
    return true;
  }

  bool WalkValues(Block& block, const FieldSchema& field, std::uint64_t count) {
    std::uint64_t at = block.At;
    if (!Skip(block, field.Tag, count * field.Size)) return false;
    if (m_dropped != 0 || (field.Role == Role::kNone && !IsMore(field.Shape))) return true;
    for (; at < block.At; at += field.Size) TakeValue(block, field, at);
    return true;
  }

  bool IsMore(Shape shape) const {
    return m_wants_more && (shape == Shape::kFloat || shape == Shape::kPoint ||
                            shape == Shape::kRect || shape == Shape::kRecord);
  }

  /// Tells the listener of one value whose bytes are known to be there.
  void TakeValue(Block& block, const FieldSchema& field, std::uint64_t at) {
    switch (field.Shape) {
      case Shape::kRecord:
        m_listener.Record(block.Node, field, at);
        for (const FieldSchema& member : field.Members) {
          if (member.Role != Role::kNone || IsMore(member.Shape)) TakeValue(block, member, at);
          at += member.Size;
        }
        return;
      case Shape::kIdent:
        return m_listener.Ident(
            block.Node, {reinterpret_cast<const char*>(m_bytes.data() + at), field.Size}, at);
      case Shape::kRect:
        return m_listener.Rect(block.Node, field,
                               {LoadCoordinate(at, field), LoadCoordinate(at + field.Width, field),
                                LoadCoordinate(at + std::uint64_t{2} * field.Width, field),
                                LoadCoordinate(at + std::uint64_t{3} * field.Width, field)},
                               at);
      case Shape::kPoint:
        return m_listener.Point(
            block.Node, field, {LoadCoordinate(at, field), LoadCoordinate(at + field.Width, field)},
            at);
      case Shape::kFloat:
        return m_listener.Real(block.Node, field, Load<float>(at), at);
      default:
        return TakeInteger(block, field, LoadNumber(at, field), at);
    }
  }

  std::int32_t LoadCoordinate(std::uint64_t at, const FieldSchema& field) const {
    return field.Width == 2 ? Load<std::int16_t>(at) : Load<std::int32_t>(at);
  }

  void TakeInteger(Block& block, const FieldSchema& field, std::uint64_t value, std::uint64_t at) {
    if (field.Role == Role::kMeshSegmentNo || field.Role == Role::kLayerNo ||
        field.Role == Role::kZId)
      block.Node.Number = value;
    m_listener.Integer(block.Node, field, value, at);
  }

  bool WalkText(Block& block, const FieldSchema& field) {
    const std::uint64_t at = block.At;
    if (!Skip(block, field.Tag, kStoredTextCountSize)) return false;
    const std::uint64_t size = Load<std::uint16_t>(at);
    if (size > field.MaxBytes) {
      Fail(Code::kStoredTextTooLong, block.At, block.Node, [&] {
        return "the block of " + CString(field.Tag) + " has " + to_string(size) +
               " bytes, at most " + to_string(field.MaxBytes) + " are taken";
      });
      return false;
    }
    const std::uint64_t text = block.At;
    if (!Skip(block, field.Tag, size)) return false;
    if (size % 2 != 0)
      Warn(Code::kTextOddSize, at, block.Node,
           [&] { return CString(field.Tag) + " has an odd byte count; its last byte is dropped"; });
    if ((m_wants_more || field.Role != Role::kNone) && m_dropped == 0) {
      DecodeStoredText(m_bytes.data() + text, static_cast<std::uint32_t>(size), m_text);
      m_listener.Text(block.Node, field, m_text, text);
    }
    if (size < 2) return true;
    const auto mark = Load<std::uint16_t>(text);
    if (mark != 0xFEFF && mark != 0xFFFE) {
      Warn(Code::kTextWithoutMark, text, block.Node,
           [&] { return CString(field.Tag) + " has no byte-order mark and is read as empty"; });
      return true;
    }
    for (std::uint64_t unit = text + 2; unit + 2 < text + size; unit += 2)
      if (Load<std::uint16_t>(unit) == 0) {
        Warn(Code::kTextZeroUnit, unit, block.Node,
             [&] { return CString(field.Tag) + " holds a zero unit; what follows it is dropped"; });
        break;
      }
    return true;
  }

  /// Walks sub-chunks until they fill the data; goes on behind one at fault as long as its size
  /// leaves no doubt where the next begins.
  bool WalkSubChunks(const PathNode& node, std::uint64_t next, std::uint64_t end,
                     std::uint64_t limit, Level& level, std::uint32_t depth) {
    bool whole = true;
    const std::uint64_t sub_limit = std::min(end, limit);
    while (next < end && !m_reporter.IsStopped()) {
      if (next >= sub_limit || sub_limit - next < kHeaderSize) {
        if (end > limit) return whole;  // cut short: reported by the chunk itself
        Fail(Code::kRemainder, next, node, [&] {
          return to_string(end - next) + " bytes at the end of the data are too few for a chunk";
        });
        return false;
      }
      whole = WalkSubChunk(node, next, sub_limit, level, depth) && whole;
      next += kHeaderSize + HeaderAt(next).Size;
    }
    return whole;
  }

  bool WalkSubChunk(const PathNode& parent, std::uint64_t at, std::uint64_t limit, Level& level,
                    std::uint32_t depth) {
    const std::uint32_t id = HeaderAt(at).Id;
    const ClassSchema* schema = FindClass(id);
    const bool keeps = level.Schema != nullptr && level.Schema->Accepts(id);
    const bool is_elem = keeps && level.Schema->IsSet;
    PathNode node{&parent, schema == nullptr ? std::string_view() : schema->Tag, id};
    if (is_elem) node.Index = level.Kept;
    if (schema == nullptr)
      Warn(Code::kUnknownChunk, at, node,
           [&] { return "unknown chunk id " + to_string(id) + ": dropped"; });
    else if (!keeps)
      Warn(Code::kMisplacedChunk, at, node, [] { return "has no place here and is dropped"; });
    else if (!is_elem && (level.Slots >> id & 1) != 0)
      Warn(Code::kRepeatedChunk, at, node,
           [] { return "replaces an earlier one in the same place"; });
    if (keeps) {
      ++level.Kept;
      level.Slots |= 1U << id;
    } else {
      ++m_dropped;
    }
    const bool is_unknown = schema == nullptr;
    if (is_unknown && m_unknown++ == 0) m_is_unknown_told = false;
    const bool whole = WalkChunk(node, at, limit, schema, depth + 1);
    if (is_unknown) --m_unknown;
    if (!keeps) --m_dropped;
    return whole;
  }

  // NOLINTEND(misc-no-recursion)

  std::span<const std::uint8_t> m_bytes;
  CReporter& m_reporter;
  CContentListener& m_listener;
  bool m_wants_more = m_listener.WantsMore();
  CStringW m_text;
  /// Whether the file ends before the root chunk does.
  bool m_is_cut = false;
  /// How many of the chunks around the one at hand are dropped.
  std::uint32_t m_dropped = 0;
  /// How many of them are of no known class, and whether an error inside has been reported.
  std::uint32_t m_unknown = 0;
  bool m_is_unknown_told = false;
};

}  // namespace

bool WalkBinary(std::span<const std::uint8_t> bytes, const DocumentSchema& schema,
                CReporter& reporter, CContentListener& listener) {
  return CBinaryWalk(bytes, reporter, listener).WalkDocument(schema);
}

bool IsWholeChunk(std::span<const std::uint8_t> bytes, std::uint64_t at, std::uint32_t depth,
                  CReporter& reporter) {
  CContentListener nobody;
  return CBinaryWalk(bytes, reporter, nobody).IsWhole(at, depth);
}

std::optional<std::uint64_t> FindFieldsEnd(std::span<const std::uint8_t> bytes, std::uint64_t at,
                                           const ClassSchema& schema, CReporter& reporter) {
  CContentListener nobody;
  return CBinaryWalk(bytes, reporter, nobody).FindFieldsEnd(at, schema);
}

}  // namespace qenzor::check
