#pragma once

#include <cstddef>

namespace qenzor {

/// Has the system supply the pages of a large block, all of which is about to be used, in one go:
/// page by page it spends more time on the memory of a large document than the reading takes.
/// Larger pages would be fewer, but fresh ones come at several times the cost on virtual machines
/// whose idle memory goes back to their host. A hint only.
void PopulatePages(void* memory, std::size_t size) noexcept;

}  // namespace qenzor
