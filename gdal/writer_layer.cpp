#include <cmath>
#include <utility>

#include "gdal/map_writer.h"

namespace qenzor::gdal {

namespace {

bool IsUtf8(const OGRFeature& feature) {
  for (int i = 0; i < feature.GetFieldCount(); ++i)
    if (feature.GetFieldDefnRef(i)->GetType() == OFTString && feature.IsFieldSetAndNotNull(i) &&
        CPLIsUTF8(feature.GetFieldAsString(i), -1) == FALSE)
      return false;
  return true;
}

}  // namespace

CWriterLayer::CWriterLayer(const char* name, OGRSpatialReference* crs, OGRwkbGeometryType type,
                           std::uint16_t number, std::optional<ObjectKind> kind,
                           const std::optional<MapBox>& box)
    : m_definition(new OGRFeatureDefn(name)), m_number(number), m_kind(kind), m_box(box) {
  m_definition->Reference();
  m_definition->SetGeomType(type);
  m_definition->GetGeomFieldDefn(0)->SetSpatialRef(crs);
  SetDescription(name);
}

CWriterLayer::~CWriterLayer() { m_definition->Release(); }

OGRErr CWriterLayer::CreateField(OGRFieldDefn* field, int /*approximate*/) {
  m_definition->AddFieldDefn(field);
  return OGRERR_NONE;
}

int CWriterLayer::TestCapability(const char* capability) {
  return static_cast<int>(EQUAL(capability, OLCSequentialWrite) ||
                          EQUAL(capability, OLCCreateField) || EQUAL(capability, OLCTransactions) ||
                          EQUAL(capability, OLCStringsAsUTF8));
}

OGRErr CWriterLayer::StartTransaction() {
  m_failed = false;
  return OGRERR_NONE;
}

OGRErr CWriterLayer::RollbackTransaction() {
  m_failed = true;
  return OGRERR_NONE;
}

OGRErr CWriterLayer::ICreateFeature(OGRFeature* feature) {
  if (feature->GetFID() == OGRNullFID) feature->SetFID(static_cast<GIntBig>(m_features.size()));
  const OGRGeometry* geometry = feature->GetGeometryRef();
  const auto refuse = [&](const char* reason) {
    CPLError(CE_Failure, CPLE_AppDefined, "feature " CPL_FRMT_GIB " of layer %s: %s",
             feature->GetFID(), GetDescription(), reason);
    return OGRERR_FAILURE;
  };
  if (geometry == nullptr) return refuse("it has no geometry");
  if (!geometry->IsEmpty()) {
    const MapBox box = BoxOf(*geometry);
    if (!(std::isfinite(box.West) && std::isfinite(box.South) && std::isfinite(box.East) &&
          std::isfinite(box.North)))
      return refuse("its coordinates are not finite");
    if (m_box.has_value() && !m_box->Holds(box))
      return refuse("its geometry lies outside the map's rectangle");
  }
  if (!IsUtf8(*feature)) return refuse("a text of it is not UTF-8");
  m_features.emplace_back(feature->Clone());
  if (feature->GetFID() == OGRNullFID) feature->SetFID(static_cast<GIntBig>(m_features.size()) - 1);
  return OGRERR_NONE;
}

}  // namespace qenzor::gdal
