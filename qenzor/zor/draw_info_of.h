#pragma once

#include "qenzor/core/chunk_of.h"
#include "qenzor/edit/edit_of.h"
#include "qenzor/text/converter_of.h"
#include "qenzor/zor/abstract_draw_info.h"

namespace qenzor {

/// What every draw info holds: fields that hold at every scale, then records that each hold
/// between two scale denominators (1:DenomMin to 1:DenomMax). Common and Scale list those fields.
/// Records keep their order; neither their ranges nor their values are checked.
template <template <class> class Common, class Scale, class Form>
struct QENZOR_EXPORT DrawInfoFields : Common<Form> {
  /// A record per range of scales, in the order of the file.
  typename Form::template Array<Scale> ScData;

  static constexpr auto Fields() {
    return std::tuple{group_of("ComData", Common<Form>::Fields()),
                      array("ScData", &DrawInfoFields::ScData)};
  }
};

template <template <class> class Common, class Scale>
struct EditFormOf<DrawInfoFields<Common, Scale, ChunkForm>> {
  using Type = DrawInfoFields<Common, Scale, EditForm>;
};

template <class Self, template <class> class Common, class Scale>
using CDrawInfoOf = CChunkOf<Self, CAbstractDrawInfo, DrawInfoFields<Common, Scale, ChunkForm>>;

/// The converter of a draw info reads its two kinds of child element one by one, so that a derived
/// converter may see to either.
template <class Chunk>
class QENZOR_EXPORT CDrawInfoConverterOf : public CConverterOf<Chunk> {
 public:
  void SetChunkEditParam(CAbstractChunkEdit* edit, TiXmlElement* elem) override;

 protected:
  /// Takes the fields that the "ComData" element holds.
  void SetChunkEditComDrawInfoParam(CAbstractChunkEdit* edit, TiXmlElement* elem);
  /// Appends a record, zero but for what the "ScData" element holds.
  void SetChunkEditScDrawInfoParam(CAbstractChunkEdit* edit, TiXmlElement* elem);
};

}  // namespace qenzor
