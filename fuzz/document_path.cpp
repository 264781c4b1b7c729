// Documents read by path, beside the same bytes read from memory: the same documents, for the same
// reasons none. Some inputs are drawn out beyond the window through which files are read.

#include <stop_token>

#include "qenzor/qen_document.h"
#include "qenzor/zor_document.h"
#include "support/chunk_hooks.h"
#include "support/chunk_tree.h"
#include "support/documents.h"
#include "support/memory_limit.h"
#include "support/text_file.h"

namespace {

template <class Kind, class From>
auto Read(const From& from, const qenzor::ReadOptions& options = {}) {
  if constexpr (std::is_same_v<Kind, fuzz::Qen>)
    return qenzor::ReadQen(from, options);
  else
    return qenzor::ReadZor(from, options);
}

/// Reading that is watched goes as any other; asked to stop, or to take no more than so many bytes,
/// it does.
template <class Kind>
void ReadWatched(const qenzor::CString& path, std::size_t size, std::uint32_t choice) {
  std::stop_source source;
  std::uint64_t heard = 0;
  qenzor::ReadOptions options;
  options.Stop = source.get_token();
  options.Progress = [&](std::uint64_t done, std::uint64_t all) {
    fuzz::Require(done >= heard && done <= all && !source.stop_requested());
    heard = done;
    if (choice % 3 == 0) source.request_stop();
  };
  if (choice % 7 == 0) options.MostBytes = size - size / 9;
  const auto result = Read<Kind>(path, options);
  if (result) fuzz::Require(!source.stop_requested() || heard == size);
}

/// The document with one of its chunks so often that it is longer than any window.
fuzz::Bytes DrawnOut(std::span<const std::uint8_t> input, std::uint32_t choice) {
  constexpr std::size_t kLength = 300 * 1024;
  fuzz::ChunkDocument document = fuzz::ParseDocument(input);
  if (!document.FileInfo.empty()) {
    const std::vector<fuzz::ChunkNode*> nodes = fuzz::AllNodes(document.Root);
    fuzz::ChunkNode& parent = *nodes[choice / 32 % nodes.size()];
    if (!parent.Children.empty()) {
      const fuzz::ChunkNode child = parent.Children.front();
      parent.Children.insert(parent.Children.begin(), kLength / child.Size(), child);
    } else {
      // Fields that are too long are a find of their own: nothing may look behind them.
      parent.Fields.resize(kLength);
    }
  }
  return fuzz::WriteDocument(document);
}

template <class Kind>
void ReadByPath(std::span<const std::uint8_t> input) {
  const std::uint32_t choice = fuzz::ChoiceOf(input);
  const fuzz::Bytes bytes =
      choice % 32 == 0 ? DrawnOut(input, choice) : fuzz::Bytes(input.begin(), input.end());
  const std::string& path = fuzz::TextFile(bytes);
  auto by_path = [&] {
    const fuzz::MemoryLimit limit(fuzz::MemoryFor(bytes.size()));
    return Read<Kind>(path);
  }();
  auto from_memory = Read<Kind>(std::span<const std::uint8_t>(bytes));
  fuzz::Require(static_cast<bool>(by_path) == static_cast<bool>(from_memory));
  if (by_path) {
    fuzz::Require(fuzz::BytesOf(*by_path) == fuzz::BytesOf(*from_memory));
  } else {
    const qenzor::Failure& one = by_path.GetFailure();
    const qenzor::Failure& other = from_memory.GetFailure();
    fuzz::Require(one.Kind == other.Kind && one.Offset == other.Offset);
    fuzz::Require(one.ChunkPath == other.ChunkPath && one.Reason == other.Reason);
  }
  if (choice % 16 == 1) ReadWatched<Kind>(path, bytes.size(), choice / 16);
  // The class itself, which takes any root, likewise.
  typename Kind::Document member;
  typename Kind::Document from_block;
  const bool read = member.Read(path);
  fuzz::Require(read == from_block.Read(bytes.data(), static_cast<std::uint32_t>(bytes.size())));
  fuzz::Require(read || !by_path);
  if (read) fuzz::Require(fuzz::BytesOf(member) == fuzz::BytesOf(from_block));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::WithKindOf({data, size}, [&]<class Kind>(Kind) { ReadByPath<Kind>({data, size}); });
  return 0;
}
