#pragma once

#include "qenzor/zor/draw_info_of.h"

namespace qenzor {

class CPolyShadowDrawInfoEdit;
class CPolyShadowDrawInfoTextConverter;

/// One range of scales, 16 bytes.
struct QENZOR_EXPORT PolyShadowDrawScale {
  // The denominators of the range, the N of 1:N.
  std::uint32_t DenomMax = 0;
  std::uint32_t DenomMin = 0;
  /// Where the shadow falls at 1:DenomMax; its unit is not interpreted.
  CPoint16 DenomMaxOffset;
  /// Kept, not interpreted.
  float Sensitivity = 0;

  static constexpr auto Fields() {
    using D = PolyShadowDrawScale;
    return std::tuple{field("DenomMax", &D::DenomMax), field("DenomMin", &D::DenomMin),
                      field("DenomMaxOffset", &D::DenomMaxOffset),
                      field("Sensitivity", &D::Sensitivity)};
  }

  bool operator==(const PolyShadowDrawScale&) const = default;
};
using PolyShadowDrawScData = PolyShadowDrawScale;

/// The fields that hold at every scale.
template <class Form>
struct QENZOR_EXPORT PolyShadowDrawCommon {
  /// 0xAARRGGBB.
  std::uint32_t ShadowColor = 0;

  static constexpr auto Fields() {
    using D = PolyShadowDrawCommon;
    return std::tuple{color("ShadowColor", &D::ShadowColor)};
  }
};

/// How polygons cast a shadow of one colour.
/// Data: ShadowColor (u32), count (u16), records; 6 + 16 * count bytes.
class QENZOR_EXPORT CPolyShadowDrawInfo
    : public CDrawInfoOf<CPolyShadowDrawInfo, PolyShadowDrawCommon, PolyShadowDrawScale> {
 public:
  static constexpr std::uint32_t kChunkId = 14;
  static constexpr std::string_view kTag = "PolyShadowDrawInfo";
  using EditClass = CPolyShadowDrawInfoEdit;
  using ConverterClass = CPolyShadowDrawInfoTextConverter;
};

class QENZOR_EXPORT CPolyShadowDrawInfoEdit : public CEditOf<CPolyShadowDrawInfo> {};

class QENZOR_EXPORT CPolyShadowDrawInfoTextConverter
    : public CDrawInfoConverterOf<CPolyShadowDrawInfo> {};

extern template class CChunkOf<
    CPolyShadowDrawInfo, CAbstractDrawInfo,
    DrawInfoFields<PolyShadowDrawCommon, PolyShadowDrawScale, ChunkForm>>;

}  // namespace qenzor
