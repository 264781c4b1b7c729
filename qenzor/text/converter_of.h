#pragma once

#include "qenzor/text/abstract_chunk_text_converter.h"

namespace qenzor {

/// The converter of a class, from its field list.
/// The member functions stand in converter_of_impl.h.
template <class Chunk>
class QENZOR_EXPORT CConverterOf : public CAbstractChunkTextConverter {
 public:
  void ConvertDataToString(CStdioFile& file, CAbstractChunk* chunk, std::uint32_t level) override;
  void SetChunkEditParam(CAbstractChunkEdit* edit, TiXmlElement* elem) override;
};

}  // namespace qenzor
