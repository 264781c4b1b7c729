#pragma once

#include <memory>

#include "qenzor/edit/abstract_chunk_edit.h"

namespace qenzor {

/// The edit object of a chunk, filled; null when its class has none. Throws when memory runs out,
/// so that an owner never mistakes that for a class without an edit form.
std::unique_ptr<CAbstractChunkEdit> MakeEdit(CAbstractChunk& chunk);

}  // namespace qenzor
