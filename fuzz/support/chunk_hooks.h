#pragma once

// Included by a target whose inputs are binary documents: libFuzzer changes them by their chunks.

#include "support/chunk_mutator.h"

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size,
                                               std::size_t max_size, unsigned seed) {
  return fuzz::MutateChunks(data, size, max_size, seed);
}

extern "C" std::size_t LLVMFuzzerCustomCrossOver(const std::uint8_t* first, std::size_t first_size,
                                                 const std::uint8_t* second,
                                                 std::size_t second_size, std::uint8_t* out,
                                                 std::size_t max_out_size, unsigned seed) {
  return fuzz::CrossChunks(first, first_size, second, second_size, out, max_out_size, seed);
}
