#include <algorithm>
#include <array>

#include "qenzor/check/xml_values_impl.h"
#include "qenzor/check/xml_walk_impl.h"
#include "qenzor/core/stored_text.h"
#include "qenzor/qen/map_data.h"
#include "qenzor/qen/url_info.h"

namespace qenzor::check {

namespace {

using std::to_string;
using Kind = CXmlTokens::Kind;

constexpr std::string_view kNoAttributes;
/// Lists with 16-bit counts hold so many; so do index lists before they come round.
constexpr std::uint64_t kMaxListLength = 65535;
/// Some readers count points in signed 16 bits.
constexpr std::uint64_t kMaxPoints = 32767;

// NOLINTNEXTLINE(misc-no-recursion): as deep as the field lists
bool HasField(std::span<const FieldSchema> fields, std::string_view tag) {
  return std::ranges::any_of(fields, [tag](const FieldSchema& field) {
    return field.Tag == tag || HasField(field.Members, tag);
  });
}

/// Whether some class has elements of that tag, or is called so.
bool IsKnownTag(std::string_view tag) {
  for (const ClassSchema* schema : AllClasses())
    if (schema != nullptr && (schema->Tag == tag || HasField(schema->Fields, tag))) return true;
  return HasField(QenSchema().InfoFields, tag);
}

/// The tags of classes that have elements of this one.
std::vector<std::string_view> PlacesOf(std::string_view tag) {
  std::vector<std::string_view> places;
  const ClassSchema* const element = FindClass(tag);
  for (const ClassSchema* schema : AllClasses())
    if (schema != nullptr &&
        (HasField(schema->Fields, tag) ||
         (element != nullptr && schema->IsSet && schema->Accepts(element->Id))))
      places.push_back(schema->Tag);
  return places;
}

/// A list as a message shows it: nothing of one that is long.
CString Listed(const char* before, std::span<const std::string_view> words, const char* last) {
  constexpr std::size_t kMost = 9;
  CString text;
  if (words.size() > kMost) return text;
  for (std::size_t i = 0; i < words.size(); ++i)
    text += (i == 0 ? before : i + 1 == words.size() ? last : ", ") + CString(words[i]);
  return text;
}

/// The bytes of stored fields up to the elements of an array, where texts have so many units.
// NOLINTNEXTLINE(misc-no-recursion): as deep as the field lists
std::uint32_t FrontSize(std::span<const FieldSchema> fields, std::size_t text_units) {
  std::uint32_t size = 0;
  for (const FieldSchema& field : fields) {
    if (field.CountWidth != 0) return size + field.CountWidth;
    if (field.Shape == Shape::kGroup)
      size += FrontSize(field.Members, text_units);
    else if (field.Shape == Shape::kText)
      size += kStoredTextCountSize +
              (text_units == 0 ? 0 : 2 * (static_cast<std::uint32_t>(text_units) + 1));
    else
      size += field.Size;
  }
  return size;
}

class CXmlWalk {
 public:
  CXmlWalk(std::string_view text, CReporter& reporter, CContentListener& listener)
      : m_tokens(text, reporter.GetOptions().Encoding),
        m_values(m_tokens, reporter, listener),
        m_reporter(reporter),
        m_listener(listener) {}

  void WalkDocument(const DocumentSchema& schema) {
    PathNode root{nullptr, schema.Tag};
    Kind kind = Kind::kOther;
    while (kind == Kind::kOther)
      if (!Next(root, kind)) return;
    if (!IsElement(kind)) return;
    m_values.CheckAttributes(root, schema.Tag, kNoAttributes);
    const std::array<FieldSchema, 2> parts = Parts(schema);
    const std::uint64_t offset = m_tokens.GetOffset();
    WalkFields({root, schema.Tag, parts, offset, kind == Kind::kEmpty, nullptr});
    if (m_is_cut) return;
    if (!m_has_root && schema.Root->Id == CQenMapData::kChunkId)
      m_reporter.Report(Code::kXmlNoMapData, offset, &root, [] {
        return "there is no QenMapData element: a map without map data cannot be written";
      });
    do kind = m_tokens.Next();
    while (kind == Kind::kOther);
    if (kind != Kind::kStop || !m_tokens.IsAtEnd())
      m_reporter.Report(Code::kXmlAfterRoot, m_tokens.GetOffset(), &root, [&] {
        return "what stands behind the end of " + CString(schema.Tag) + " is dropped";
      });
  }

