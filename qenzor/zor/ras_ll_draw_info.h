#pragma once

#include "qenzor/zor/draw_info_of.h"
#include "qenzor/zor/ras_draw_common.h"

namespace qenzor {

class CRasLLDrawInfoEdit;
class CRasLLDrawInfoTextConverter;

/// One range of scales, 9 bytes.
struct QENZOR_EXPORT RasLLDrawScale {
  // The denominators of the range, the N of 1:N.
  std::uint32_t DenomMax = 0;
  std::uint32_t DenomMin = 0;
  /// Opacity, 0 to 255; kept, not interpreted.
  std::uint8_t Alpha = 0;

  static constexpr auto Fields() {
    using D = RasLLDrawScale;
    return std::tuple{field("DenomMax", &D::DenomMax), field("DenomMin", &D::DenomMin),
                      field("Alpha", &D::Alpha)};
  }

  bool operator==(const RasLLDrawScale&) const = default;
};
using RasLLDrawScData = RasLLDrawScale;

/// How rasters that are placed by their edges are drawn.
/// Data: name (u16 byte count, mark, UTF-16 units), ColorKey (u32), count (u16), records; 8 + 9 *
/// count bytes and the name.
class QENZOR_EXPORT CRasLLDrawInfo
    : public CDrawInfoOf<CRasLLDrawInfo, RasDrawCommon, RasLLDrawScale> {
 public:
  static constexpr std::uint32_t kChunkId = 15;
  static constexpr std::string_view kTag = "RasLLDrawInfo";
  using EditClass = CRasLLDrawInfoEdit;
  using ConverterClass = CRasLLDrawInfoTextConverter;
};

class QENZOR_EXPORT CRasLLDrawInfoEdit : public CEditOf<CRasLLDrawInfo> {};

class QENZOR_EXPORT CRasLLDrawInfoTextConverter : public CDrawInfoConverterOf<CRasLLDrawInfo> {};

extern template class CChunkOf<CRasLLDrawInfo, CAbstractDrawInfo,
                               DrawInfoFields<RasDrawCommon, RasLLDrawScale, ChunkForm>>;

}  // namespace qenzor
