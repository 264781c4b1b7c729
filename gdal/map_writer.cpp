#include "gdal/map_writer.h"

#include <cmath>
#include <limits>
#include <string_view>
#include <utility>

#include "gdal/object_fields.h"
#include "gdal/vsi_file.h"
#include "qenzor/qen/url_info.h"
#include "qenzor/storable.h"
#include "qenzor/view/words_impl.h"

namespace qenzor::gdal {

namespace {

std::optional<MapBox> ParseBox(std::string_view text) {
  std::vector<double> edges;
  const bool is_valid = ForEachWord(text, ',', [&](std::string_view word) {
    const auto edge = ParseWhole<double>(word);
    if (edge.has_value()) edges.push_back(*edge);
    return edge.has_value();
  });
  if (!is_valid || edges.size() != 4 || !(edges[0] < edges[2] && edges[1] < edges[3]))
    return std::nullopt;
  return MapBox{edges[0], edges[1], edges[2], edges[3]};
}

std::optional<std::pair<std::uint16_t, std::uint16_t>> ParseMesh(std::string_view text) {
  const std::size_t middle = text.find_first_of("xX");
  if (middle == std::string_view::npos) return std::nullopt;
  const auto x = ParseWhole<std::uint16_t>(text.substr(0, middle));
  const auto y = ParseWhole<std::uint16_t>(text.substr(middle + 1));
  if (!x.has_value() || !y.has_value() || *x == 0 || *y == 0) return std::nullopt;
  return std::pair(*x, *y);
}

/// Takes an option's value where it is given. False, and an error, where it is not valid.
template <class T, class Parse>
bool TakeOption(CSLConstList options, const char* name, T& target, const Parse& parse) {
  const char* text = CSLFetchNameValue(options, name);
  if (text == nullptr) return true;
  const auto value = parse(text);
  if (!value.has_value()) {
    CPLError(CE_Failure, CPLE_IllegalArg, "%s=%s is not valid", name, text);
    return false;
  }
  target = *value;
  return true;
}

/// The number and the kind that a name as 1_line gives.
std::optional<std::pair<std::uint16_t, ObjectKind>> ParseLayerName(std::string_view name) {
  const std::size_t middle = name.find('_');
  if (middle == std::string_view::npos) return std::nullopt;
  const auto number = ParseWhole<std::uint16_t>(name.substr(0, middle));
  for (std::size_t kind = 0; kind < kObjectKinds; ++kind)
    if (number.has_value() && name.substr(middle + 1) == kObjectKindNames[kind])
      return std::pair(*number, static_cast<ObjectKind>(kind));
  return std::nullopt;
}

/// The links of a feature: a list, a text with one, or as GeoPackage keeps lists, "(2:a,b)".
std::vector<std::string> LinksOf(const OGRFeature& feature) {
  std::vector<std::string> links;
  const int index = feature.GetFieldIndex("url");
  if (index < 0 || !feature.IsFieldSetAndNotNull(index)) return links;
  if (feature.GetFieldDefnRef(index)->GetType() == OFTStringList) {
    for (CSLConstList list = feature.GetFieldAsStringList(index);
         list != nullptr && *list != nullptr; ++list)
      links.emplace_back(*list);
    return links;
  }
  std::string_view text = feature.GetFieldAsString(index);
  const std::size_t colon = text.find(':');
  if (text.size() > 2 && text.front() == '(' && text.back() == ')' &&
      colon != std::string_view::npos &&
      ParseWhole<std::size_t>(text.substr(1, colon - 1)).has_value()) {
    text = text.substr(colon + 1, text.size() - colon - 2);
    ForEachWord(text, ',', [&](std::string_view link) {
      links.emplace_back(link);
      return true;
    });
  } else if (!text.empty()) {
    links.emplace_back(text);
  }
  return links;
}

void AddLinks(const std::vector<std::string>& links, CAbstractObjEdit& object) {
  if (links.empty()) return;
  object.AddedObjInfoSet = std::make_unique<CAddedObjInfoSetEdit>();
  for (const std::string& link : links) {
    auto url = std::make_unique<CUrlInfoEdit>();
    url->Text = DecodeText(link, TextEncoding::kUtf8);
    object.AddedObjInfoSet->Append(std::move(url));
  }
}

bool Save(CQenEdit& edit, const std::string& path) {
  if (const auto unstorable = FindUnstorable(edit)) {
    CPLError(CE_Failure, CPLE_AppDefined, "%s: %s: %s", path.c_str(), unstorable->ChunkPath.c_str(),
             unstorable->Reason.c_str());
    return false;
  }
  const std::unique_ptr<CQen> map(edit.TakeQenData());
  const std::string scratch = path + ".part";
  CVsiFile file;
  if (map != nullptr && file.OpenVsi(scratch, "wb") && map->Write(&file) && file.Finish() &&
      VSIRename(scratch.c_str(), path.c_str()) == 0)
    return true;
  CPLError(CE_Failure, CPLE_FileIO, "%s: cannot be written", path.c_str());
  VSIUnlink(scratch.c_str());
  return false;
}

}  // namespace

GDALDataset* CMapWriter::Create(const char* name, int /*columns*/, int /*rows*/, int bands,
                                GDALDataType /*type*/, char** options) {
  if (bands != 0) {
    CPLError(CE_Failure, CPLE_NotSupported, "map projects hold no bands");
    return nullptr;
  }
  std::unique_ptr<CMapWriter> writer(new CMapWriter());
  MapLayout& layout = writer->m_layout;
  if (!TakeOption(options, "BBOX", layout.Box, ParseBox) ||
      !TakeOption(options, "SEGMENTS", layout.Segments, ParseMesh) ||
      !TakeOption(options, "COEF", layout.Coef,
                  [](const char* text) {
                    const auto coef = ParseWhole<std::uint16_t>(text);
                    return coef == std::uint16_t{0} ? std::nullopt : coef;
                  }) ||
      !TakeOption(options, "GEO", layout.Geo,
                  [](const char* text) { return ParseWhole<std::uint8_t>(text); }))
    return nullptr;
  // With a rectangle, what does not fit into it is told before anything is put there.
  if (layout.Box.has_value() && !LayOut(layout, *layout.Box).has_value()) return nullptr;
  if (const char* field = CSLFetchNameValue(options, "LABEL_FIELD")) writer->m_label_field = field;
  if (const char* field = CSLFetchNameValue(options, "ZID_FIELD")) writer->m_z_id_field = field;
  writer->SetDescription(name);
  return writer.release();
}

CMapWriter::~CMapWriter() {
  for (const auto& layer : m_layers)
    if (layer->HasFailed()) return;
  Write();
}

OGRLayer* CMapWriter::GetLayer(int number) {
  if (number < 0 || number >= GetLayerCount()) return nullptr;
  return m_layers[static_cast<std::size_t>(number)].get();
}

int CMapWriter::TestCapability(const char* capability) {
  return static_cast<int>(EQUAL(capability, ODsCCreateLayer));
}

OGRLayer* CMapWriter::ICreateLayer(const char* name, OGRSpatialReference* crs,
                                   OGRwkbGeometryType type, char** options) {
  if (crs != nullptr && crs->IsProjected() != 0) {
    CPLError(CE_Failure, CPLE_AppDefined,
             "layer %s: its coordinates are not degrees: reproject with -t_srs EPSG:4326", name);
    return nullptr;
  }
  const auto named = ParseLayerName(name);
  auto number = named.has_value() ? named->first : static_cast<std::uint16_t>(m_layers.size());
  if (!TakeOption(options, "LAYER_NO", number,
                  [](const char* text) { return ParseWhole<std::uint16_t>(text); }))
    return nullptr;
  std::optional<ObjectKind> kind;
  if (named.has_value()) kind = named->second;
  m_layers.push_back(std::make_unique<CWriterLayer>(name, crs, type, number, kind, m_layout.Box));
  return m_layers.back().get();
}

std::optional<MapBox> CMapWriter::FindExtent() const {
  OGREnvelope all;
  for (const auto& layer : m_layers)
    for (const auto& feature : layer->GetFeatures())
      if (const OGRGeometry* geometry = feature->GetGeometryRef(); !geometry->IsEmpty()) {
        OGREnvelope one;
        geometry->getEnvelope(&one);
        all.Merge(one);
      }
  if (all.IsInit() == FALSE) return std::nullopt;
  return MapBox{all.MinX, all.MinY, all.MaxX, all.MaxY};
}

std::uint64_t CMapWriter::ZIdOf(const OGRFeature& feature) {
  const int index = feature.GetFieldIndex(m_z_id_field.empty() ? "z_id" : m_z_id_field.c_str());
  if (index >= 0 && feature.IsFieldSetAndNotNull(index))
    if (const auto z_id = ParseWhole<std::uint64_t>(feature.GetFieldAsString(index))) return *z_id;
  return m_next_z_id++;
}

bool CMapWriter::AddFeature(CMapBuilder& map, const CWriterLayer& layer,
                            const OGRFeature& feature) {
  const std::vector<std::string> links = LinksOf(feature);
  const FeaturePlace place{
      layer.GetNumber(), ZIdOf(feature),
      layer.GetKind() == ObjectKind::kRasterRect || layer.GetKind() == ObjectKind::kRasterPoint};
  bool fits = true;
  const bool is_added =
      map.Add(*feature.GetGeometryRef(), place, [&](ObjectKind kind, CAbstractObjEdit& object) {
        fits = TakeValueFields(feature, kind, object) && fits;
        const int label = feature.GetFieldIndex(m_label_field.c_str());
        if (kind == ObjectKind::kLabel && label >= 0 && feature.IsFieldSetAndNotNull(label))
          static_cast<CCmbLblObjEdit&>(object).Text =
              DecodeText(feature.GetFieldAsString(label), TextEncoding::kUtf8);
        AddLinks(links, object);
      });
  if (is_added && fits) return true;
  CPLError(CE_Failure, CPLE_AppDefined, "feature " CPL_FRMT_GIB " of layer %s cannot be stored",
           feature.GetFID(), const_cast<CWriterLayer&>(layer).GetDescription());
  return false;
}

void CMapWriter::TellOfFieldsWithoutPlace() const {
  std::set<std::string> places{"z_id", "segment", "index", "url", m_label_field, m_z_id_field};
  for (std::size_t kind = 0; kind < kObjectKinds; ++kind)
    WithClassOf(static_cast<ObjectKind>(kind), [&]<class Class>() {
      ForEachValueField<Class>([&](const auto& entry) { places.emplace(entry.Tag); });
    });
  std::string lost;
  for (const auto& layer : m_layers)
    for (int i = 0; i < layer->GetLayerDefn()->GetFieldCount(); ++i) {
      const std::string name = layer->GetLayerDefn()->GetFieldDefn(i)->GetNameRef();
      if (places.insert(name).second) lost += (lost.empty() ? "" : ", ") + name;
    }
  if (!lost.empty())
    CPLError(CE_Warning, CPLE_AppDefined, "fields that have no place in a map project: %s",
             lost.c_str());
}

bool CMapWriter::Write() {
  const std::optional<MapBox> extent = FindExtent();
  const auto info = LayOut(m_layout, extent.value_or(MapBox{0, 0, 0, 0}));
  if (!info.has_value()) return false;
  TellOfFieldsWithoutPlace();
  CMapBuilder map(*info);
  std::uint64_t features = 0;
  for (const auto& layer : m_layers)
    for (const auto& feature : layer->GetFeatures()) {
      if (!AddFeature(map, *layer, *feature)) return false;
      ++features;
    }
  const std::unique_ptr<CQenEdit> edit = map.Take();
  if (!Save(*edit, GetDescription())) return false;
  CPLDebug("QENZOR", "%s: " CPL_FRMT_GUIB " features became " CPL_FRMT_GUIB " objects",
           GetDescription(), static_cast<GUIntBig>(features),
           static_cast<GUIntBig>(map.GetAdded()));
  if (map.GetVanished() > 0)
    CPLError(CE_Warning, CPLE_AppDefined,
             CPL_FRMT_GUIB " of the parts of " CPL_FRMT_GUIB
                           " features are smaller than the map's grid and are left out",
             static_cast<GUIntBig>(map.GetVanished()), static_cast<GUIntBig>(features));
  return true;
}

}  // namespace qenzor::gdal