 private:
  /// An element whose start tag has been passed.
  struct Container {
    PathNode& Node;
    std::string_view Tag;
    std::span<const FieldSchema> Fields;
    std::uint64_t Offset;
    bool IsEmpty;
    const ClassSchema* Schema;  ///< null for what is no chunk
  };
  /// What has been seen of the fields of one container.
  struct Seen {
    std::array<std::uint64_t, 16> Counts{};
    std::array<std::uint64_t, 16> Places{};
  };

  static std::array<FieldSchema, 2> Parts(const DocumentSchema& schema) {
    FieldSchema info{schema.InfoTag, Shape::kGroup};
    info.Members = schema.InfoFields;
    FieldSchema root{schema.Root->Tag, Shape::kChunk};
    root.Class = schema.Root;
    return {info, root};
  }

  /// The next piece inside an element; false at its end tag.
  bool Next(const PathNode& node, Kind& kind) {
    do {
      kind = m_reporter.IsStopped() ? Kind::kStop : m_tokens.Next();
      if (kind == Kind::kUnknown) ReportUnknown(node);
    } while (kind == Kind::kUnknown);
    m_is_cut = m_is_cut || kind == Kind::kStop;
    return kind != Kind::kEnd && kind != Kind::kStop;
  }
  static bool IsElement(Kind kind) { return kind == Kind::kStart || kind == Kind::kEmpty; }

  /// Passes over an element and all that is in it.
  void SkipElement(Kind kind) {
    if (kind == Kind::kEmpty) return;
    for (std::uint32_t depth = 1; depth > 0;) {
      kind = m_tokens.Next();
      if (kind == Kind::kStop) return;
      if (kind == Kind::kStart) ++depth;
      if (kind == Kind::kEnd) --depth;
    }
  }

  void ReportUnknown(const PathNode& node) {
    m_reporter.Report(Code::kXmlNotATag, m_tokens.GetOffset(), &node, [&] {
      return Quoted(m_tokens.GetContent()) +
             " is no tag, since no name follows the < at once, and is dropped";
    });
  }

  void ReportStray(const PathNode& node, std::string_view tag) {
    m_reporter.Report(Code::kXmlStrayText, m_tokens.GetOffset(), &node, [&] {
      return "the text " + Quoted(m_tokens.GetContent()) + " stands in " + CString(tag) +
             ", which has none, and is dropped";
    });
  }

  // NOLINTBEGIN(misc-no-recursion): the parser has seen to it that elements do not nest too deep

  /// Taken are the tags that have a place there.
  void ReportDropped(const PathNode& node, std::string_view inside,
                     std::span<const std::string_view> taken) {
    const std::string_view tag = m_tokens.GetContent();
    const bool is_known = IsKnownTag(tag);
    m_reporter.Report(is_known ? Code::kXmlMisplacedElement : Code::kXmlUnknownElement,
                      m_tokens.GetOffset(), &node, [&] {
                        CSpelling spelling(tag);
                        for (const std::string_view candidate : taken) spelling.Try(candidate);
                        CString proposal = spelling.Suggest();
                        if (proposal.empty() && is_known)
                          proposal = Listed("; its place is in ", PlacesOf(tag), " or ");
                        else if (proposal.empty())
                          proposal = Listed("; there stand ", taken, " and ");
                        return CString(tag) + " has no place in " + CString(inside) +
                               " and is dropped" + proposal;
                      });
  }

  void WalkFields(const Container& in) {
    Seen seen;
    Kind kind{};
    while (!in.IsEmpty && Next(in.Node, kind)) {
      if (kind == Kind::kText || kind == Kind::kCData) ReportStray(in.Node, in.Tag);
      if (!IsElement(kind)) continue;
      const std::string_view tag = m_tokens.GetContent();
      const auto field = std::ranges::find(in.Fields, tag, &FieldSchema::Tag);
      if (field != in.Fields.end()) {
        CheckRepeated(in, seen, *field, static_cast<std::size_t>(field - in.Fields.begin()));
        WalkField(in.Node, *field, kind);
      } else {
        std::vector<std::string_view> taken;
        for (const FieldSchema& each : in.Fields) taken.push_back(each.Tag);
        ReportDropped(in.Node, in.Tag, taken);
        SkipElement(kind);
      }
    }
    CCheckCounts(in, seen);
  }

