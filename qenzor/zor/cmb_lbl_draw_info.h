#pragma once

#include "qenzor/zor/draw_info_of.h"

namespace qenzor {

class CCmbLblDrawInfoEdit;
class CCmbLblDrawInfoTextConverter;

/// One range of scales, 24 bytes.
struct QENZOR_EXPORT CmbLblDrawScData {
  std::uint32_t DenomMax = 0;
  std::uint32_t DenomMin = 0;
  float DenomMaxMarkScale = 0;
  std::uint16_t DenomMaxFontSize = 0;
  std::uint16_t DenomMaxFrameMgn = 0;
  std::uint16_t DenomMaxFrameWidth = 0;
  std::int16_t DenomMaxShadowOffset = 0;
  float Sensitivity = 0;

  static constexpr auto Fields() {
    using D = CmbLblDrawScData;
    return std::tuple{field("DenomMax", &D::DenomMax),
                      field("DenomMin", &D::DenomMin),
                      field("DenomMaxMarkScale", &D::DenomMaxMarkScale),
                      field("DenomMaxFontSize", &D::DenomMaxFontSize),
                      field("DenomMaxFrameMgn", &D::DenomMaxFrameMgn),
                      field("DenomMaxFrameWidth", &D::DenomMaxFrameWidth),
                      field("DenomMaxShadowOffset", &D::DenomMaxShadowOffset),
                      field("Sensitivity", &D::Sensitivity)};
  }

  bool operator==(const CmbLblDrawScData&) const = default;
};

/// The fields that hold at every scale.
template <class Form>
struct QENZOR_EXPORT CmbLblDrawComData {
  std::uint16_t CtrlFlgs = 0;
  std::uint32_t MarkDataIdx = 0;
  std::uint8_t FontId = 0;
  std::uint16_t FontCtrl = 0;
  std::uint8_t FrameCtrl = 0;
  std::uint32_t FontColor = 0;
  std::uint32_t FrameColor = 0;
  std::uint32_t ShadowColor = 0;

  static constexpr auto Fields() {
    using D = CmbLblDrawComData;
    return std::tuple{field("CtrlFlgs", &D::CtrlFlgs),     field("MarkDataIdx", &D::MarkDataIdx),
                      field("FontId", &D::FontId),         field("FontCtrl", &D::FontCtrl),
                      field("FrameCtrl", &D::FrameCtrl),   color("FontColor", &D::FontColor),
                      color("FrameColor", &D::FrameColor), color("ShadowColor", &D::ShadowColor)};
  }
};

/// Which frame stands around a label: the value of FrameCtrl.
enum class CmbLblFrameKind : std::uint8_t {};

/// How labels are drawn: mark, text, frame and shadow.
/// Data: the common fields in order (22 bytes), count (u16), records; 24 * (count + 1) bytes.
class QENZOR_EXPORT CCmbLblDrawInfo
    : public CDrawInfoOf<CCmbLblDrawInfo, CmbLblDrawComData, CmbLblDrawScData> {
 public:
  static constexpr std::uint32_t kChunkId = 4;
  static constexpr std::string_view kTag = "CmbLblDrawInfo";
  using EditClass = CCmbLblDrawInfoEdit;
  using ConverterClass = CCmbLblDrawInfoTextConverter;

  /// Bit 0 of CtrlFlgs: the label's text is drawn.
  bool IsShowLabel() const { return (CtrlFlgs & 1U) != 0; }
  /// Bit 1 of CtrlFlgs: the label's mark is drawn.
  bool IsShowMark() const { return (CtrlFlgs & 2U) != 0; }
  /// Bit 0 of FontCtrl.
  bool IsLabelShaded() const { return (FontCtrl & 1U) != 0; }
  CmbLblFrameKind GetFrameKind() const { return static_cast<CmbLblFrameKind>(FrameCtrl); }
};

class QENZOR_EXPORT CCmbLblDrawInfoEdit
    : public CDrawInfoEditOf<CCmbLblDrawInfoEdit, CCmbLblDrawInfo, CmbLblDrawComData,
                             CmbLblDrawScData> {};

class QENZOR_EXPORT CCmbLblDrawInfoTextConverter
    : public CDrawInfoConverterOf<CCmbLblDrawInfo, CCmbLblDrawInfoEdit> {};

extern template class CChunkOf<CCmbLblDrawInfo, CAbstractDrawInfo,
                               DrawInfoData<CmbLblDrawComData, CmbLblDrawScData, ChunkForm>>;
extern template class CEditOf<CCmbLblDrawInfoEdit, CCmbLblDrawInfo, CAbstractDrawInfoEdit,
                              DrawInfoData<CmbLblDrawComData, CmbLblDrawScData, EditForm>>;
extern template class CConverterOf<CCmbLblDrawInfo, CCmbLblDrawInfoEdit>;
extern template class CDrawInfoConverterOf<CCmbLblDrawInfo, CCmbLblDrawInfoEdit>;

}  // namespace qenzor
