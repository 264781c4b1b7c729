#pragma once

#include "qenzor/zor/draw_info_of.h"
#include "qenzor/zor/ras_draw_common.h"

namespace qenzor {

class CRasMMDrawInfoEdit;
class CRasMMDrawInfoTextConverter;

/// One range of scales, 14 bytes.
struct QENZOR_EXPORT RasMMDrawScale {
  // The denominators of the range, the N of 1:N.
  std::uint32_t DenomMax = 0;
  std::uint32_t DenomMin = 0;
  /// Width at 1:DenomMax; its unit is not interpreted.
  std::uint16_t DenomMaxRasWidth = 0;
  /// Kept, not interpreted.
  float Sensitivity = 0;

  static constexpr auto Fields() {
    using D = RasMMDrawScale;
    return std::tuple{field("DenomMax", &D::DenomMax), field("DenomMin", &D::DenomMin),
                      field("DenomMaxRasWidth", &D::DenomMaxRasWidth),
                      field("Sensitivity", &D::Sensitivity)};
  }

  bool operator==(const RasMMDrawScale&) const = default;
};
using RasMMDrawScData = RasMMDrawScale;

/// How rasters that are placed at a point are drawn.
/// Data: name (u16 byte count, mark, UTF-16 units), ColorKey (u32), count (u16), records; 8 + 14 *
/// count bytes and the name.
class QENZOR_EXPORT CRasMMDrawInfo
    : public CDrawInfoOf<CRasMMDrawInfo, RasDrawCommon, RasMMDrawScale> {
 public:
  static constexpr std::uint32_t kChunkId = 17;
  static constexpr std::string_view kTag = "RasMMDrawInfo";
  using EditClass = CRasMMDrawInfoEdit;
  using ConverterClass = CRasMMDrawInfoTextConverter;
};

class QENZOR_EXPORT CRasMMDrawInfoEdit : public CEditOf<CRasMMDrawInfo> {};

class QENZOR_EXPORT CRasMMDrawInfoTextConverter : public CDrawInfoConverterOf<CRasMMDrawInfo> {};

extern template class CChunkOf<CRasMMDrawInfo, CAbstractDrawInfo,
                               DrawInfoFields<RasDrawCommon, RasMMDrawScale, ChunkForm>>;

}  // namespace qenzor