  void CheckRepeated(const Container& in, Seen& seen, const FieldSchema& field, std::size_t at) {
    if (++seen.Counts.at(at) > 1 && field.CountWidth == 0)
      m_reporter.Report(Code::kXmlRepeatedElement, m_tokens.GetOffset(), &in.Node, [&] {
        return CString(field.Tag) + " stands again; what it says replaces the one at " +
               m_reporter.DescribePlace(seen.Places.at(at));
      });
    seen.Places.at(at) = m_tokens.GetOffset();
  }

  /// What is missing, and lists with more entries than their count can tell.
  void CCheckCounts(const Container& in, const Seen& seen) {
    if (m_is_cut) return;
    for (std::size_t i = 0; i < in.Fields.size(); ++i) {
      const FieldSchema& field = in.Fields[i];
      const std::uint64_t count = seen.Counts.at(i);
      if (count == 0 && field.CountWidth == 0 && field.Shape != Shape::kChunk)
        m_reporter.Report(Code::kXmlMissingElement, in.Offset, &in.Node, [&] {
          return CString(in.Tag) + " has no " + CString(field.Tag) +
                 (field.Shape == Shape::kGroup  ? ", whose fields count as 0"
                  : field.Shape == Shape::kText ? ", which counts as empty"
                                                : ", which counts as 0");
        });
      if (field.CountWidth != 0 && count > kMaxListLength)
        m_reporter.Report(Code::kXmlListTooLong, in.Offset, &in.Node, [&] {
          return to_string(count) + " elements " + CString(field.Tag) +
                 " are more than can be stored (" + to_string(kMaxListLength) + ")";
        });
      else if (field.CountWidth != 0 && field.Shape == Shape::kPoint && count > kMaxPoints)
        m_reporter.Report(Code::kTooManyPoints, in.Offset, &in.Node, [&] {
          return to_string(count) + " points, more than the " + to_string(kMaxPoints) +
                 " that all readers take";
        });
      if (field.CountWidth != 0 && in.Schema != nullptr && in.Schema->Consumed != nullptr)
        CheckFront(in, field, count);
    }
  }

  /// A name that is so long that the bytes in front of an array cannot be counted.
  void CheckFront(const Container& in, const FieldSchema& field, std::uint64_t count) {
    const std::uint32_t before = FrontSize(in.Fields, m_values.GetTextLength());
    const std::uint32_t all = before + static_cast<std::uint32_t>(count * field.Size);
    if (in.Schema->Consumed(before, all) != all)
      m_reporter.Report(Code::kXmlTextTooLong, in.Offset, &in.Node, [&] {
        return CString(in.Fields.front().Members.front().Tag) + " of " +
               to_string(m_values.GetTextLength()) +
               " characters is so long that the fields' bytes cannot be counted";
      });
  }

  void WalkField(PathNode& node, const FieldSchema& field, Kind kind) {
    const std::uint64_t offset = m_tokens.GetOffset();
    switch (field.Shape) {
      case Shape::kChunk: {
        // The root chunk begins the path, as it does in binary documents.
        const bool is_root = node.Parent == nullptr && node.Id == 0;
        PathNode inside{is_root ? nullptr : &node, field.Class->Tag, field.Class->Id};
        m_has_root = true;
        return WalkChunk(inside, *field.Class, kind);
      }
      case Shape::kGroup: {
        m_values.CheckAttributes(node, field.Tag, kNoAttributes);
        const bool is_empty = kind == Kind::kEmpty;
        // The file info alone is a level of the path.
        if (node.Parent != nullptr)
          return WalkFields({node, field.Tag, field.Members, offset, is_empty, nullptr});
        PathNode inside{&node, field.Tag};
        return WalkFields({inside, field.Tag, field.Members, offset, is_empty, nullptr});
      }
      case Shape::kRecord:
        m_values.CheckAttributes(node, field.Tag, kNoAttributes);
        m_listener.Record(node, field, offset);
        return WalkFields({node, field.Tag, field.Members, offset, kind == Kind::kEmpty, nullptr});
      case Shape::kColor:
      case Shape::kPoint:
      case Shape::kRect:
        m_values.TakeAttributes(node, field);
        return SkipContent(node, field.Tag, kind);
      default:
        m_values.CheckAttributes(node, field.Tag, kNoAttributes);
        return m_values.Take(node, field, ReadValue(node, field, kind));
    }
  }

