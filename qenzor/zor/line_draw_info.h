#pragma once

#include "qenzor/zor/draw_info_of.h"

namespace qenzor {

class CLineDrawInfoEdit;
class CLineDrawInfoTextConverter;

/// One range of scales, 16 bytes.
struct QENZOR_EXPORT LineDrawScale {
  // The denominators of the range, the N of 1:N.
  std::uint32_t DenomMax = 0;
  std::uint32_t DenomMin = 0;
  /// Width at 1:DenomMax; its unit is not interpreted.
  std::uint16_t DenomMaxWidth = 0;
  /// Kept, not interpreted.
  float Sensitivity = 0;
  /// Kept, not interpreted.
  std::uint16_t Extension = 0;

  static constexpr auto Fields() {
    using D = LineDrawScale;
    return std::tuple{field("DenomMax", &D::DenomMax), field("DenomMin", &D::DenomMin),
                      field("DenomMaxWidth", &D::DenomMaxWidth),
                      field("Sensitivity", &D::Sensitivity), field("Extension", &D::Extension)};
  }

  bool operator==(const LineDrawScale&) const = default;
};
using LineDrawScData = LineDrawScale;

/// The fields that hold at every scale.
template <class Form>
struct QENZOR_EXPORT LineDrawCommon {
  /// Kept, not interpreted.
  std::uint8_t LineCode = 0;
  /// 0xAARRGGBB.
  std::uint32_t Color = 0;
  /// Kept, not interpreted.
  float Aspect = Form::kIsChunk ? 1.0F : 0.0F;

  static constexpr auto Fields() {
    using D = LineDrawCommon;
    return std::tuple{field("LineCode", &D::LineCode), color("Color", &D::Color),
                      field("Aspect", &D::Aspect)};
  }
};

/// How lines are drawn. A new chunk has aspect 1, a new edit object aspect 0.
/// Data: LineCode (u8), Color (u32), Aspect (f32), count (u16), records; 11 + 16 * count bytes.
class QENZOR_EXPORT CLineDrawInfo
    : public CDrawInfoOf<CLineDrawInfo, LineDrawCommon, LineDrawScale> {
 public:
  static constexpr std::uint32_t kChunkId = 10;
  static constexpr std::string_view kTag = "LineDrawInfo";
  using EditClass = CLineDrawInfoEdit;
  using ConverterClass = CLineDrawInfoTextConverter;
};

class QENZOR_EXPORT CLineDrawInfoEdit : public CEditOf<CLineDrawInfo> {};

class QENZOR_EXPORT CLineDrawInfoTextConverter : public CDrawInfoConverterOf<CLineDrawInfo> {};

extern template class CChunkOf<CLineDrawInfo, CAbstractDrawInfo,
                               DrawInfoFields<LineDrawCommon, LineDrawScale, ChunkForm>>;

}  // namespace qenzor
