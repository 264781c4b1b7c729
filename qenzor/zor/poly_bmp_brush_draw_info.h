#pragma once

#include "qenzor/zor/draw_info_of.h"

namespace qenzor {

class CPolyBmpBrushDrawInfoEdit;
class CPolyBmpBrushDrawInfoTextConverter;

/// The longest name block, mark included: 31 characters.
inline constexpr std::uint32_t kMaxBrushNameBytes = 64;

/// One range of scales, 8 bytes.
struct QENZOR_EXPORT PolyBmpBrushDrawScData {
  std::uint32_t DenomMax = 0;
  std::uint32_t DenomMin = 0;

  static constexpr auto Fields() {
    using D = PolyBmpBrushDrawScData;
    return std::tuple{field("DenomMax", &D::DenomMax), field("DenomMin", &D::DenomMin)};
  }

  bool operator==(const PolyBmpBrushDrawScData&) const = default;
};

/// The fields that hold at every scale.
template <class Form>
struct QENZOR_EXPORT PolyBmpBrushDrawComData {
  typename Form::Name BrushFileName;

  static constexpr auto Fields() {
    using D = PolyBmpBrushDrawComData;
    return std::tuple{text("BrushFileName", &D::BrushFileName, kMaxBrushNameBytes)};
  }
};

/// How polygons are filled with a bitmap, which is named by its file.
/// Data: name (u16 byte count, mark, UTF-16 units), count (u16), records; 4 + 8 * count bytes and
/// the name. A name block longer than kMaxBrushNameBytes fails to read.
class QENZOR_EXPORT CPolyBmpBrushDrawInfo
    : public CDrawInfoOf<CPolyBmpBrushDrawInfo, PolyBmpBrushDrawComData, PolyBmpBrushDrawScData> {
 public:
  static constexpr std::uint32_t kChunkId = 27;
  static constexpr std::string_view kTag = "PolyBmpBrushDrawInfo";
  using EditClass = CPolyBmpBrushDrawInfoEdit;
  using ConverterClass = CPolyBmpBrushDrawInfoTextConverter;
};

class QENZOR_EXPORT CPolyBmpBrushDrawInfoEdit
    : public CDrawInfoEditOf<CPolyBmpBrushDrawInfoEdit, CPolyBmpBrushDrawInfo,
                             PolyBmpBrushDrawComData, PolyBmpBrushDrawScData> {};

class QENZOR_EXPORT CPolyBmpBrushDrawInfoTextConverter
    : public CDrawInfoConverterOf<CPolyBmpBrushDrawInfo, CPolyBmpBrushDrawInfoEdit> {};

extern template class CChunkOf<
    CPolyBmpBrushDrawInfo, CAbstractDrawInfo,
    DrawInfoData<PolyBmpBrushDrawComData, PolyBmpBrushDrawScData, ChunkForm>>;
extern template class CEditOf<
    CPolyBmpBrushDrawInfoEdit, CPolyBmpBrushDrawInfo, CAbstractDrawInfoEdit,
    DrawInfoData<PolyBmpBrushDrawComData, PolyBmpBrushDrawScData, EditForm>>;
extern template class CConverterOf<CPolyBmpBrushDrawInfo, CPolyBmpBrushDrawInfoEdit>;
extern template class CDrawInfoConverterOf<CPolyBmpBrushDrawInfo, CPolyBmpBrushDrawInfoEdit>;

}  // namespace qenzor
