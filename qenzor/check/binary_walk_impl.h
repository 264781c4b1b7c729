#pragma once

#include <optional>
#include <span>

#include "qenzor/check/content_impl.h"
#include "qenzor/check/reporter_impl.h"

namespace qenzor::check {

/// Walks the bytes of a document; what is wrong with their framing goes to the reporter, what they
/// hold to the listener. Returns whether reading takes the document.
bool WalkBinary(std::span<const std::uint8_t> bytes, const DocumentSchema& schema,
                CReporter& reporter, CContentListener& listener);

// Questions about one chunk of a document of which nothing else can be relied on. Its header stands
// at the place; the bytes end where it has to.

/// Whether reading takes the chunk, so many levels deep.
bool IsWholeChunk(std::span<const std::uint8_t> bytes, std::uint64_t at, std::uint32_t depth,
                  CReporter& reporter);
/// Where the fields of the chunk end, whatever its size says; nothing when they are not whole.
std::optional<std::uint64_t> FindFieldsEnd(std::span<const std::uint8_t> bytes, std::uint64_t at,
                                           const ClassSchema& schema, CReporter& reporter);

}  // namespace qenzor::check
