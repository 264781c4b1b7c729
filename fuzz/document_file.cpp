// Documents read through a file object. Whatever reads from memory reads from a file too, to the
// same document, but for raster draw infos whose name is counted round and chunks of unknown kinds,
// which a file steps over unread.

#include "support/documents.h"
#include "support/mutator.h"

namespace {

template <class Kind>
void ReadFromFile(const std::uint8_t* data, std::size_t size) {
  qenzor::CMemFile file(std::vector<std::uint8_t>(data, data + size));
  typename Kind::Document document;
  if (document.Read(&file)) fuzz::TakeRound<Kind>(document);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  ReadFromFile<fuzz::Qen>(data, size);
  ReadFromFile<fuzz::Zor>(data, size);
  return 0;
}

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size,
                                               std::size_t max_size, unsigned seed) {
  return fuzz::MutateChunks(data, size, max_size, seed);
}
