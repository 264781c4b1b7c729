#pragma once

#include "qenzor/text/abstract_chunk_text_converter.h"

namespace qenzor {

/// Finds the converter of a chunk or of an element tag. The caller owns the converter returned;
/// null when there is none.
class QENZOR_EXPORT CChunkTextConverterFactory {
 public:
  [[nodiscard]] static CAbstractChunkTextConverter* CreateInstance(CAbstractChunk* chunk);
  /// The tag is compared exactly, in the narrow code page.
  [[nodiscard]] static CAbstractChunkTextConverter* CreateInstance(const CString& tag);
  [[nodiscard]] static CAbstractChunkTextConverter* CreateInstance(const CStringW& tag);
};

}  // namespace qenzor
