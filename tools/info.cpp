#include <algorithm>
#include <array>
#include <bit>
#include <charconv>
#include <map>
#include <string_view>

#include "commands.h"
#include "documents.h"
#include "progress.h"
#include "qenzor/visit.h"
#include "report.h"

namespace tool {

namespace {

using namespace qenzor;  // NOLINT(google-build-using-namespace): it is about all of it

/// The rectangle around coordinates.
struct Box {
  CRect Rect;
  bool Empty = true;

  void Add(std::int32_t x, std::int32_t y) {
    if (Empty) Rect = {x, y, x, y};
    Empty = false;
    Rect = {std::min(Rect.left, x), std::min(Rect.top, y), std::max(Rect.right, x),
            std::max(Rect.bottom, y)};
  }
};

Json RectJson(const CRect& rect) {
  return Json::array({rect.left, rect.top, rect.right, rect.bottom});
}

Json InfoJson(const FileInfo& info) {
  std::array<char, 4> digits{'0', '0', '0', '0'};
  const std::size_t length =
      std::bit_width(info.Magic) == 0 ? 1U : (std::bit_width(info.Magic) + 3U) / 4;
  std::to_chars(digits.data() + digits.size() - length, digits.data() + digits.size(), info.Magic,
                16);
  const std::string magic = "0x" + std::string(digits.data(), digits.size());
  const std::string_view ident(info.Ident.data(), 6);
  return {{"Ident", std::string(ident.substr(0, ident.find('\0')))},
          {"Magic", magic},
          {"MajorVer", info.MajorVer},
          {"MinorVer", info.MinorVer},
          {"Revision", info.Revision}};
}

/// What a map holds.
struct MapCounts {
  std::map<std::string_view, std::uint64_t> Objects;
  std::uint64_t Points = 0;
  struct Layer {
    std::uint64_t ZIdObjs = 0;
    std::uint64_t Objects = 0;
    Box Bounds;
  };
  std::map<std::uint16_t, Layer> Layers;
};

/// Counts the points of an object's fields, and gives each and the corners of rectangles to bounds.
template <class Object>
void CountPoints(const Object& object, std::uint64_t& points, Box& bounds) {
  ForEachField(FieldsOf<Object>(), [&]<class F>(const F& f) {
    if constexpr (requires { (object.*f.Member).left; }) {
      bounds.Add((object.*f.Member).left, (object.*f.Member).top);
      bounds.Add((object.*f.Member).right, (object.*f.Member).bottom);
    } else if constexpr (requires { (object.*f.Member).x; }) {
      bounds.Add((object.*f.Member).x, (object.*f.Member).y);
    } else if constexpr (requires { (object.*f.Member)[0].x; }) {
      points += (object.*f.Member).size();
      for (const CPoint& point : object.*f.Member) bounds.Add(point.x, point.y);
    }
  });
}

void CountObject(const CAbstractObj& obj, MapCounts& counts, MapCounts::Layer& layer) {
  ++counts.Objects[obj.GetRuntimeClass().Name];
  ++layer.Objects;
  Visit(obj, [&](const auto& object) { CountPoints(object, counts.Points, layer.Bounds); });
  if (obj.AddedObjInfoSet != nullptr) {
    ++counts.Objects[CAddedObjInfoSet::kTag];
    for (std::uint32_t i = 0; i < obj.AddedObjInfoSet->GetElemCount(); ++i)
      ++counts.Objects[obj.AddedObjInfoSet->GetElem(i)->GetRuntimeClass().Name];
  }
}

void CountLayer(CLayerData& layer, MapCounts& counts) {
  MapCounts::Layer& sums = counts.Layers[layer.LayerNo];
  ++counts.Objects[CLayerData::kTag];
  if (layer.ZIdObjSet == nullptr) return;
  for (std::uint32_t i = 0; i < layer.ZIdObjSet->GetElemCount(); ++i) {
    const CZIdObj* z_id_obj = layer.ZIdObjSet->GetElem(i);
    ++counts.Objects[CZIdObj::kTag];
    ++sums.ZIdObjs;
    if (z_id_obj->ObjSet == nullptr) continue;
    for (std::uint32_t j = 0; j < z_id_obj->ObjSet->GetElemCount(); ++j)
      CountObject(*z_id_obj->ObjSet->GetElem(j), counts, sums);
  }
}

/// Counts zero of every class that derives from Base.
template <class Base>
void NameKindsOf(std::map<std::string_view, std::uint64_t>& objects) {
  ForEachClass([&]<class Row>(Row) {
    if constexpr (std::is_base_of_v<Base, typename Row::Chunk>) objects[Row::kTag] = 0;
  });
}

MapCounts CountMap(const CQen& document) {
  MapCounts counts;
  for (const std::string_view tag :
       {CMeshSegment::kTag, CLayerData::kTag, CZIdObj::kTag, CAddedObjInfoSet::kTag})
    counts.Objects[tag] = 0;
  NameKindsOf<CAbstractObj>(counts.Objects);
  NameKindsOf<CAbstractAddedObjInfo>(counts.Objects);
  const auto* segments =
      document.MapData == nullptr ? nullptr : document.MapData->MeshSegmentSet.get();
  for (std::uint32_t i = 0; segments != nullptr && i < segments->GetElemCount(); ++i) {
    const CMeshSegment* segment = segments->GetElem(i);
    ++counts.Objects[CMeshSegment::kTag];
    for (std::uint32_t j = 0; segment->LayerSet != nullptr && j < segment->LayerSet->GetElemCount();
         ++j)
      CountLayer(*segment->LayerSet->GetElem(j), counts);
  }
  return counts;
}

Json ObjectsJson(const std::map<std::string_view, std::uint64_t>& objects) {
  Json json = Json::object();
  for (const auto& [tag, count] : objects) json[std::string(tag)] = count;
  return json;
}

Json DescribeContent(CQen& document) {
  const MapCounts counts = CountMap(document);
  Json info = InfoJson(document);
  info["GeoCoodinate"] = document.GeoCoodinate;
  info["IncRect"] = RectJson(document.IncRect);
  info["SegmentNumX"] = document.SegmentNumX;
  info["SegmentNumY"] = document.SegmentNumY;
  info["CompCoef"] = document.CompCoef;
  Json layers = Json::array();
  for (const auto& [number, layer] : counts.Layers)
    layers.push_back(
        {{"LayerNo", number},
         {"ZIdObjs", layer.ZIdObjs},
         {"Objects", layer.Objects},
         {"Bounds", layer.Bounds.Empty ? Json::array() : RectJson(layer.Bounds.Rect)}});
  return {{"FileInfo", info},
          {"Objects", ObjectsJson(counts.Objects)},
          {"Points", counts.Points},
          {"Layers", layers}};
}

Json DescribeContent(CZor& document) {
  constexpr std::string_view kMarkElem = "MarkElem";
  std::map<std::string_view, std::uint64_t> objects;
  for (const std::string_view tag : {CDrawAtter::kTag, CMarkData::kTag, kMarkElem})
    objects[tag] = 0;
  NameKindsOf<CAbstractDrawInfo>(objects);
  std::uint64_t indices = 0;
  std::uint64_t records = 0;
  std::uint64_t points = 0;
  const CZorDrawData& data = document.DrawData;
  if (data.DrawAtterSet != nullptr)
    for (const CDrawAtter* atter : data.DrawAtterSet->GetElems()) {
      ++objects[CDrawAtter::kTag];
      if (atter->DrawInfoIdxSet != nullptr) indices += atter->DrawInfoIdxSet->DrawInfoIdx.size();
    }
  for (std::uint32_t i = 0; data.DrawInfoSet != nullptr && i < data.DrawInfoSet->GetElemCount();
       ++i) {
    const CAbstractDrawInfo& draw_info = *data.DrawInfoSet->GetElem(i);
    ++objects[draw_info.GetRuntimeClass().Name];
    Visit(draw_info, [&](const auto& info) {
      if constexpr (requires { info.ScData; }) records += info.ScData.size();
    });
  }
  for (std::uint32_t i = 0; data.MarkDataSet != nullptr && i < data.MarkDataSet->GetElemCount();
       ++i) {
    const CMarkData& mark = *data.MarkDataSet->GetElem(i);
    ++objects[CMarkData::kTag];
    objects[kMarkElem] += mark.MarkElem.size();
    for (const CMarkElem& elem : mark.MarkElem) points += elem.Pt.size();
  }
  return {{"FileInfo", InfoJson(document)},
          {"Objects", ObjectsJson(objects)},
          {"DrawInfoIndices", indices},
          {"ScaleRecords", records},
          {"Points", points}};
}

/// The bytes that the document takes as a file.
template <class Document>
std::uint64_t StoredSize(Document& document, std::uint64_t info_size) {
  if constexpr (requires { document.MapData; }) {
    if (document.MapData == nullptr) return info_size;
    document.MapData->RecursiveReCalcDataSize();
    return info_size + document.MapData->GetChunkSize();
  } else {
    document.DrawData.RecursiveReCalcDataSize();
    return info_size + document.DrawData.GetChunkSize();
  }
}

}  // namespace

int RunInfo(const Options& options) {
  Json report;
  {
    CProgress progress(options.Quiet);
    progress.Stage("reading");
    const Input input = ReadInput(options.In, options.Kind, Need::kFront);
    const DocumentKind found = FindKind(input, options.Kind);
    WithKind(found.Kind, [&](auto kind) {
      using Kind = decltype(kind);
      const auto document = ReadEitherForm<Kind>(input, found.IsXml);
      report = {{"File", input.Name},
                {"Kind", Kind::kRoot},
                {"Form", found.IsXml ? "XML" : "binary"},
                {"FileBytes", input.Size}};
      constexpr std::uint64_t kInfoSize =
          Kind::kKind == BinaryKind::kQen ? PackedSize<QenFileInfo>() : PackedSize<ZorFileInfo>();
      report["StoredBytes"] = StoredSize(*document, kInfoSize);
      report.update(DescribeContent(*document));
    });
  }
  PrintReport(report, options.Json);
  return 0;
}

}  // namespace tool
