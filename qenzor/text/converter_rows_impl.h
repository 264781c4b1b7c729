#pragma once

#include <span>
#include <string_view>

#include "qenzor/text/chunk_text_converter_factory.h"

namespace qenzor {

/// The rows of all classes, in matching order. Defined where the classes are listed.
std::span<const CChunkTextConverterFactory::Row> ConverterRows();

/// The row of a chunk's class, or of a tag; null when there is none.
const CChunkTextConverterFactory::Row* FindConverterRow(CAbstractChunk& chunk);
const CChunkTextConverterFactory::Row* FindConverterRow(std::string_view tag);

}  // namespace qenzor
