#pragma once

#include "qenzor/zor/draw_info_of.h"

namespace qenzor {

class CLineDrawInfoEdit;
class CLineDrawInfoTextConverter;

/// One range of scales, 16 bytes.
struct QENZOR_EXPORT LineDrawScData {
  std::uint32_t DenomMax = 0;
  std::uint32_t DenomMin = 0;
  std::uint16_t DenomMaxWidth = 0;
  float Sensitivity = 0;
  std::uint16_t Extension = 0;

  static constexpr auto Fields() {
    using D = LineDrawScData;
    return std::tuple{field("DenomMax", &D::DenomMax), field("DenomMin", &D::DenomMin),
                      field("DenomMaxWidth", &D::DenomMaxWidth),
                      field("Sensitivity", &D::Sensitivity), field("Extension", &D::Extension)};
  }

  bool operator==(const LineDrawScData&) const = default;
};

/// The fields that hold at every scale.
template <class Form>
struct QENZOR_EXPORT LineDrawComData {
  std::uint8_t LineCode = 0;
  std::uint32_t Color = 0;
  float Aspect = Form::kIsChunk ? 1.0F : 0.0F;

  static constexpr auto Fields() {
    using D = LineDrawComData;
    return std::tuple{field("LineCode", &D::LineCode), color("Color", &D::Color),
                      field("Aspect", &D::Aspect)};
  }
};

/// How lines are drawn. A new chunk has aspect 1, a new edit object aspect 0.
/// Data: LineCode (u8), Color (u32), Aspect (f32), count (u16), records; 11 + 16 * count bytes.
class QENZOR_EXPORT CLineDrawInfo
    : public CDrawInfoOf<CLineDrawInfo, LineDrawComData, LineDrawScData> {
 public:
  static constexpr std::uint32_t kChunkId = 10;
  static constexpr std::string_view kTag = "LineDrawInfo";
  using EditClass = CLineDrawInfoEdit;
  using ConverterClass = CLineDrawInfoTextConverter;
};

class QENZOR_EXPORT CLineDrawInfoEdit
    : public CDrawInfoEditOf<CLineDrawInfoEdit, CLineDrawInfo, LineDrawComData, LineDrawScData> {};

class QENZOR_EXPORT CLineDrawInfoTextConverter
    : public CDrawInfoConverterOf<CLineDrawInfo, CLineDrawInfoEdit> {};

extern template class CChunkOf<CLineDrawInfo, CAbstractDrawInfo,
                               DrawInfoData<LineDrawComData, LineDrawScData, ChunkForm>>;
extern template class CEditOf<CLineDrawInfoEdit, CLineDrawInfo, CAbstractDrawInfoEdit,
                              DrawInfoData<LineDrawComData, LineDrawScData, EditForm>>;
extern template class CConverterOf<CLineDrawInfo, CLineDrawInfoEdit>;
extern template class CDrawInfoConverterOf<CLineDrawInfo, CLineDrawInfoEdit>;

}  // namespace qenzor
