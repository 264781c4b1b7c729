#pragma once

#include <ogrsf_frmts.h>

#include <memory>
#include <string>
#include <vector>

#include "gdal/feature_index.h"
#include "gdal/feature_styles.h"
#include "qenzor/view/frame.h"

namespace qenzor::gdal {

/// The objects of one layer number and kind as an OGR layer.
class CMapLayer final : public OGRLayer {
 public:
  /// All but the index belongs to the dataset, which outlives its layers. The drawing's styles may
  /// be null, and so may the CRS.
  CMapLayer(CFeatureIndex index, const CFrame& frame, OGRSpatialReference* crs,
            CFeatureStyles* styles);
  ~CMapLayer() override;

  OGRFeatureDefn* GetLayerDefn() override { return m_definition; }
  void ResetReading() override { m_next = 0; }
  OGRFeature* GetNextFeature() override;
  OGRErr SetNextByIndex(GIntBig index) override;
  OGRFeature* GetFeature(GIntBig fid) override;
  GIntBig GetFeatureCount(int force) override;
  OGRErr GetExtent(OGREnvelope* extent, int force) override;
  OGRErr GetExtent(int field, OGREnvelope* extent, int force) override {
    return OGRLayer::GetExtent(field, extent, force);
  }
  int TestCapability(const char* capability) override;

 private:
  std::unique_ptr<OGRFeature> Make(std::uint32_t fid);
  std::unique_ptr<OGRGeometry> MakeGeometry(const ObjectAt& at, const CSegmentFrame& frame);
  /// The next object whose rectangle the spatial filter's touches, from m_next on; the count if
  /// there is none.
  std::uint32_t FindInFilter();
  bool MeetsFilter(const CRect& bounds, const CSegmentFrame& frame) const;

  CFeatureIndex m_index;
  const CFrame& m_frame;
  CFeatureStyles* m_styles;
  OGRFeatureDefn* m_definition;
  std::vector<CSegmentFrame> m_frames;  // of the parts
  bool m_texts_z_ids = false;           // where one is beyond 64 bits with a sign
  int m_first_value = 0;
  int m_url = 0;
  std::uint32_t m_next = 0;
  // Room for the coordinates of one object.
  std::vector<double> m_x;
  std::vector<double> m_y;
};

}  // namespace qenzor::gdal
