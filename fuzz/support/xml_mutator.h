#pragma once

// Changes XML text by its elements, attributes and texts. A target hands both to libFuzzer by
// including xml_hooks.h.

#include <cstddef>
#include <cstdint>

namespace fuzz {

/// Changes the text of size bytes in place, to max_size bytes at most, and gives its new size.
std::size_t MutateXml(std::uint8_t* data, std::size_t size, std::size_t max_size, unsigned seed);

/// Puts elements of the second text into the first, and writes the result to out.
std::size_t CrossXml(const std::uint8_t* first, std::size_t first_size, const std::uint8_t* second,
                     std::size_t second_size, std::uint8_t* out, std::size_t max_out_size,
                     unsigned seed);

}  // namespace fuzz
