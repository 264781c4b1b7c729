// Documents read from memory, then taken through every form.

#include "support/documents.h"
#include "support/mutator.h"

namespace {

template <class Kind>
void ReadFromMemory(const std::uint8_t* data, std::size_t size) {
  // A block of the exact size, so that a byte too far is seen.
  const std::vector<std::uint8_t> bytes(data, data + size);
  typename Kind::Document document;
  if (document.Read(bytes.data(), static_cast<std::uint32_t>(bytes.size())))
    fuzz::TakeRound<Kind>(document);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  ReadFromMemory<fuzz::Qen>(data, size);
  ReadFromMemory<fuzz::Zor>(data, size);
  return 0;
}

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size,
                                               std::size_t max_size, unsigned seed) {
  return fuzz::MutateChunks(data, size, max_size, seed);
}
