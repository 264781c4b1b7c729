#include "qenzor/draw/list_json.h"

#include <array>
#include <string_view>

#include "qenzor/view/geojson.h"

namespace qenzor {

namespace {

constexpr int kPlaceDecimals = 9;
constexpr int kSizeDecimals = 6;
constexpr std::string_view kHexDigits = "0123456789ABCDEF";

/// Writes one JSON object, key by key.
class CJsonLine {
 public:
  explicit CJsonLine(std::string& out) : m_out(out) { m_out += '{'; }

  void Key(std::string_view key) {
    if (!m_first) m_out += ',';
    m_first = false;
    (m_out += '"').append(key) += "\":";
  }
  void Raw(std::string_view key, std::string_view value) {
    Key(key);
    m_out += value;
  }
  void Size(std::string_view key, double value) {
    Key(key);
    AppendJsonNumber(m_out, value, kSizeDecimals);
  }
  void Color(std::string_view key, std::uint32_t color) {
    Key(key);
    m_out += "\"#";
    for (unsigned shift = 32; shift > 0; shift -= 4)
      m_out += kHexDigits[(color >> (shift - 4)) & 15U];
    m_out += '"';
  }
  template <class Characters>
  void Text(std::string_view key, Characters text) {
    Key(key);
    AppendJsonText(m_out, text);
  }
  void Place(std::string_view key, const MapPoint& point) {
    Key(key);
    Pair(point.x, point.y, kPlaceDecimals);
  }
  void Offset(std::string_view key, double x, double y) {
    Key(key);
    Pair(x, y, kSizeDecimals);
  }
  void Rect(std::string_view key, const MapBox& box) {
    Key(key);
    m_out += '[';
    for (const double edge : {box.West, box.South, box.East, box.North}) {
      AppendJsonNumber(m_out, edge, kPlaceDecimals);
      m_out += ',';
    }
    m_out.back() = ']';
  }
  void Points(std::span<const MapPoint> points) {
    Key("points");
    m_out += '[';
    for (const MapPoint& point : points) {
      Pair(point.x, point.y, kPlaceDecimals);
      m_out += ',';
    }
    m_out.back() = ']';
  }

 private:
  void Pair(double x, double y, int decimals) {
    m_out += '[';
    AppendJsonNumber(m_out, x, decimals);
    m_out += ',';
    AppendJsonNumber(m_out, y, decimals);
    m_out += ']';
  }

  std::string& m_out;
  bool m_first = true;
};

constexpr std::array<std::string_view, 7> kOpNames{"shadow", "fill", "pattern", "stroke",
                                                   "image",  "mark", "text"};

void Tell(CJsonLine& line, const ShadowOp& op) {
  line.Color("color", op.Color);
  line.Raw("size", "null");
  line.Offset("offset", op.OffsetX, op.OffsetY);
  line.Points(op.Points);
}

void Tell(CJsonLine& line, const FillOp& op) {
  line.Color("color", op.Color);
  line.Raw("size", "null");
  line.Points(op.Points);
}

void Tell(CJsonLine& line, const PatternOp& op) {
  line.Raw("color", "null");
  line.Raw("size", "null");
  line.Text("name", op.Name);
  line.Points(op.Points);
}

void Tell(CJsonLine& line, const StrokeOp& op) {
  line.Color("color", op.Color);
  line.Size("size", op.Width);
  line.Raw("code", std::to_string(op.Code));
  line.Points(op.Points);
}

void Tell(CJsonLine& line, const ImageOp& op) {
  line.Color("color", op.ColorKey);
  if (op.Rect.has_value())
    line.Raw("size", "null");
  else
    line.Size("size", op.Width);
  line.Text("name", op.Name);
  if (op.Rect.has_value()) {
    line.Rect("rect", *op.Rect);
    line.Raw("alpha", std::to_string(op.Alpha));
  } else {
    line.Place("at", op.At);
  }
}

void Tell(CJsonLine& line, const MarkOp& op) {
  line.Raw("color", "null");
  line.Size("size", op.Scale);
  line.Place("at", op.At);
  line.Raw("mark", std::to_string(op.Mark));
}

void Tell(CJsonLine& line, const TextOp& op, std::string& out) {
  line.Color("color", op.Color);
  line.Size("size", op.Size);
  line.Offset("offset", op.OffsetX, op.OffsetY);
  line.Place("at", op.At);
  line.Text("text", op.Text);
  line.Raw("anchor", std::to_string(op.Anchor));
  line.Size("angle", op.Angle);
  line.Raw("vertical", op.IsVertical ? "true" : "false");
  if (op.Frame.has_value()) {
    line.Key("frame");
    CJsonLine frame(out);
    frame.Raw("kind", std::to_string(op.Frame->Kind));
    frame.Color("color", op.Frame->Color);
    frame.Size("width", op.Frame->Width);
    frame.Size("margin", op.Frame->Margin);
    out += '}';
  }
  if (op.Shadow.has_value()) {
    line.Key("shadow");
    CJsonLine shadow(out);
    shadow.Color("color", op.Shadow->Color);
    shadow.Size("offset", op.Shadow->Offset);
    out += '}';
  }
}

}  // namespace

void AppendJsonLine(std::string& out, const DrawOrigin& origin, const DrawOp& op) {
  CJsonLine line(out);
  line.Text("op", kOpNames[op.index()]);
  line.Raw("layer", std::to_string(origin.Layer));
  line.Raw("segment", std::to_string(origin.Segment));
  line.Raw("z_id", std::to_string(origin.ZId));
  line.Raw("index", std::to_string(origin.Index));
  line.Raw("info", std::to_string(origin.Info));
  std::visit(
      [&](const auto& what) {
        if constexpr (std::is_same_v<std::decay_t<decltype(what)>, TextOp>)
          Tell(line, what, out);
        else
          Tell(line, what);
      },
      op);
  out += "}\n";
}

}  // namespace qenzor
