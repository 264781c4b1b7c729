#include "qenzor/text/chunk_text_converter_factory.h"

#include "qenzor/platform/code_page.h"
#include "qenzor/text/converter_rows_impl.h"

namespace qenzor {

const CChunkTextConverterFactory::Row* FindConverterRow(CAbstractChunk& chunk) {
  for (const CRuntimeClass* cls = &chunk.GetRuntimeClass(); cls != nullptr; cls = cls->Base)
    for (const CChunkTextConverterFactory::Row& row : ConverterRows())
      if (row.Chunk == cls) return &row;
  return nullptr;
}

const CChunkTextConverterFactory::Row* FindConverterRow(std::string_view tag) {
  for (const CChunkTextConverterFactory::Row& row : ConverterRows())
    if (row.Tag == tag) return &row;
  return nullptr;
}

CAbstractChunkTextConverter* CChunkTextConverterFactory::CreateInstance(CAbstractChunk* chunk) {
  const Row* row = chunk == nullptr ? nullptr : FindConverterRow(*chunk);
  return row == nullptr ? nullptr : row->Create();
}

CAbstractChunkTextConverter* CChunkTextConverterFactory::CreateInstance(const CString& tag) {
  return CreateInstance(WidenText(tag));
}

CAbstractChunkTextConverter* CChunkTextConverterFactory::CreateInstance(const CStringW& tag) {
  const Row* row = FindConverterRow(NarrowText(tag));
  return row == nullptr ? nullptr : row->Create();
}

}  // namespace qenzor
