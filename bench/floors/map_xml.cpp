#include <array>
#include <charconv>
#include <cstring>
#include <string_view>

#include "bench/floors/map_tree.h"

namespace qenzor::bench {

namespace {

/// Puts together one line of XML in room of which there is enough.
class XmlLine {
 public:
  XmlLine(PlainWriter& out, std::size_t tabs, std::size_t longest = kLongest)
      : m_out(out), m_begin(reinterpret_cast<char*>(out.Room(longest))), m_end(m_begin + longest) {
    std::memset(m_begin, '\t', tabs);
    m_at = m_begin + tabs;
  }
  ~XmlLine() {
    Text("\r\n");
    m_out.Advance(static_cast<std::size_t>(m_at - m_begin));
  }
  XmlLine(const XmlLine&) = delete;
  XmlLine& operator=(const XmlLine&) = delete;

  XmlLine& Text(std::string_view text) {
    std::memcpy(m_at, text.data(), text.size());
    m_at += text.size();
    return *this;
  }
  template <class Number>
  XmlLine& Whole(Number number, int base = 10) {
    m_at = std::to_chars(m_at, m_end, number, base).ptr;
    return *this;
  }
  XmlLine& Decimal(float number) {
    m_at = std::to_chars(m_at, m_end, number, std::chars_format::fixed, 10).ptr;
    return *this;
  }
  XmlLine& Unit(char16_t unit) {
    switch (unit) {
      case u' ':
        return Text("&amp;nbsp;");
      case u'&':
        return Text("&amp;");
      case u'<':
        return Text("&lt;");
      case u'>':
        return Text("&gt;");
      case u'"':
        return Text("&quot;");
      case u'\'':
        return Text("&apos;");
      case u'\n':
        return Text("&lt;br /&gt;");
      default:
        *m_at++ = static_cast<char>(unit);
        return *this;
    }
  }

  static constexpr std::size_t kLongest = 256;

 private:
  PlainWriter& m_out;
  char* m_begin;
  char* m_end;
  char* m_at;
};

struct Tags {
  std::string_view Open;
  std::string_view Close;
};

constexpr Tags TagsOf(std::uint32_t id) {
  switch (id) {
    case id::kLine:
      return {"<LineObj>", "</LineObj>"};
    case id::kPolygon:
      return {"<PolyObj>", "</PolyObj>"};
    case id::kLabel:
      return {"<CmbLblObj>", "</CmbLblObj>"};
    case id::kLayer:
      return {"<LayerData>", "</LayerData>"};
    case id::kLayerSet:
      return {"<LayerSet>", "</LayerSet>"};
    case id::kZIdObjSet:
      return {"<ZIdObjSet>", "</ZIdObjSet>"};
    case id::kZIdObj:
      return {"<ZIdObj>", "</ZIdObj>"};
    case id::kObjSet:
      return {"<ObjSet>", "</ObjSet>"};
    case id::kMapData:
      return {"<QenMapData>", "</QenMapData>"};
    case id::kSegmentSet:
      return {"<MeshSegmentSet>", "</MeshSegmentSet>"};
    default:
      return {"<MeshSegment>", "</MeshSegment>"};
  }
}

class XmlTreeWriter {
 public:
  explicit XmlTreeWriter(PlainWriter& out) : m_out(out) {}

  void WriteInfo(const std::array<std::uint8_t, PlainMap::kInfoSize>& info) {
    const std::uint8_t* bytes = info.data();
    Text(1, "<QenFileInfo>");
    XmlLine(m_out, 2)
        .Text("<Ident>")
        .Text({reinterpret_cast<const char*>(bytes), 6})
        .Text("</Ident>");
    XmlLine(m_out, 2).Text("<Magic>0x").Whole(Load<std::uint16_t>(bytes + 9), 16).Text("</Magic>");
    Number<std::uint16_t>(2, "MajorVer", bytes + 11);
    Number<std::uint16_t>(2, "MinorVer", bytes + 13);
    Number<std::uint32_t>(2, "Revision", bytes + 15);
    Number<std::uint8_t>(2, "GeoCoodinate", bytes + 19);
    XmlLine(m_out, 2)
        .Text("<IncRect W=\"")
        .Whole(Load<std::int32_t>(bytes + 20))
        .Text("\" S=\"")
        .Whole(Load<std::int32_t>(bytes + 24))
        .Text("\" E=\"")
        .Whole(Load<std::int32_t>(bytes + 28))
        .Text("\" N=\"")
        .Whole(Load<std::int32_t>(bytes + 32))
        .Text("\" />");
    Number<std::uint16_t>(2, "SegmentNumX", bytes + 36);
    Number<std::uint16_t>(2, "SegmentNumY", bytes + 38);
    Number<std::uint16_t>(2, "CompCoef", bytes + 40);
    Text(1, "</QenFileInfo>");
  }

