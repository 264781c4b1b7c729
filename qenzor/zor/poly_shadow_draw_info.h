#pragma once

#include "qenzor/zor/draw_info_of.h"

namespace qenzor {

class CPolyShadowDrawInfoEdit;
class CPolyShadowDrawInfoTextConverter;

/// One range of scales, 16 bytes.
struct QENZOR_EXPORT PolyShadowDrawScData {
  std::uint32_t DenomMax = 0;
  std::uint32_t DenomMin = 0;
  CPoint16 DenomMaxOffset;
  float Sensitivity = 0;

  static constexpr auto Fields() {
    using D = PolyShadowDrawScData;
    return std::tuple{field("DenomMax", &D::DenomMax), field("DenomMin", &D::DenomMin),
                      field("DenomMaxOffset", &D::DenomMaxOffset),
                      field("Sensitivity", &D::Sensitivity)};
  }

  bool operator==(const PolyShadowDrawScData&) const = default;
};

/// The fields that hold at every scale.
template <class Form>
struct QENZOR_EXPORT PolyShadowDrawComData {
  std::uint32_t ShadowColor = 0;

  static constexpr auto Fields() {
    using D = PolyShadowDrawComData;
    return std::tuple{color("ShadowColor", &D::ShadowColor)};
  }
};

/// How polygons cast a shadow of one colour.
/// Data: ShadowColor (u32), count (u16), records; 6 + 16 * count bytes.
class QENZOR_EXPORT CPolyShadowDrawInfo
    : public CDrawInfoOf<CPolyShadowDrawInfo, PolyShadowDrawComData, PolyShadowDrawScData> {
 public:
  static constexpr std::uint32_t kChunkId = 14;
  static constexpr std::string_view kTag = "PolyShadowDrawInfo";
  using EditClass = CPolyShadowDrawInfoEdit;
  using ConverterClass = CPolyShadowDrawInfoTextConverter;
};

class QENZOR_EXPORT CPolyShadowDrawInfoEdit
    : public CDrawInfoEditOf<CPolyShadowDrawInfoEdit, CPolyShadowDrawInfo, PolyShadowDrawComData,
                             PolyShadowDrawScData> {};

class QENZOR_EXPORT CPolyShadowDrawInfoTextConverter
    : public CDrawInfoConverterOf<CPolyShadowDrawInfo, CPolyShadowDrawInfoEdit> {};

extern template class CChunkOf<
    CPolyShadowDrawInfo, CAbstractDrawInfo,
    DrawInfoData<PolyShadowDrawComData, PolyShadowDrawScData, ChunkForm>>;
extern template class CEditOf<CPolyShadowDrawInfoEdit, CPolyShadowDrawInfo, CAbstractDrawInfoEdit,
                              DrawInfoData<PolyShadowDrawComData, PolyShadowDrawScData, EditForm>>;
extern template class CConverterOf<CPolyShadowDrawInfo, CPolyShadowDrawInfoEdit>;
extern template class CDrawInfoConverterOf<CPolyShadowDrawInfo, CPolyShadowDrawInfoEdit>;

}  // namespace qenzor
