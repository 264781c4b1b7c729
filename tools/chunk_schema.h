#pragma once

#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <string_view>

namespace tool {

/// What the fields of one chunk are read with: its bytes up to a limit, and what is told of them.
struct BlockWalk {
  std::span<const std::uint8_t> Bytes;  ///< from the chunk's data on
  std::uint64_t At = 0;                 ///< position in Bytes
  /// Takes an integer field, or array element, with its tag and position.
  std::function<void(std::string_view tag, std::uint64_t at, std::uint64_t value)> OnValue;
  /// Takes what the library would drop without a word.
  std::function<void(std::uint64_t at, std::string reason)> OnWarning;
  std::string Error;  ///< why the fields cannot be read

  /// Moves on by size bytes; false, with Error, when there are fewer.
  bool Skip(std::string_view tag, std::uint64_t size);
};

/// What a chunk of one class consists of, from the class's own field list.
struct ChunkSchema {
  std::uint32_t Id;
  std::string_view Tag;
  bool IsSet;
  bool IsKeyed;
  /// Walks the fields; false when they cannot be read.
  bool (*WalkBlock)(BlockWalk& walk);
  /// How many bytes of the data the fields are taken to fill, from the number that they do.
  std::uint64_t (*Consumed)(const BlockWalk& walk);
  /// Whether fields may reach past the chunk's own data.
  bool MayOverrun;
  /// Whether a sub-chunk of that id is kept.
  bool (*Accepts)(std::uint32_t id);
};

/// The schema of a chunk id; null for an id that the library does not know.
const ChunkSchema* FindSchema(std::uint32_t id);

}  // namespace tool
