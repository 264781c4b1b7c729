#pragma once

// The system's files: what CFile asks of them, and nothing else.

#include <cstdint>

#include "qenzor/platform/strings.h"

namespace qenzor::descriptor {

inline constexpr int kNone = -1;

enum class Access : std::uint8_t {
  kRead,
  kUpdate,  ///< reading and writing what is there
  kCreate,  ///< writing what is new or emptied
};

/// A descriptor of the file at the path, or kNone.
int Open(const CString& path, Access access) noexcept;
/// False when the system tells an error only now.
bool Close(int file) noexcept;
/// Up to size bytes, as many as the system gives at once: 0 at the end, negative on failure.
std::int64_t Read(int file, void* data, std::uint32_t size) noexcept;
/// All of size bytes, or false.
bool Write(int file, const void* data, std::uint32_t size) noexcept;
/// Moves to a position from the front; false where there is none, as in a pipe.
bool Seek(int file, std::int64_t position) noexcept;
enum class Kind : std::uint8_t { kPlain, kPipe, kOther };
Kind GetKind(int file) noexcept;
/// The length of what has one; negative for a pipe and its like.
std::int64_t GetLength(int file) noexcept;

}  // namespace qenzor::descriptor
