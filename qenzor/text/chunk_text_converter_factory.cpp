#include "qenzor/text/chunk_text_converter_factory.h"

#include "qenzor/core/class_row_impl.h"
#include "qenzor/platform/code_page.h"

namespace qenzor {

CAbstractChunkTextConverter* CChunkTextConverterFactory::CreateInstance(CAbstractChunk* chunk) {
  const ClassRow* row = chunk == nullptr ? nullptr : FindRow(*chunk);
  return row == nullptr ? nullptr : row->CreateConverter();
}

CAbstractChunkTextConverter* CChunkTextConverterFactory::CreateInstance(const CString& tag) {
  return CreateInstance(WidenText(tag));
}

CAbstractChunkTextConverter* CChunkTextConverterFactory::CreateInstance(const CStringW& tag) {
  const ClassRow* row = FindRow(NarrowText(tag));
  return row == nullptr ? nullptr : row->CreateConverter();
}

}  // namespace qenzor
