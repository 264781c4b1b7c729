#include "gdal/map_layer.h"

#include <algorithm>
#include <array>
#include <limits>
#include <utility>

#include "gdal/object_fields.h"
#include "qenzor/qen/url_info.h"

namespace qenzor::gdal {

namespace {

constexpr std::array<OGRwkbGeometryType, kObjectKinds> kGeometryTypes{
    wkbLineString, wkbPolygon, wkbPoint, wkbPolygon, wkbPoint};

enum FirstFields { kZId, kSegment, kIndex };

CSLConstList UrlsOf(const CAbstractObj& object, CPLStringList& urls) {
  if (object.AddedObjInfoSet != nullptr)
    for (auto* info : *object.AddedObjInfoSet)
      if (auto* url = class_cast<CUrlInfo>(info)) urls.AddString(ToUtf8(url->Text).c_str());
  return urls.List();
}

}  // namespace

CMapLayer::CMapLayer(CFeatureIndex index, const CFrame& frame, OGRSpatialReference* crs,
                     CFeatureStyles* styles)
    : m_index(std::move(index)), m_frame(frame), m_styles(styles) {
  const ObjectKind kind = m_index.GetKind();
  const std::string name = std::to_string(m_index.GetLayer()) + '_' + std::string(NameOf(kind));
  m_definition = new OGRFeatureDefn(name.c_str());
  m_definition->Reference();
  m_definition->SetGeomType(kGeometryTypes[static_cast<std::size_t>(kind)]);
  m_definition->GetGeomFieldDefn(0)->SetSpatialRef(crs);
  SetDescription(name.c_str());

  for (const CFeatureIndex::Run& run : m_index.GetRuns())
    m_texts_z_ids |= !std::in_range<GIntBig>(run.Group->ZId);
  const auto add = [&](const char* field, OGRFieldType type) {
    OGRFieldDefn definition(field, type);
    m_definition->AddFieldDefn(&definition);
  };
  add("z_id", m_texts_z_ids ? OFTString : OFTInteger64);
  add("segment", OFTInteger);
  add("index", OFTInteger64);
  m_first_value = m_definition->GetFieldCount();
  AddValueFields(kind, *m_definition);
  m_url = m_definition->GetFieldCount();
  add("url", OFTStringList);

  for (const CFeatureIndex::Part& part : m_index.GetParts())
    m_frames.push_back(m_frame.ForSegment(part.Segment));
}

CMapLayer::~CMapLayer() { m_definition->Release(); }

OGRFeature* CMapLayer::GetNextFeature() {
  while (true) {
    m_next = FindInFilter();
    if (m_next >= m_index.GetCount()) return nullptr;
    std::unique_ptr<OGRFeature> feature = Make(m_next++);
    if ((m_poFilterGeom == nullptr || FilterGeometry(feature->GetGeometryRef())) &&
        (m_poAttrQuery == nullptr || m_poAttrQuery->Evaluate(feature.get())))
      return feature.release();
  }
}

OGRErr CMapLayer::SetNextByIndex(GIntBig index) {
  if (m_poFilterGeom != nullptr || m_poAttrQuery != nullptr) return OGRLayer::SetNextByIndex(index);
  if (index < 0 || index >= m_index.GetCount()) return OGRERR_FAILURE;
  m_next = static_cast<std::uint32_t>(index);
  return OGRERR_NONE;
}

OGRFeature* CMapLayer::GetFeature(GIntBig fid) {
  if (fid < 0 || fid >= m_index.GetCount()) return nullptr;
  return Make(static_cast<std::uint32_t>(fid)).release();
}

GIntBig CMapLayer::GetFeatureCount(int force) {
  if (m_poFilterGeom != nullptr || m_poAttrQuery != nullptr)
    return OGRLayer::GetFeatureCount(force);
  return m_index.GetCount();
}

OGRErr CMapLayer::GetExtent(OGREnvelope* extent, int /*force*/) {
  *extent = OGREnvelope();
  for (std::size_t i = 0; i < m_frames.size(); ++i) {
    const auto& bounds = m_index.GetParts()[i].Bounds;
    if (!bounds.has_value()) continue;
    const MapBox box = m_frames[i].At(*bounds);
    extent->Merge(box.West, box.South);
    extent->Merge(box.East, box.North);
  }
  return extent->IsInit() ? OGRERR_NONE : OGRERR_FAILURE;
}

int CMapLayer::TestCapability(const char* capability) {
  if (EQUAL(capability, OLCFastFeatureCount) || EQUAL(capability, OLCFastSetNextByIndex))
    return m_poFilterGeom == nullptr && m_poAttrQuery == nullptr;
  return EQUAL(capability, OLCRandomRead) || EQUAL(capability, OLCFastGetExtent) ||
         EQUAL(capability, OLCFastSpatialFilter) || EQUAL(capability, OLCStringsAsUTF8) ||
         EQUAL(capability, OLCIgnoreFields);
}

bool CMapLayer::MeetsFilter(const CRect& bounds, const CSegmentFrame& frame) const {
  const MapBox box = frame.At(bounds);
  return box.West <= m_sFilterEnvelope.MaxX && box.East >= m_sFilterEnvelope.MinX &&
         box.South <= m_sFilterEnvelope.MaxY && box.North >= m_sFilterEnvelope.MinY;
}

std::uint32_t CMapLayer::FindInFilter() {
  std::uint32_t fid = m_next;
  if (m_poFilterGeom == nullptr) return fid;
  while (fid < m_index.GetCount()) {
    const std::size_t part = m_index.PartOf(fid);
    const std::uint32_t end = m_index.EndOf(part);
    const auto& around = m_index.GetParts()[part].Bounds;
    if (!around.has_value() || !MeetsFilter(*around, m_frames[part])) {
      fid = end;
      continue;
    }
    for (; fid < end; ++fid) {
      const ObjectAt at = m_index.At(fid);
      const auto bounds = FindBounds(at.Kind, *at.Object);
      if (bounds.has_value() && MeetsFilter(*bounds, m_frames[part])) return fid;
    }
  }
  return fid;
}

std::unique_ptr<OGRFeature> CMapLayer::Make(std::uint32_t fid) {
  const ObjectAt at = m_index.At(fid);
  auto feature = std::make_unique<OGRFeature>(m_definition);
  feature->SetFID(fid);
  const auto wants = [&](int field) { return !m_definition->GetFieldDefn(field)->IsIgnored(); };
  if (wants(kZId)) {
    if (m_texts_z_ids)
      feature->SetField(kZId, std::to_string(at.ZId).c_str());
    else
      feature->SetField(kZId, static_cast<GIntBig>(at.ZId));
  }
  if (wants(kSegment)) feature->SetField(kSegment, at.Segment);
  if (wants(kIndex)) feature->SetField(kIndex, static_cast<GIntBig>(at.Index));
  SetValueFields(at, m_first_value, *feature);
  if (wants(m_url)) {
    CPLStringList urls;
    if (CSLConstList list = UrlsOf(*at.Object, urls)) feature->SetField(m_url, list);
  }
  if (!m_definition->IsStyleIgnored() && m_styles != nullptr) {
    const std::string style = m_styles->Find(at);
    if (!style.empty()) feature->SetStyleString(style.c_str());
  }
  OGRGeomFieldDefn* place = m_definition->GetGeomFieldDefn(0);
  if (!place->IsIgnored()) {
    std::unique_ptr<OGRGeometry> geometry = MakeGeometry(at, m_frames[m_index.PartOf(fid)]);
    geometry->assignSpatialReference(place->GetSpatialRef());
    feature->SetGeometryDirectly(geometry.release());
  }
  return feature;
}

std::unique_ptr<OGRGeometry> CMapLayer::MakeGeometry(const ObjectAt& at,
                                                     const CSegmentFrame& frame) {
  if (at.Kind == ObjectKind::kRasterRect) {
    const MapBox box = frame.At(*FindBounds(at.Kind, *at.Object));
    auto ring = std::make_unique<OGRLinearRing>();
    for (const auto& [x, y] : {std::pair(box.West, box.South), std::pair(box.West, box.North),
                               std::pair(box.East, box.North), std::pair(box.East, box.South),
                               std::pair(box.West, box.South)})
      ring->addPoint(x, y);
    auto polygon = std::make_unique<OGRPolygon>();
    polygon->addRingDirectly(ring.release());
    return polygon;
  }
  std::span<const CPoint> points = PointsOf(at.Kind, *at.Object);
  if (at.Kind == ObjectKind::kLabel || at.Kind == ObjectKind::kRasterPoint) {
    const MapPoint place = frame.At(points.front());
    return std::make_unique<OGRPoint>(place.x, place.y);
  }
  const bool is_line = at.Kind == ObjectKind::kLine;
  if (!is_line) points = OpenRing(points);
  const bool has_geometry = HasGeometry(at.Kind, *at.Object);
  if (has_geometry) {
    m_x.clear();
    m_y.clear();
    for (const CPoint& point : points) {
      const MapPoint place = frame.At(point);
      m_x.push_back(place.x);
      m_y.push_back(place.y);
    }
  }
  if (is_line) {
    auto line = std::make_unique<OGRLineString>();
    if (has_geometry) line->setPoints(static_cast<int>(m_x.size()), m_x.data(), m_y.data());
    return line;
  }
  auto polygon = std::make_unique<OGRPolygon>();
  if (!has_geometry) return polygon;
  m_x.push_back(m_x.front());
  m_y.push_back(m_y.front());
  auto ring = std::make_unique<OGRLinearRing>();
  ring->setPoints(static_cast<int>(m_x.size()), m_x.data(), m_y.data());
  polygon->addRingDirectly(ring.release());
  return polygon;
}

}  // namespace qenzor::gdal
