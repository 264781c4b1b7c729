#pragma once

#include <memory>
#include <span>

#include "qenzor/edit/chunk_edit_factory.h"

namespace qenzor {

/// The rows of all classes, in matching order. Defined where the classes are listed.
std::span<const CChunkEditFactory::Row> EditRows();

/// The edit object of a chunk, filled; null when its class has none. Throws when memory runs out,
/// so that an owner never takes want of memory for a class without an edit form.
std::unique_ptr<CAbstractChunkEdit> MakeEdit(CAbstractChunk& chunk);

}  // namespace qenzor
