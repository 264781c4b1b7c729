#include <algorithm>
#include <array>
#include <limits>

#include "qenzor/check/xml_text_impl.h"
#include "qenzor/check/xml_walk_impl.h"
#include "qenzor/core/stored_text.h"
#include "qenzor/platform/strings.h"
#include "qenzor/qen/cmb_lbl_obj.h"
#include "qenzor/qen/map_data.h"
#include "qenzor/qen/url_info.h"

namespace qenzor::check {

namespace {

using std::to_string;
using Kind = CXmlTokens::Kind;

constexpr std::string_view kNoAttributes;
/// Lists with 16-bit counts hold so many; so do index lists before they come round.
constexpr std::uint64_t kMaxListLength = 65535;

/// The attributes that an element of a shape has; each a letter.
std::string_view AttributesOf(Shape shape) {
  switch (shape) {
    case Shape::kColor:
      return "ARGB";
    case Shape::kRect:
      return "WSEN";
    case Shape::kPoint:
      return "xy";
    default:
      return kNoAttributes;
  }
}

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

class CXmlWalk {
 public:
  CXmlWalk(std::string_view text, CReporter& reporter, CContentListener& listener)
      : m_tokens(text), m_reporter(reporter), m_listener(listener) {}

  void WalkDocument(const DocumentSchema& schema) {
    Kind kind = m_tokens.Next();
    while (kind == Kind::kOther) kind = m_tokens.Next();
    if (kind != Kind::kStart && kind != Kind::kEmpty) return;
    PathNode root{nullptr, schema.Tag};
    CheckAttributes(root, schema.Tag, kNoAttributes);
    const std::array<FieldSchema, 2> parts = Parts(schema);
    const std::uint64_t offset = m_tokens.GetOffset();
    WalkFields({root, schema.Tag, parts, offset, kind == Kind::kEmpty});
    if (!m_has_root && schema.Root->Id == CQenMapData::kChunkId)
      m_reporter.Report(Code::kXmlNoMapData, offset, &root, [] {
        return "there is no QenMapData element: a map without map data cannot be written";
      });
    while ((kind = m_tokens.Next()) != Kind::kStop)
      if (kind != Kind::kOther)
        return m_reporter.Report(Code::kXmlAfterRoot, m_tokens.GetOffset(), &root, [&] {
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

  /// The next piece inside an element; nothing at its end tag.
  bool Next(Kind& kind) {
    kind = m_reporter.IsStopped() ? Kind::kStop : m_tokens.Next();
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

  void CheckAttributes(const PathNode& node, std::string_view tag, std::string_view known) {
    for (const XmlAttribute& attribute : m_tokens.GetAttributes()) {
      if (attribute.Name.size() == 1 && known.find(attribute.Name[0]) != std::string_view::npos)
        continue;
      m_reporter.Report(Code::kXmlUnknownAttribute, m_tokens.OffsetOf(attribute.Name), &node, [&] {
        CSpelling spelling(attribute.Name);
        for (std::size_t i = 0; i < known.size(); ++i) spelling.Try(known.substr(i, 1));
        return CString(tag) + " has no attribute " + CString(attribute.Name) +
               ": it is passed over" + spelling.Suggest();
      });
    }
  }

  void ReportStray(const PathNode& node, std::string_view tag) {
    m_reporter.Report(Code::kXmlStrayText, m_tokens.GetOffset(), &node, [&] {
      constexpr std::size_t kMost = 40;
      const std::string_view text = m_tokens.GetContent();
      return "the text \"" + CString(text.substr(0, kMost)) +
             (text.size() > kMost ? "...\"" : "\"") + " stands in " + CString(tag) +
             ", which has none, and is dropped";
    });
  }

  // NOLINTBEGIN(misc-no-recursion): the parser has seen to it that elements do not nest too deep

  void ReportDropped(const PathNode& node, std::string_view inside,
                     std::span<const std::string_view> taken) {
    const std::string_view tag = m_tokens.GetContent();
    const bool is_known = IsKnownTag(tag);
    m_reporter.Report(is_known ? Code::kXmlMisplacedElement : Code::kXmlUnknownElement,
                      m_tokens.GetOffset(), &node, [&] {
                        CSpelling spelling(tag);
                        for (const std::string_view candidate : taken) spelling.Try(candidate);
                        return CString(tag) + " has no place in " + CString(inside) +
                               " and is dropped" + spelling.Suggest();
                      });
  }

  void WalkFields(const Container& in) {
    Seen seen;
    Kind kind{};
    while (!in.IsEmpty && Next(kind)) {
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
    }
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
        CheckAttributes(node, field.Tag, kNoAttributes);
        const bool is_empty = kind == Kind::kEmpty;
        // The file info alone is a level of the path.
        if (node.Parent != nullptr)
          return WalkFields({node, field.Tag, field.Members, offset, is_empty});
        PathNode inside{&node, field.Tag};
        return WalkFields({inside, field.Tag, field.Members, offset, is_empty});
      }
      case Shape::kRecord:
        CheckAttributes(node, field.Tag, kNoAttributes);
        m_listener.Record(node, field, offset);
        return WalkFields({node, field.Tag, field.Members, offset, kind == Kind::kEmpty});
      case Shape::kColor:
      case Shape::kPoint:
      case Shape::kRect:
        return WalkAttributes(node, field, kind);
      default:
        CheckAttributes(node, field.Tag, kNoAttributes);
        return WalkValue(node, field, kind);
    }
  }

  void WalkChunk(PathNode& node, const ClassSchema& schema, Kind kind) {
    const std::uint64_t offset = m_tokens.GetOffset();
    CheckAttributes(node, schema.Tag, kNoAttributes);
    m_listener.Open(node, schema, offset);
    std::uint64_t kept = 0;
    if (schema.Id == CUrlInfo::kChunkId)
      WalkUrl(node, schema.Fields.front(), kind);
    else if (schema.IsSet)
      kept = WalkSet(node, schema, kind);
    else
      WalkFields({node, schema.Tag, schema.Fields, offset, kind == Kind::kEmpty});
    m_listener.Close(node, schema, kept);
  }

  std::uint64_t WalkSet(PathNode& node, const ClassSchema& schema, Kind kind) {
    std::uint64_t kept = 0;
    const bool is_empty = kind == Kind::kEmpty;
    while (!is_empty && Next(kind)) {
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
    const Content content = ReadContent(node, field.Tag, kind, [&](Kind inside) {
      if (m_tokens.GetContent() == field.Tag)
        m_reporter.Report(Code::kXmlUrlText, m_tokens.GetOffset(), &node, [] {
          return "the link stands in an element Text, where it is not read; put it directly into "
                 "UrlInfo";
        });
      else
        ReportDropped(node, node.Tag, {});
      SkipElement(inside);
    });
    TakeText(node, field, content, offset);
  }

  /// The text of an element, and where it stands.
  struct Content {
    CString Text;
    std::uint64_t Offset = 0;
  };

  /// Reads on to the end of an element that holds text; on_element is given elements inside.
  template <class OnElement>
  Content ReadContent(const PathNode& node, std::string_view tag, Kind kind,
                      OnElement&& on_element) {
    Content content;
    content.Offset = m_tokens.GetOffset();
    if (kind == Kind::kEmpty) return content;
    for (bool is_first = true; Next(kind); is_first = false) {
      const std::string_view raw = m_tokens.GetContent();
      if (IsElement(kind)) {
        on_element(kind);
      } else if (kind == Kind::kOther) {
        continue;
      } else if (is_first) {
        content.Offset = m_tokens.OffsetOf(raw);
        content.Text = ReadXmlText(raw, kind == Kind::kCData, content.Offset, node, m_reporter);
      } else if (!raw.empty()) {
        m_reporter.Report(Code::kXmlValueNotRead, m_tokens.GetOffset(), &node, [&] {
          return "this part of " + CString(tag) +
                 " is not read: only text that stands first in its element is";
        });
      }
    }
    return content;
  }

  Content ReadValue(const PathNode& node, const FieldSchema& field, Kind kind) {
    return ReadContent(node, field.Tag, kind, [&](Kind inside) {
      ReportDropped(node, field.Tag, {});
      SkipElement(inside);
    });
  }

  void WalkValue(PathNode& node, const FieldSchema& field, Kind kind) {
    const Content content = ReadValue(node, field, kind);
    const std::uint64_t at = content.Offset;
    switch (field.Shape) {
      case Shape::kText:
        return TakeText(node, field, content, at);
      case Shape::kFloat:
        return m_listener.Real(node, field, ReadXmlReal(content.Text, field, at, node, m_reporter),
                               at);
      case Shape::kIdent:
        return TakeIdent(node, content);
      case Shape::kMagic:
        return TakeMagic(node, field, content);
      default:
        return TakeInteger(node, field, content);
    }
  }

  // NOLINTEND(misc-no-recursion)

  void TakeInteger(PathNode& node, const FieldSchema& field, const Content& content) {
    const std::uint64_t value =
        ReadXmlInteger(content.Text, field, content.Offset, node, m_reporter);
    if (field.Role == Role::kNone) return;
    if (field.Role == Role::kMeshSegmentNo || field.Role == Role::kLayerNo ||
        field.Role == Role::kZId)
      node.Number = value;
    m_listener.Integer(node, field, value, content.Offset);
  }

  void TakeMagic(const PathNode& node, const FieldSchema& field, const Content& content) {
    constexpr std::string_view kMagicText = "0x4041";
    if (content.Text == kMagicText) return m_listener.Integer(node, field, 0x4041, content.Offset);
    m_reporter.Report(Code::kXmlValueNotRead, content.Offset, &node, [&] {
      return content.Text.starts_with(kMagicText)
                 ? CString("Magic has more than 0x4041, which alone is read")
                 : CString("Magic is not 0x4041 and is left out");
    });
  }

  void TakeIdent(const PathNode& node, const Content& content) {
    constexpr std::size_t kLength = 6;
    if (content.Text.size() != kLength)
      m_reporter.Report(Code::kXmlIdentLength, content.Offset, &node, [&] {
        return "Ident has " + to_string(content.Text.size()) + " bytes; six are kept";
      });
    CString ident = content.Text.substr(0, kLength);
    ident.resize(kLength, '\0');
    m_listener.Ident(node, ident + "\r\n\x1A", content.Offset);
  }

  void TakeText(const PathNode& node, const FieldSchema& field, const Content& content,
                std::uint64_t at) {
    CStringW text = ReadXmlWideText(content.Text, field.Tag, at, node, m_reporter);
    // A label's text alone undoes its escapes, which are longer than what they stand for.
    if (node.Id == CCmbLblObj::kChunkId) {
      ReplaceAll(text, CStringW(u"<br />"), CStringW(u"\n"));
      ReplaceAll(text, CStringW(u"&nbsp;"), CStringW(u" "));
    }
    const std::size_t most = std::min<std::size_t>(field.MaxBytes / 2 - 1, kMaxStoredTextUnits);
    if (text.size() > most)
      m_reporter.Report(Code::kXmlTextTooLong, at, &node, [&] {
        return CString(field.Tag) + " of " + to_string(text.size()) +
               " characters is too long to be stored (at most " + to_string(most) + ")";
      });
    if (m_listener.WantsMore()) m_listener.Text(node, field, text, at);
  }

  void WalkAttributes(const PathNode& node, const FieldSchema& field, Kind kind) {
    const std::uint64_t offset = m_tokens.GetOffset();
    const std::string_view known = AttributesOf(field.Shape);
    std::array<std::int32_t, 4> values{};
    const bool is_short = field.Width == 2;
    // 32 bits in memory do not fit into 16 in the file; a displacement is cut when it is read.
    const Code outside =
        is_short && !field.IsCutInMemory ? Code::kXmlCoordinate : Code::kXmlValueOutOfRange;
    const std::int32_t most = field.Shape == Shape::kColor ? 255
                              : is_short                   ? 0x7FFF
                                         : std::numeric_limits<std::int32_t>::max();
    const std::int32_t least = field.Shape == Shape::kColor ? 0 : -most - 1;
    std::uint32_t present = 0;
    for (const XmlAttribute& attribute : m_tokens.GetAttributes()) {
      const std::size_t at =
          attribute.Name.size() == 1 ? known.find(attribute.Name[0]) : std::string_view::npos;
      if (at == std::string_view::npos) continue;
      present |= 1U << at;
      values.at(at) = ReadXmlAttribute(field.Tag, attribute, least, most, outside,
                                       m_tokens.OffsetOf(attribute.Value), node, m_reporter);
    }
    if (m_tokens.GetAttributes().size() != known.size() || present != (1U << known.size()) - 1) {
      CheckAttributes(node, field.Tag, known);
      for (std::size_t i = 0; i < known.size(); ++i)
        if ((present >> i & 1) == 0)
          m_reporter.Report(Code::kXmlMissingAttribute, offset, &node, [&] {
            return CString(field.Tag) + " has no attribute " + known[i] + ", which counts as 0";
          });
    }
    if (field.Shape == Shape::kPoint && m_listener.WantsMore())
      m_listener.Point(node, field, {values[0], values[1]}, offset);
    if (field.Shape == Shape::kRect)
      m_listener.Rect(node, field, {values[0], values[1], values[2], values[3]}, offset);
    SkipContent(node, field.Tag, kind);
  }

  /// Passes over what an element without content holds all the same.
  void SkipContent(const PathNode& node, std::string_view tag, Kind kind) {
    const bool is_empty = kind == Kind::kEmpty;
    while (!is_empty && Next(kind)) {
      if (kind == Kind::kText || kind == Kind::kCData) ReportStray(node, tag);
      if (!IsElement(kind)) continue;
      ReportDropped(node, tag, {});
      SkipElement(kind);
    }
  }

  CXmlTokens m_tokens;
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