  void Text(std::size_t tabs, std::string_view text) { XmlLine(m_out, tabs).Text(text); }

  void Write(const Node& node, std::size_t tabs) {
    const Tags tags = TagsOf(node.Id);
    Text(tabs, tags.Open);
    switch (node.Id) {
      case id::kLine:
      case id::kPolygon:
        WritePoints(static_cast<const PointsNode&>(node), tabs + 1);
        break;
      case id::kLabel:
        WriteLabel(static_cast<const LabelNode&>(node), tabs + 1);
        break;
      default:
        WriteBranch(static_cast<const BranchNode&>(node), tabs + 1);
    }
    Text(tabs, tags.Close);
  }

 private:
  template <class T>
  static T Load(const std::uint8_t* bytes) {
    T value;
    std::memcpy(&value, bytes, sizeof value);
    return value;
  }

  template <class T>
  void Number(std::size_t tabs, std::string_view tag, const std::uint8_t* bytes) {
    XmlLine(m_out, tabs)
        .Text("<")
        .Text(tag)
        .Text(">")
        .Whole(Load<T>(bytes))
        .Text("</")
        .Text(tag)
        .Text(">");
  }

  void WriteBranch(const BranchNode& node, std::size_t tabs) {
    if (node.Id == id::kSegment) Number<std::uint16_t>(tabs, "MeshSegmentNo", node.Fields.data());
    if (node.Id == id::kLayer) Number<std::uint16_t>(tabs, "LayerNo", node.Fields.data());
    if (node.Id == id::kZIdObj) Number<std::uint64_t>(tabs, "ZId", node.Fields.data());
    for (const auto& below : node.Nodes) Write(*below, tabs);
  }

  template <std::size_t kSize>
  static char* Put(char* at, const char (&text)[kSize]) {
    std::memcpy(at, text, kSize - 1);
    return at + kSize - 1;
  }

  /// Nearly all lines are points: room is asked for once, and the position stays in a register.
  void WritePoint(const PlainPoint& point, std::size_t tabs) {
    char* const line = reinterpret_cast<char*>(m_out.Room(XmlLine::kLongest));
    char* const end = line + XmlLine::kLongest;
    std::memset(line, '\t', tabs);
    char* at = Put(line + tabs, "<Pt x=\"");
    at = Put(std::to_chars(at, end, point.X).ptr, "\" y=\"");
    at = Put(std::to_chars(at, end, point.Y).ptr, "\" />\r\n");
    m_out.Advance(static_cast<std::size_t>(at - line));
  }

  void WritePoints(const PointsNode& node, std::size_t tabs) {
    if (node.Id == id::kPolygon)
      XmlLine(m_out, tabs).Text("<Height>").Whole(node.Height).Text("</Height>");
    for (std::uint32_t i = 0; i < node.Count; ++i) WritePoint(node.Points[i], tabs);
  }

  void WriteLabel(const LabelNode& node, std::size_t tabs) {
    XmlLine(m_out, tabs).Text("<CtrlFlgs>").Whole(node.Flags).Text("</CtrlFlgs>");
    XmlLine(m_out, tabs).Text("<Angle>").Decimal(node.Angle).Text("</Angle>");
    WritePoint(node.At, tabs);
    XmlLine(m_out, tabs)
        .Text("<LblOffsetFontRate>")
        .Decimal(node.OffsetRate)
        .Text("</LblOffsetFontRate>");
    XmlLine(m_out, tabs)
        .Text("<LblOffsetAngle>")
        .Decimal(node.OffsetAngle)
        .Text("</LblOffsetAngle>");
    constexpr std::size_t kLongestUnit = 12;
    XmlLine line(m_out, tabs, XmlLine::kLongest + kLongestUnit * node.Units);
    line.Text("<Text>");
    for (std::uint32_t i = 0; i < node.Units; ++i) line.Unit(node.Text[i]);
    line.Text("</Text>");
  }

  PlainWriter& m_out;
};

}  // namespace

void WritePlainMapXml(const PlainMap& map, const std::filesystem::path& path) {
  PlainWriter out(path);
  XmlTreeWriter xml(out);
  xml.Text(0, "<?xml version=\"1.0\" encoding=\"Shift_JIS\" ?>");
  xml.Text(0, "<Qen>");
  xml.WriteInfo(map.Info);
  xml.Write(*map.Root, 1);
  xml.Text(0, "</Qen>");
  out.Flush();
}

}  // namespace qenzor::bench