  void WalkChunk(PathNode& node, const ClassSchema& schema, Kind kind) {
    const std::uint64_t offset = m_tokens.GetOffset();
    m_values.CheckAttributes(node, schema.Tag, kNoAttributes);
    m_listener.Open(node, schema, offset);
    std::uint64_t kept = 0;
    if (schema.Id == CUrlInfo::kChunkId)
      WalkUrl(node, schema.Fields.front(), kind);
    else if (schema.IsSet)
      kept = WalkSet(node, schema, kind);
    else
      WalkFields({node, schema.Tag, schema.Fields, offset, kind == Kind::kEmpty, &schema});
    m_listener.Close(node, schema, kept);
  }

  std::uint64_t WalkSet(PathNode& node, const ClassSchema& schema, Kind kind) {
    std::uint64_t kept = 0;
    const bool is_empty = kind == Kind::kEmpty;
    while (!is_empty && Next(node, kind)) {
      if (kind == Kind::kText || kind == Kind::kCData) ReportStray(node, node.Tag);
      if (!IsElement(kind)) continue;
      const ClassSchema* const element = FindClass(m_tokens.GetContent());
      if (element != nullptr && schema.Accepts(element->Id)) {
        PathNode inside{&node, element->Tag, element->Id};
        inside.Index = kept++;
        WalkChunk(inside, *element, kind);
      } else {
        std::vector<std::string_view> taken;
        for (const ClassSchema* each : AllClasses())
          if (each != nullptr && schema.Accepts(each->Id)) taken.push_back(each->Tag);
        ReportDropped(node, node.Tag, taken);
        SkipElement(kind);
      }
    }
    return kept;
  }

  /// A link is the text that stands directly in its element.
  void WalkUrl(PathNode& node, const FieldSchema& field, Kind kind) {
    const std::uint64_t offset = m_tokens.GetOffset();
    const XmlContent content = ReadContent(node, field.Tag, kind, [&](Kind inside) {
      if (m_tokens.GetContent() == field.Tag)
        m_reporter.Report(Code::kXmlUrlText, m_tokens.GetOffset(), &node, [] {
          return "the link stands in an element Text, where it is not read; put it directly into "
                 "UrlInfo";
        });
      else
        ReportDropped(node, node.Tag, {});
      SkipElement(inside);
    });
    m_values.TakeText(node, field, content, offset);
  }

  /// Reads on to the end of an element that holds text; on_element is given elements inside.
  template <class OnElement>
  XmlContent ReadContent(const PathNode& node, std::string_view tag, Kind kind,
                         OnElement&& on_element) {
    XmlContent content;
    content.Offset = m_tokens.GetOffset();
    if (kind == Kind::kEmpty) return content;
    for (bool is_first = true; Next(node, kind); is_first = false) {
      const std::string_view raw = m_tokens.GetContent();
      if (IsElement(kind)) {
        on_element(kind);
      } else if (kind == Kind::kOther) {
        continue;
      } else if (is_first) {
        content.Offset = m_tokens.OffsetOf(raw);
        content.Text = m_values.ReadText(
            raw, kind == Kind::kCData ? XmlTextKind::kCData : XmlTextKind::kText, node);
      } else if (!raw.empty()) {
        m_reporter.Report(Code::kXmlValueNotRead, m_tokens.GetOffset(), &node, [&] {
          return "this part of " + CString(tag) +
                 " is not read: only text that stands first in its element is";
        });
      }
    }
    return content;
  }

  XmlContent ReadValue(const PathNode& node, const FieldSchema& field, Kind kind) {
    return ReadContent(node, field.Tag, kind, [&](Kind inside) {
      ReportDropped(node, field.Tag, {});
      SkipElement(inside);
    });
  }

  /// Passes over what an element without content holds all the same.
  void SkipContent(const PathNode& node, std::string_view tag, Kind kind) {
    const bool is_empty = kind == Kind::kEmpty;
    while (!is_empty && Next(node, kind)) {
      if (kind == Kind::kText || kind == Kind::kCData) ReportStray(node, tag);
      if (!IsElement(kind)) continue;
      ReportDropped(node, tag, {});
      SkipElement(kind);
    }
  }

  // NOLINTEND(misc-no-recursion)

  CXmlTokens m_tokens;
  CXmlValues m_values;
  CReporter& m_reporter;
  CContentListener& m_listener;
  bool m_has_root = false;
  bool m_is_cut = false;  ///< not gone to the end
};

}  // namespace

void WalkXml(std::string_view text, const DocumentSchema& schema, CReporter& reporter,
             CContentListener& listener) {
  CXmlWalk(text, reporter, listener).WalkDocument(schema);
}

}  // namespace qenzor::check
