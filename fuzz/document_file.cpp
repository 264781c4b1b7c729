// Documents read through a file object. Whatever reads from memory reads from a file too, to the
// same document, but for raster draw infos whose name is counted round and chunks of unknown kinds,
// which a file steps over unread.

#include "support/chunk_hooks.h"
#include "support/documents.h"
#include "support/memory_limit.h"
#include "support/text_file.h"

namespace {

template <class Kind>
void ReadFromFile(std::span<const std::uint8_t> input) {
  const std::uint32_t choice = fuzz::ChoiceOf(input);
  qenzor::CMemFile memory(std::vector<std::uint8_t>(input.begin(), input.end()));
  qenzor::CFile on_disk;
  const bool is_on_disk = choice % 64 == 63;
  if (is_on_disk) fuzz::Require(on_disk.Open(fuzz::TextFile(input), qenzor::CFile::modeRead));
  qenzor::CFile& file = is_on_disk ? on_disk : memory;
  typename Kind::Document document;
  bool read = false;
  {
    const fuzz::MemoryLimit limit(fuzz::MemoryFor(input.size()));
    read = document.Read(&file);
  }
  if (read) fuzz::TakePassage<Kind>(document, choice);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::WithKindOf({data, size}, [&]<class Kind>(Kind) { ReadFromFile<Kind>({data, size}); });
  return 0;
}
