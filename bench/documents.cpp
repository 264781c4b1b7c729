#include "bench/documents.h"

#include <bit>
#include <fstream>
#include <memory>
#include <stdexcept>

#include "qenzor/core/coding.h"
#include "qenzor/qen/cmb_lbl_obj.h"
#include "qenzor/qen/line_obj.h"
#include "qenzor/qen/poly_obj.h"
#include "qenzor/qen/qen.h"

namespace qenzor::bench {

namespace {

constexpr std::uint32_t kEnd = 0xFFFFFFFF;  // where AddElem appends

std::vector<CPoint> Points(const std::vector<Point>& points) {
  std::vector<CPoint> result;
  result.reserve(points.size());
  for (const Point& point : points) result.push_back({point.X, point.Y});
  return result;
}

struct MakeObjectEdit {
  CAbstractObjEdit* operator()(const Line& line) const {
    auto edit = std::make_unique<CLineObjEdit>();
    edit->Pt = Points(line.Points);
    return edit.release();
  }
  CAbstractObjEdit* operator()(const Polygon& polygon) const {
    auto edit = std::make_unique<CPolyObjEdit>();
    edit->Height = polygon.Height;
    edit->Pt = Points(polygon.Points);
    return edit.release();
  }
  CAbstractObjEdit* operator()(const Label& label) const {
    auto edit = std::make_unique<CCmbLblObjEdit>();
    edit->CtrlFlgs = label.Flags;
    edit->Angle = label.Angle;
    edit->Pt = {label.At.X, label.At.Y};
    edit->LblOffsetFontRate = label.OffsetRate;
    edit->LblOffsetAngle = label.OffsetAngle;
    edit->Text = label.Text;
    return edit.release();
  }
};

std::unique_ptr<CZIdObjEdit> MakeGroupEdit(const ZIdGroup& group) {
  auto edit = std::make_unique<CZIdObjEdit>();
  edit->ZId = group.Id;
  edit->ObjSet = std::make_unique<CObjSetEdit>();
  for (const Object& object : group.Objects)
    edit->ObjSet->AddElem(kEnd, std::visit(MakeObjectEdit(), object));
  return edit;
}

std::unique_ptr<CLayerDataEdit> MakeLayerEdit(const Layer& layer) {
  auto edit = std::make_unique<CLayerDataEdit>();
  edit->LayerNo = layer.Number;
  edit->ZIdObjSet = std::make_unique<CZIdObjSetEdit>();
  for (const ZIdGroup& group : layer.Groups)
    edit->ZIdObjSet->AddElem(kEnd, MakeGroupEdit(group).release());
  return edit;
}

std::unique_ptr<CMeshSegmentEdit> MakeSegmentEdit(const Segment& segment) {
  auto edit = std::make_unique<CMeshSegmentEdit>();
  edit->MeshSegmentNo = segment.Number;
  edit->LayerSet = std::make_unique<CLayerSetEdit>();
  for (const Layer& layer : segment.Layers)
    edit->LayerSet->AddElem(kEnd, MakeLayerEdit(layer).release());
  return edit;
}

constexpr std::array<char, 9> kIdent{'B', 'E', 'N', 'C', 'H', '1', '\r', '\n', '\x1A'};
constexpr std::uint16_t kMagic = 0x4041;

/// The bytes of a file, appended value by value.
class ByteWriter {
 public:
  template <class T>
  void Put(T value) {
    const std::size_t at = m_bytes.size();
    m_bytes.resize(at + sizeof(T));
    little_endian::Store(&m_bytes[at], value);
  }
  void PutHeader(std::uint32_t id, std::size_t data_size) {
    Put(id);
    Put(static_cast<std::uint32_t>(data_size));
  }
  void WriteTo(const std::filesystem::path& path) const {
    std::ofstream file(path, std::ios::binary);
    for (const std::uint8_t byte : m_bytes) file.put(static_cast<char>(byte));
    if (!file.flush()) throw std::runtime_error("cannot write " + path.string());
  }

 private:
  std::vector<std::uint8_t> m_bytes;
};

std::size_t IndexSetSize(const DrawAttribute& attribute) { return 4 + 4 * attribute.Infos.size(); }
std::size_t AttributeSize(const DrawAttribute& attribute) { return 16 + IndexSetSize(attribute); }
std::size_t InfoSize(const DrawInfo& info) { return 11 + 16 * info.Ranges.size(); }

template <class Elements, class Size>
std::size_t SetSize(const Elements& elements, Size size) {
  std::size_t sum = 4;
  for (const auto& element : elements) sum += 8 + size(element);
  return sum;
}

void PutAttribute(ByteWriter& out, const DrawAttribute& attribute) {
  out.PutHeader(3, AttributeSize(attribute));
  out.Put(attribute.Key);
  out.PutHeader(23, IndexSetSize(attribute));
  out.Put(static_cast<std::uint32_t>(attribute.Infos.size()));
  for (const std::uint32_t info : attribute.Infos) out.Put(info);
}

void PutInfo(ByteWriter& out, const DrawInfo& info) {
  out.PutHeader(10, InfoSize(info));
  out.Put(info.Code);
  out.Put(info.Color);
  out.Put(1.0F);
  out.Put(static_cast<std::uint16_t>(info.Ranges.size()));
  for (const ScaleRange& range : info.Ranges) {
    out.Put(range.Max);
    out.Put(range.Min);
    out.Put(range.Width);
    out.Put(0.5F);
    out.Put(std::uint16_t{0});
  }
}

}  // namespace

void WriteMapFile(const Map& map, const std::filesystem::path& path) {
  CQenEdit edit;
  edit.Ident = kIdent;
  edit.Magic = kMagic;
  edit.MajorVer = 1;
  edit.GeoCoodinate = 1;
  edit.IncRect = {-648000, -324000, 648000, 324000};
  edit.SegmentNumX = 1;
  edit.SegmentNumY = static_cast<std::uint16_t>(map.Segments.size());
  edit.CompCoef = 1000;
  edit.MapData = std::make_unique<CQenMapDataEdit>();
  edit.MapData->MeshSegmentSet = std::make_unique<CMeshSegmentSetEdit>();
  for (const Segment& segment : map.Segments)
    edit.MapData->MeshSegmentSet->AddElem(kEnd, MakeSegmentEdit(segment).release());
  const std::unique_ptr<CQen> document(edit.EditDataToQenData());
  if (!document || !document->Write(path.string()))
    throw std::runtime_error("cannot write " + path.string());
}

void WriteDrawFile(const DrawData& data, const std::filesystem::path& path) {
  const std::size_t attributes = SetSize(data.Attributes, AttributeSize);
  const std::size_t infos = SetSize(data.Infos, InfoSize);
  ByteWriter out;
  for (const char letter : kIdent) out.Put(letter);
  out.Put(kMagic);
  out.Put(std::uint16_t{1});
  out.Put(std::uint16_t{0});
  out.Put(std::uint32_t{0});
  out.PutHeader(26, 16 + attributes + infos);
  out.PutHeader(2, attributes);
  out.Put(static_cast<std::uint32_t>(data.Attributes.size()));
  for (const DrawAttribute& attribute : data.Attributes) PutAttribute(out, attribute);
  out.PutHeader(6, infos);
  out.Put(static_cast<std::uint32_t>(data.Infos.size()));
  for (const DrawInfo& info : data.Infos) PutInfo(out, info);
  out.WriteTo(path);
}

}  // namespace qenzor::bench
