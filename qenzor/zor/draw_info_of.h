#pragma once

#include "qenzor/core/chunk_of.h"
#include "qenzor/edit/edit_of.h"
#include "qenzor/text/converter_of.h"
#include "qenzor/zor/abstract_draw_info.h"

namespace qenzor {

/// What every draw info holds: fields that hold at every scale, then records that each hold
/// between two scale denominators (1:DenomMin to 1:DenomMax). Com and Sc list those fields.
/// Records keep their order; neither their ranges nor their values are checked.
template <template <class> class Com, class Sc, class Form>
struct QENZOR_EXPORT DrawInfoData : Com<Form> {
  typename Form::template Array<Sc> ScData;

  static constexpr auto Fields() {
    return std::tuple{group_of("ComData", Com<Form>::Fields()),
                      array("ScData", &DrawInfoData::ScData)};
  }
};

template <class Self, template <class> class Com, class Sc>
using CDrawInfoOf = CChunkOf<Self, CAbstractDrawInfo, DrawInfoData<Com, Sc, ChunkForm>>;

template <class Self, class Chunk, template <class> class Com, class Sc>
using CDrawInfoEditOf =
    CEditOf<Self, Chunk, CAbstractDrawInfoEdit, DrawInfoData<Com, Sc, EditForm>>;

/// The converter of a draw info reads its two kinds of child element one by one, so that a derived
/// converter may see to either.
template <class Chunk, class Edit>
class QENZOR_EXPORT CDrawInfoConverterOf : public CConverterOf<Chunk, Edit> {
 public:
  void SetChunkEditParam(CAbstractChunkEdit* edit, TiXmlElement* elem) override;

 protected:
  /// Takes the fields that the "ComData" element holds.
  void SetChunkEditComDrawInfoParam(CAbstractChunkEdit* edit, TiXmlElement* elem);
  /// Appends a record, zero but for what the "ScData" element holds.
  void SetChunkEditScDrawInfoParam(CAbstractChunkEdit* edit, TiXmlElement* elem);
};

}  // namespace qenzor
