#pragma once

#include "qenzor/text/abstract_chunk_text_converter.h"

namespace qenzor {

/// The converter of a class, from its field list. Chunk and Edit are the class's other two forms.
/// The member functions stand in converter_of_impl.h.
template <class Chunk, class Edit>
class QENZOR_EXPORT CConverterOf : public CAbstractChunkTextConverter {
 public:
  void ConvertDataToString(CStdioFile& file, CAbstractChunk* chunk, std::uint32_t level) override;
  void SetChunkEditParam(CAbstractChunkEdit* edit, TiXmlElement* elem) override;
};

}  // namespace qenzor
