#pragma once

#include <filesystem>

#include "bench/content.h"

namespace qenzor::bench {

/// Write content as documents of the library. What goes wrong throws std::runtime_error.

/// A map project, built through the edit forms.
void WriteMapFile(const Map& map, const std::filesystem::path& path);
/// Draw data, put together byte by byte: the library would write the draw attributes in its own
/// order, and a reader is to meet their keys in random order.
void WriteDrawFile(const DrawData& data, const std::filesystem::path& path);

}  // namespace qenzor::bench
