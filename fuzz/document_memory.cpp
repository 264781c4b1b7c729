// Documents read from memory, in bounds, then taken through another form.

#include "support/chunk_hooks.h"
#include "support/documents.h"
#include "support/memory_limit.h"

namespace {

template <class Kind>
void ReadFromMemory(std::span<const std::uint8_t> input) {
  // A block of the exact size, so that a byte too far is seen.
  const std::vector<std::uint8_t> bytes(input.begin(), input.end());
  typename Kind::Document document;
  bool read = false;
  {
    const fuzz::MemoryLimit limit(fuzz::MemoryFor(bytes.size()));
    read = document.Read(bytes.data(), static_cast<std::uint32_t>(bytes.size()));
  }
  if (read) fuzz::TakePassage<Kind>(document, fuzz::ChoiceOf(input));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::WithKindOf({data, size}, [&]<class Kind>(Kind) { ReadFromMemory<Kind>({data, size}); });
  return 0;
}
