#include <algorithm>
#include <array>
#include <limits>

#include "qenzor/check/xml_values_impl.h"
#include "qenzor/core/stored_text.h"
#include "qenzor/platform/strings.h"
#include "qenzor/qen/cmb_lbl_obj.h"

namespace qenzor::check {

namespace {

using std::to_string;

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
      return {};
  }
}

std::size_t PositionOf(std::string_view name, std::string_view known) {
  return name.size() == 1 ? known.find(name[0]) : std::string_view::npos;
}

}  // namespace

CString CXmlValues::ReadText(std::string_view raw, XmlTextKind kind, const PathNode& node) {
  return ReadXmlText(raw, kind, m_tokens.IsUtf8(), GetEncoding(), At(m_tokens.OffsetOf(raw), node));
}

void CXmlValues::Take(PathNode& node, const FieldSchema& field, const XmlContent& content) {
  switch (field.Shape) {
    case Shape::kText:
      return TakeText(node, field, content, content.Offset);
    case Shape::kFloat:
      return m_listener.Real(
          node, field, ReadXmlReal(content.Text, field, At(content.Offset, node)), content.Offset);
    case Shape::kIdent:
      return TakeIdent(node, content);
    case Shape::kMagic:
      return TakeMagic(node, field, content);
    default:
      return TakeInteger(node, field, content);
  }
}

void CXmlValues::TakeInteger(PathNode& node, const FieldSchema& field, const XmlContent& content) {
  const std::uint64_t value = ReadXmlInteger(content.Text, field, At(content.Offset, node));
  if (field.Role == Role::kNone) return;
  if (field.Role == Role::kMeshSegmentNo || field.Role == Role::kLayerNo ||
      field.Role == Role::kZId)
    node.Number = value;
  m_listener.Integer(node, field, value, content.Offset);
}

void CXmlValues::TakeMagic(const PathNode& node, const FieldSchema& field,
                           const XmlContent& content) {
  constexpr std::string_view kMagicText = "0x4041";
  if (content.Text == kMagicText) return m_listener.Integer(node, field, 0x4041, content.Offset);
  At(content.Offset, node).Report(Code::kXmlValueNotRead, [&] {
    return content.Text.starts_with(kMagicText)
               ? "Magic " + Quoted(content.Text) + " has more than 0x4041, which alone is read"
               : "Magic " + Quoted(content.Text) + " is not 0x4041 and is left out";
  });
}

void CXmlValues::TakeIdent(const PathNode& node, const XmlContent& content) {
  constexpr std::size_t kLength = 6;
  if (content.Text.size() != kLength)
    At(content.Offset, node).Report(Code::kXmlIdentLength, [&] {
      return "Ident " + Quoted(content.Text) + " has " + to_string(content.Text.size()) +
             (content.Text.size() == 1 ? " byte; six are kept" : " bytes; six are kept");
    });
  CString ident = content.Text.substr(0, kLength);
  ident.resize(kLength, '\0');
  m_listener.Ident(node, ident + "\r\n\x1A", content.Offset);
}

void CXmlValues::TakeText(const PathNode& node, const FieldSchema& field, const XmlContent& content,
                          std::uint64_t offset) {
  CStringW text = ReadXmlWideText(content.Text, field, GetEncoding(), At(offset, node));
  // A label's text alone undoes its escapes, which are longer than what they stand for.
  if (node.Id == CCmbLblObj::kChunkId) {
    ReplaceAll(text, CStringW(u"<br />"), CStringW(u"\n"));
    ReplaceAll(text, CStringW(u"&nbsp;"), CStringW(u" "));
  }
  m_text_length = text.size();
  const std::size_t most = std::min<std::size_t>(field.MaxBytes / 2 - 1, kMaxStoredTextUnits);
  if (text.size() > most)
    At(offset, node).Report(Code::kXmlTextTooLong, [&] {
      return CString(field.Tag) + " of " + to_string(text.size()) +
             " characters is too long to be stored (at most " + to_string(most) + ")";
    });
  if (m_wants_more || field.Role != Role::kNone) m_listener.Text(node, field, text, offset);
}

void CXmlValues::CheckAttributes(const PathNode& node, std::string_view tag,
                                 std::string_view known) {
  for (const XmlAttribute& attribute : m_tokens.GetAttributes()) {
    if (PositionOf(attribute.Name, known) != std::string_view::npos) continue;
    At(m_tokens.OffsetOf(attribute.Name), node).Report(Code::kXmlUnknownAttribute, [&] {
      CSpelling spelling(attribute.Name);
      for (std::size_t i = 0; i < known.size(); ++i) spelling.Try(known.substr(i, 1));
      return CString(tag) + " has no attribute " + CString(attribute.Name) + ": it is passed over" +
             spelling.Suggest();
    });
  }
}

void CXmlValues::TakeAttributes(const PathNode& node, const FieldSchema& field) {
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
    const std::size_t at = PositionOf(attribute.Name, known);
    if (at == std::string_view::npos) continue;
    present |= 1U << at;
    const XmlPlace place = At(m_tokens.OffsetOf(attribute.Value), node);
    const auto take = [&](std::string_view text) {
      values.at(at) =
          ReadXmlAttribute(field.Tag, attribute.Name, text, least, most, outside, place);
    };
    if (attribute.Value.find('&') == std::string_view::npos)
      take(attribute.Value);
    else
      take(ReadText(attribute.Value, XmlTextKind::kAttribute, node));
  }
  if (m_tokens.GetAttributes().size() != known.size() || present != (1U << known.size()) - 1) {
    CheckAttributes(node, field.Tag, known);
    for (std::size_t i = 0; i < known.size(); ++i)
      if ((present >> i & 1) == 0)
        At(offset, node).Report(Code::kXmlMissingAttribute, [&] {
          return CString(field.Tag) + " has no attribute " + known[i] + ", which counts as 0";
        });
  }
  if (field.Shape == Shape::kPoint && m_wants_more)
    m_listener.Point(node, field, {values[0], values[1]}, offset);
  if (field.Shape == Shape::kRect)
    m_listener.Rect(node, field, {values[0], values[1], values[2], values[3]}, offset);
}

}  // namespace qenzor::check
