#pragma once

#include "qenzor/zor/draw_info_of.h"
#include "qenzor/zor/ras_draw_com_data.h"

namespace qenzor {

class CRasLLDrawInfoEdit;
class CRasLLDrawInfoTextConverter;

/// One range of scales, 9 bytes.
struct QENZOR_EXPORT RasLLDrawScData {
  std::uint32_t DenomMax = 0;
  std::uint32_t DenomMin = 0;
  std::uint8_t Alpha = 0;

  static constexpr auto Fields() {
    using D = RasLLDrawScData;
    return std::tuple{field("DenomMax", &D::DenomMax), field("DenomMin", &D::DenomMin),
                      field("Alpha", &D::Alpha)};
  }

  bool operator==(const RasLLDrawScData&) const = default;
};

/// How rasters that are placed by their edges are drawn.
/// Data: name (u16 byte count, mark, UTF-16 units), ColorKey (u32), count (u16), records; 8 + 9 *
/// count bytes and the name.
class QENZOR_EXPORT CRasLLDrawInfo
    : public CDrawInfoOf<CRasLLDrawInfo, RasDrawComData, RasLLDrawScData> {
 public:
  static constexpr std::uint32_t kChunkId = 15;
  static constexpr std::string_view kTag = "RasLLDrawInfo";
  using EditClass = CRasLLDrawInfoEdit;
  using ConverterClass = CRasLLDrawInfoTextConverter;
};

class QENZOR_EXPORT CRasLLDrawInfoEdit
    : public CDrawInfoEditOf<CRasLLDrawInfoEdit, CRasLLDrawInfo, RasDrawComData, RasLLDrawScData> {
};

class QENZOR_EXPORT CRasLLDrawInfoTextConverter
    : public CDrawInfoConverterOf<CRasLLDrawInfo, CRasLLDrawInfoEdit> {};

extern template class CChunkOf<CRasLLDrawInfo, CAbstractDrawInfo,
                               DrawInfoData<RasDrawComData, RasLLDrawScData, ChunkForm>>;
extern template class CEditOf<CRasLLDrawInfoEdit, CRasLLDrawInfo, CAbstractDrawInfoEdit,
                              DrawInfoData<RasDrawComData, RasLLDrawScData, EditForm>>;
extern template class CConverterOf<CRasLLDrawInfo, CRasLLDrawInfoEdit>;
extern template class CDrawInfoConverterOf<CRasLLDrawInfo, CRasLLDrawInfoEdit>;

}  // namespace qenzor
