#pragma once

#include <gdal_priv.h>
#include <ogrsf_frmts.h>

#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "gdal/map_builder.h"

namespace qenzor::gdal {

/// A new layer: it keeps its features until the dataset is closed, which makes the map of them.
class CWriterLayer final : public OGRLayer {
 public:
  /// Kind is set where the layer's name gives it.
  CWriterLayer(const char* name, OGRSpatialReference* crs, OGRwkbGeometryType type,
               std::uint16_t number, std::optional<ObjectKind> kind,
               const std::optional<MapBox>& box);
  ~CWriterLayer() override;

  OGRFeatureDefn* GetLayerDefn() override { return m_definition; }
  void ResetReading() override {}
  OGRFeature* GetNextFeature() override { return nullptr; }
  GIntBig GetFeatureCount(int /*force*/) override {
    return static_cast<GIntBig>(m_features.size());
  }
  OGRErr CreateField(OGRFieldDefn* field, int approximate) override;
  int TestCapability(const char* capability) override;
  // A failure that nobody goes on after takes its features back, and with them the file.
  OGRErr StartTransaction() override;
  OGRErr CommitTransaction() override { return OGRERR_NONE; }
  OGRErr RollbackTransaction() override;

  std::uint16_t GetNumber() const { return m_number; }
  std::optional<ObjectKind> GetKind() const { return m_kind; }
  bool HasFailed() const { return m_failed; }
  const std::vector<std::unique_ptr<OGRFeature>>& GetFeatures() const { return m_features; }

 protected:
  OGRErr ICreateFeature(OGRFeature* feature) override;

 private:
  OGRFeatureDefn* m_definition;
  std::uint16_t m_number;
  std::optional<ObjectKind> m_kind;
  std::optional<MapBox> m_box;
  std::vector<std::unique_ptr<OGRFeature>> m_features;
  bool m_failed = false;
};

/// A map project that is being made. The file is written when the dataset is closed, as a whole or
/// not at all.
class CMapWriter final : public GDALDataset {
 public:
  static GDALDataset* Create(const char* name, int columns, int rows, int bands, GDALDataType type,
                             char** options);
  ~CMapWriter() override;

  int GetLayerCount() override { return static_cast<int>(m_layers.size()); }
  OGRLayer* GetLayer(int number) override;
  int TestCapability(const char* capability) override;

 protected:
  OGRLayer* ICreateLayer(const char* name, OGRSpatialReference* crs, OGRwkbGeometryType type,
                         char** options) override;

 private:
  CMapWriter() = default;
  bool Write();
  std::optional<MapBox> FindExtent() const;
  bool AddFeature(CMapBuilder& map, const CWriterLayer& layer, const OGRFeature& feature);
  std::uint64_t ZIdOf(const OGRFeature& feature);
  void TellOfFieldsWithoutPlace() const;

  MapLayout m_layout;
  std::string m_label_field = "Text";
  std::string m_z_id_field;
  std::uint64_t m_next_z_id = 1;
  std::vector<std::unique_ptr<CWriterLayer>> m_layers;
};

}  // namespace qenzor::gdal
