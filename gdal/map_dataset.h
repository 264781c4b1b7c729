#pragma once

#include <gdal_priv.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "gdal/map_layer.h"

namespace qenzor::gdal {

/// A map project that GDAL has opened, with its drawing where there is one. It is only read.
class CMapDataset final : public GDALDataset {
 public:
  /// Whether the content is a map project's: in binary form by the mark behind its six characters,
  /// its magic and its root chunk's id, in XML form by its root element.
  static int Identify(GDALOpenInfo* info);
  /// Null, and an error that names the place and the reason, where the file cannot be read.
  static GDALDataset* Open(GDALOpenInfo* info);
  ~CMapDataset() override;

  int GetLayerCount() override { return static_cast<int>(m_layers.size()); }
  OGRLayer* GetLayer(int number) override;
  int TestCapability(const char* capability) override;
  char** GetFileList() override;

 private:
  CMapDataset(std::unique_ptr<CQen> map, const FrameOptions& options);
  /// Reads the drawing that belongs to the map, by name or from beside it.
  void ReadDrawing(const std::string& map_path, CSLConstList options);
  void MakeLayers(bool trusts_bounds);

  std::unique_ptr<CQen> m_map;
  std::unique_ptr<CZor> m_drawing;
  std::string m_drawing_path;
  CFrame m_frame;
  std::unique_ptr<CFeatureStyles> m_styles;
  OGRSpatialReference* m_crs = nullptr;
  std::vector<std::unique_ptr<CMapLayer>> m_layers;
};

}  // namespace qenzor::gdal
