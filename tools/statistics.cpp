#include "tools/statistics.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <map>
#include <optional>
#include <string>

#include "tools/edit_walk.h"

namespace tool {

namespace {

using nlohmann::ordered_json;
using qenzor::CPoint;
using qenzor::CRect;

constexpr std::string_view kHexDigits = "0123456789ABCDEF";

std::string HexOf(std::uint32_t value, int digits) {
  std::string text;
  for (int i = digits - 1; i >= 0; --i) text += kHexDigits[value >> (4 * i) & 0xF];
  return text;
}

/// The characters in front of the line end and the end-of-file mark; all nine bytes when those two
/// are not what they should be. What is no printable ASCII is shown as its code.
std::string TextOfIdent(const std::array<char, 9>& ident) {
  std::string_view bytes(ident.data(), ident.size());
  constexpr std::string_view kEnd = "\r\n\x1A";
  if (bytes.ends_with(kEnd)) bytes.remove_suffix(kEnd.size());
  std::string text;
  for (const char c : bytes) {
    const auto byte = static_cast<unsigned char>(c);
    if (byte >= 0x20 && byte < 0x7F && c != '\\')
      text += c;
    else
      text += "\\x" + HexOf(byte, 2);
  }
  return text;
}

ordered_json JsonOf(const CRect& rect) {
  return {{"west", rect.left}, {"south", rect.top}, {"east", rect.right}, {"north", rect.bottom}};
}

ordered_json JsonOf(const std::array<char, 9>& ident) { return TextOfIdent(ident); }

template <class Number>
ordered_json JsonOf(Number number) {
  return number;
}

template <class Info>
ordered_json DescribeFields(const Info& info) {
  ordered_json fields = ordered_json::object();
  qenzor::ForEachField(Info::Fields(),
                       [&]<class O, class V, class C>(const qenzor::Field<O, V, C>& f) {
                         const std::string tag(f.Tag);
                         if constexpr (std::is_same_v<C, qenzor::MagicCoding>)
                           fields[tag] = "0x" + HexOf(info.*f.Member, 4);
                         else
                           fields[tag] = JsonOf(info.*f.Member);
                       });
  return fields;
}

/// The smallest rectangle around all points that it was given.
class Bounds {
 public:
  void Add(CPoint p) {
    if (!m_rect) m_rect = CRect{p.x, p.y, p.x, p.y};
    m_rect->left = std::min(m_rect->left, p.x);
    m_rect->top = std::min(m_rect->top, p.y);
    m_rect->right = std::max(m_rect->right, p.x);
    m_rect->bottom = std::max(m_rect->bottom, p.y);
  }
  ordered_json Describe() const {
    if (!m_rect) return nullptr;
    return {{"min_x", m_rect->left},
            {"min_y", m_rect->top},
            {"max_x", m_rect->right},
            {"max_y", m_rect->bottom}};
  }

 private:
  std::optional<CRect> m_rect;
};

/// Objects by class, all classes of a kind of document listed even where there are none.
template <class... Chunks>
ordered_json NoObjects(std::tuple<Chunks...>* /*classes*/) {
  return {{std::string(Chunks::kTag), std::uint64_t{0}}...};
}

template <class Chunk>
void Count(ordered_json& objects) {
  auto& count = objects[std::string(Chunk::kTag)];
  count = count.template get<std::uint64_t>() + 1;
}

struct Layer {
  std::uint64_t Objects = 0;
  std::uint64_t Points = 0;
  Bounds Extent;
};

/// Adds the coordinates of an object to its layer.
template <class Object>
void AddCoordinates(const Object& object, Layer& layer) {
  if constexpr (requires { object.Pt.size(); }) {
    layer.Points += object.Pt.size();
    for (const CPoint& point : object.Pt) layer.Extent.Add(point);
  } else if constexpr (requires { object.Pt.x; }) {
    layer.Extent.Add(object.Pt);
  } else {
    layer.Extent.Add({object.Rect.left, object.Rect.top});
    layer.Extent.Add({object.Rect.right, object.Rect.bottom});
  }
}

}  // namespace

ordered_json DescribeFileInfo(const qenzor::CQenEdit& edit) {
  return DescribeFields<qenzor::QenFileInfo>(edit);
}

ordered_json DescribeFileInfo(const qenzor::CZorEdit& edit) {
  return DescribeFields<qenzor::ZorFileInfo>(edit);
}

void DescribeContent(const qenzor::CQenEdit& edit, ordered_json& report) {
  using Classes = std::tuple<qenzor::CMeshSegment, qenzor::CLayerData, qenzor::CZIdObj,
                             qenzor::CLineObj, qenzor::CPolyObj, qenzor::CCmbLblObj,
                             qenzor::CRasLLObj, qenzor::CRasMMObj, qenzor::CUrlInfo>;
  ordered_json objects = NoObjects(static_cast<Classes*>(nullptr));
  std::map<std::uint16_t, Layer> layers;
  Layer* layer = nullptr;
  WalkEdit(edit, [&]<class Chunk>(const auto& object, const TreePath& /*path*/) {
    Count<Chunk>(objects);
    if constexpr (std::is_same_v<Chunk, qenzor::CLayerData>) layer = &layers[object.LayerNo];
    if constexpr (std::is_base_of_v<qenzor::CAbstractObj, Chunk>) {
      ++layer->Objects;
      AddCoordinates(object, *layer);
    }
  });

  std::uint64_t points = 0;
  ordered_json list = ordered_json::array();
  for (const auto& [number, content] : layers) {
    points += content.Points;
    list.push_back({{"LayerNo", number},
                    {"objects", content.Objects},
                    {"points", content.Points},
                    {"bounds", content.Extent.Describe()}});
  }
  report["objects"] = std::move(objects);
  report["points"] = points;
  report["layers"] = std::move(list);
}

void DescribeContent(const qenzor::CZorEdit& edit, ordered_json& report) {
  using Classes = std::tuple<qenzor::CDrawAtter, qenzor::CLineDrawInfo,
                             qenzor::CPolySolidBrushDrawInfo, qenzor::CPolyBmpBrushDrawInfo,
                             qenzor::CPolyShadowDrawInfo, qenzor::CCmbLblDrawInfo,
                             qenzor::CRasLLDrawInfo, qenzor::CRasMMDrawInfo, qenzor::CMarkData>;
  ordered_json objects = NoObjects(static_cast<Classes*>(nullptr));
  std::uint64_t index_entries = 0;
  std::uint64_t scale_records = 0;
  std::uint64_t mark_elements = 0;
  std::uint64_t points = 0;
  WalkEdit(edit, [&]<class Chunk>(const auto& object, const TreePath& /*path*/) {
    if constexpr (std::is_same_v<Chunk, qenzor::CDrawInfoIdxSet>) {
      index_entries += object.DrawInfoIdx.size();
    } else {
      Count<Chunk>(objects);
    }
    if constexpr (requires { object.ScData; }) scale_records += object.ScData.size();
    if constexpr (requires { object.MarkElem; }) {
      mark_elements += object.MarkElem.size();
      for (const auto& element : object.MarkElem) points += element->Pt.size();
    }
  });
  report["objects"] = std::move(objects);
  report["index_entries"] = index_entries;
  report["scale_records"] = scale_records;
  report["mark_elements"] = mark_elements;
  report["points"] = points;
}

}  // namespace tool
