#pragma once

#include "qenzor/zor/draw_info_of.h"

namespace qenzor {

class CPolySolidBrushDrawInfoEdit;
class CPolySolidBrushDrawInfoTextConverter;

/// One range of scales, 8 bytes.
struct QENZOR_EXPORT PolySolidBrushDrawScale {
  // The denominators of the range, the N of 1:N.
  std::uint32_t DenomMax = 0;
  std::uint32_t DenomMin = 0;

  static constexpr auto Fields() {
    using D = PolySolidBrushDrawScale;
    return std::tuple{field("DenomMax", &D::DenomMax), field("DenomMin", &D::DenomMin)};
  }

  bool operator==(const PolySolidBrushDrawScale&) const = default;
};
using PolySolidBrushDrawScData = PolySolidBrushDrawScale;

/// The fields that hold at every scale.
template <class Form>
struct QENZOR_EXPORT PolySolidBrushDrawCommon {
  /// 0xAARRGGBB.
  std::uint32_t Color = 0;

  static constexpr auto Fields() {
    using D = PolySolidBrushDrawCommon;
    return std::tuple{color("Color", &D::Color)};
  }
};

/// How polygons are filled with one colour.
/// Data: Color (u32), count (u16), records; 6 + 8 * count bytes.
class QENZOR_EXPORT CPolySolidBrushDrawInfo
    : public CDrawInfoOf<CPolySolidBrushDrawInfo, PolySolidBrushDrawCommon,
                         PolySolidBrushDrawScale> {
 public:
  static constexpr std::uint32_t kChunkId = 12;
  static constexpr std::string_view kTag = "PolySolidBrushDrawInfo";
  using EditClass = CPolySolidBrushDrawInfoEdit;
  using ConverterClass = CPolySolidBrushDrawInfoTextConverter;
};

class QENZOR_EXPORT CPolySolidBrushDrawInfoEdit : public CEditOf<CPolySolidBrushDrawInfo> {};

class QENZOR_EXPORT CPolySolidBrushDrawInfoTextConverter
    : public CDrawInfoConverterOf<CPolySolidBrushDrawInfo> {};

extern template class CChunkOf<
    CPolySolidBrushDrawInfo, CAbstractDrawInfo,
    DrawInfoFields<PolySolidBrushDrawCommon, PolySolidBrushDrawScale, ChunkForm>>;

}  // namespace qenzor
