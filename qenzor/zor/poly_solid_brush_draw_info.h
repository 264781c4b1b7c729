#pragma once

#include "qenzor/zor/draw_info_of.h"

namespace qenzor {

class CPolySolidBrushDrawInfoEdit;
class CPolySolidBrushDrawInfoTextConverter;

/// One range of scales, 8 bytes.
struct QENZOR_EXPORT PolySolidBrushDrawScData {
  std::uint32_t DenomMax = 0;
  std::uint32_t DenomMin = 0;

  static constexpr auto Fields() {
    using D = PolySolidBrushDrawScData;
    return std::tuple{field("DenomMax", &D::DenomMax), field("DenomMin", &D::DenomMin)};
  }

  bool operator==(const PolySolidBrushDrawScData&) const = default;
};

/// The fields that hold at every scale.
template <class Form>
struct QENZOR_EXPORT PolySolidBrushDrawComData {
  std::uint32_t Color = 0;

  static constexpr auto Fields() {
    using D = PolySolidBrushDrawComData;
    return std::tuple{color("Color", &D::Color)};
  }
};

/// How polygons are filled with one colour.
/// Data: Color (u32), count (u16), records; 6 + 8 * count bytes.
class QENZOR_EXPORT CPolySolidBrushDrawInfo
    : public CDrawInfoOf<CPolySolidBrushDrawInfo, PolySolidBrushDrawComData,
                         PolySolidBrushDrawScData> {
 public:
  static constexpr std::uint32_t kChunkId = 12;
  static constexpr std::string_view kTag = "PolySolidBrushDrawInfo";
  using EditClass = CPolySolidBrushDrawInfoEdit;
  using ConverterClass = CPolySolidBrushDrawInfoTextConverter;
};

class QENZOR_EXPORT CPolySolidBrushDrawInfoEdit
    : public CDrawInfoEditOf<CPolySolidBrushDrawInfoEdit, CPolySolidBrushDrawInfo,
                             PolySolidBrushDrawComData, PolySolidBrushDrawScData> {};

class QENZOR_EXPORT CPolySolidBrushDrawInfoTextConverter
    : public CDrawInfoConverterOf<CPolySolidBrushDrawInfo, CPolySolidBrushDrawInfoEdit> {};

extern template class CChunkOf<
    CPolySolidBrushDrawInfo, CAbstractDrawInfo,
    DrawInfoData<PolySolidBrushDrawComData, PolySolidBrushDrawScData, ChunkForm>>;
extern template class CEditOf<
    CPolySolidBrushDrawInfoEdit, CPolySolidBrushDrawInfo, CAbstractDrawInfoEdit,
    DrawInfoData<PolySolidBrushDrawComData, PolySolidBrushDrawScData, EditForm>>;
extern template class CConverterOf<CPolySolidBrushDrawInfo, CPolySolidBrushDrawInfoEdit>;
extern template class CDrawInfoConverterOf<CPolySolidBrushDrawInfo, CPolySolidBrushDrawInfoEdit>;

}  // namespace qenzor
