#pragma once

#include "qenzor/core/flags.h"
#include "qenzor/zor/draw_info_of.h"

namespace qenzor {

class CCmbLblDrawInfoEdit;
class CCmbLblDrawInfoTextConverter;

/// One range of scales, 24 bytes.
struct QENZOR_EXPORT CmbLblDrawScale {
  // The denominators of the range, the N of 1:N.
  std::uint32_t DenomMax = 0;
  std::uint32_t DenomMin = 0;
  // What holds at 1:DenomMax. The units of sizes and widths are not interpreted.
  float DenomMaxMarkScale = 0;
  std::uint16_t DenomMaxFontSize = 0;
  std::uint16_t DenomMaxFrameMgn = 0;
  std::uint16_t DenomMaxFrameWidth = 0;
  std::int16_t DenomMaxShadowOffset = 0;
  /// Kept, not interpreted.
  float Sensitivity = 0;

  static constexpr auto Fields() {
    using D = CmbLblDrawScale;
    return std::tuple{field("DenomMax", &D::DenomMax),
                      field("DenomMin", &D::DenomMin),
                      field("DenomMaxMarkScale", &D::DenomMaxMarkScale),
                      field("DenomMaxFontSize", &D::DenomMaxFontSize),
                      field("DenomMaxFrameMgn", &D::DenomMaxFrameMgn),
                      field("DenomMaxFrameWidth", &D::DenomMaxFrameWidth),
                      field("DenomMaxShadowOffset", &D::DenomMaxShadowOffset),
                      field("Sensitivity", &D::Sensitivity)};
  }

  bool operator==(const CmbLblDrawScale&) const = default;
};
using CmbLblDrawScData = CmbLblDrawScale;

/// Which frame stands around a label: the value of FrameCtrl, which has no names
/// here.
enum class CmbLblFrameKind : std::uint8_t {};

/// The fields that hold at every scale.
template <class Form>
struct QENZOR_EXPORT CmbLblDrawCommon {
  /// Bit 0: the text is shown; bit 1: the mark is. The other bits are kept.
  std::uint16_t CtrlFlgs = 0;
  /// The mark's position in the mark data set; not checked.
  std::uint32_t MarkDataIdx = 0;
  /// Kept, not interpreted.
  std::uint8_t FontId = 0;
  /// Bit 0: the text is shaded. The other bits are kept.
  std::uint16_t FontCtrl = 0;
  /// The frame kind; kept, not interpreted.
  std::uint8_t FrameCtrl = 0;
  // Colours, 0xAARRGGBB.
  std::uint32_t FontColor = 0;
  std::uint32_t FrameColor = 0;
  std::uint32_t ShadowColor = 0;

  static constexpr auto Fields() {
    using D = CmbLblDrawCommon;
    return std::tuple{field("CtrlFlgs", &D::CtrlFlgs),     field("MarkDataIdx", &D::MarkDataIdx),
                      field("FontId", &D::FontId),         field("FontCtrl", &D::FontCtrl),
                      field("FrameCtrl", &D::FrameCtrl),   color("FontColor", &D::FontColor),
                      color("FrameColor", &D::FrameColor), color("ShadowColor", &D::ShadowColor)};
  }

  bool IsShowLabel() const { return HasFlag(CtrlFlgs, 0); }
  void SetShowLabel(bool on) { SetFlag(CtrlFlgs, 0, on); }
  bool IsShowMark() const { return HasFlag(CtrlFlgs, 1); }
  void SetShowMark(bool on) { SetFlag(CtrlFlgs, 1, on); }
  bool IsLabelShaded() const { return HasFlag(FontCtrl, 0); }
  void SetLabelShaded(bool on) { SetFlag(FontCtrl, 0, on); }
  CmbLblFrameKind GetFrameKind() const { return static_cast<CmbLblFrameKind>(FrameCtrl); }
  void SetFrameKind(CmbLblFrameKind kind) { FrameCtrl = static_cast<std::uint8_t>(kind); }
};

/// How labels are drawn: mark, text, frame and shadow.
/// Data: the common fields in order (22 bytes), count (u16), records; 24 * (count + 1) bytes.
class QENZOR_EXPORT CCmbLblDrawInfo
    : public CDrawInfoOf<CCmbLblDrawInfo, CmbLblDrawCommon, CmbLblDrawScale> {
 public:
  static constexpr std::uint32_t kChunkId = 4;
  static constexpr std::string_view kTag = "CmbLblDrawInfo";
  using EditClass = CCmbLblDrawInfoEdit;
  using ConverterClass = CCmbLblDrawInfoTextConverter;
};

class QENZOR_EXPORT CCmbLblDrawInfoEdit : public CEditOf<CCmbLblDrawInfo> {};

class QENZOR_EXPORT CCmbLblDrawInfoTextConverter : public CDrawInfoConverterOf<CCmbLblDrawInfo> {};

extern template class CChunkOf<CCmbLblDrawInfo, CAbstractDrawInfo,
                               DrawInfoFields<CmbLblDrawCommon, CmbLblDrawScale, ChunkForm>>;

}  // namespace qenzor
