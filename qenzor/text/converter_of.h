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
  /// The same from an element that need not be in memory as a whole; for the library's own use.
  static void FillEdit(typename Chunk::EditClass& edit, CXmlElement& elem);
};

}  // namespace qenzor
