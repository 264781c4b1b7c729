#pragma once

#include "qenzor/zor/draw_info_of.h"
#include "qenzor/zor/ras_draw_com_data.h"

namespace qenzor {

class CRasMMDrawInfoEdit;
class CRasMMDrawInfoTextConverter;

/// One range of scales, 14 bytes.
struct QENZOR_EXPORT RasMMDrawScData {
  std::uint32_t DenomMax = 0;
  std::uint32_t DenomMin = 0;
  std::uint16_t DenomMaxRasWidth = 0;
  float Sensitivity = 0;

  static constexpr auto Fields() {
    using D = RasMMDrawScData;
    return std::tuple{field("DenomMax", &D::DenomMax), field("DenomMin", &D::DenomMin),
                      field("DenomMaxRasWidth", &D::DenomMaxRasWidth),
                      field("Sensitivity", &D::Sensitivity)};
  }

  bool operator==(const RasMMDrawScData&) const = default;
};

/// How rasters that are placed at a point are drawn.
/// Data: name (u16 byte count, mark, UTF-16 units), ColorKey (u32), count (u16), records; 8 + 14 *
/// count bytes and the name.
class QENZOR_EXPORT CRasMMDrawInfo
    : public CDrawInfoOf<CRasMMDrawInfo, RasDrawComData, RasMMDrawScData> {
 public:
  static constexpr std::uint32_t kChunkId = 17;
  static constexpr std::string_view kTag = "RasMMDrawInfo";
  using EditClass = CRasMMDrawInfoEdit;
  using ConverterClass = CRasMMDrawInfoTextConverter;
};

class QENZOR_EXPORT CRasMMDrawInfoEdit
    : public CDrawInfoEditOf<CRasMMDrawInfoEdit, CRasMMDrawInfo, RasDrawComData, RasMMDrawScData> {
};

class QENZOR_EXPORT CRasMMDrawInfoTextConverter
    : public CDrawInfoConverterOf<CRasMMDrawInfo, CRasMMDrawInfoEdit> {};

extern template class CChunkOf<CRasMMDrawInfo, CAbstractDrawInfo,
                               DrawInfoData<RasDrawComData, RasMMDrawScData, ChunkForm>>;
extern template class CEditOf<CRasMMDrawInfoEdit, CRasMMDrawInfo, CAbstractDrawInfoEdit,
                              DrawInfoData<RasDrawComData, RasMMDrawScData, EditForm>>;
extern template class CConverterOf<CRasMMDrawInfo, CRasMMDrawInfoEdit>;
extern template class CDrawInfoConverterOf<CRasMMDrawInfo, CRasMMDrawInfoEdit>;

}  // namespace qenzor
