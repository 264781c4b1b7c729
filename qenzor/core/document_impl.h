#pragma once

// What the two documents share: a file info block of fixed fields in front of one root chunk.

#include <new>

#include "qenzor/core/block.h"
#include "qenzor/core/fields.h"
#include "qenzor/core/source_impl.h"
#include "qenzor/platform/window_file_impl.h"

namespace qenzor {

template <class Info>
bool ReadInfo(const void* data, std::uint32_t size, Info& info) {
  if (size < PackedSize<Info>()) return false;
  LoadPacked(static_cast<const std::uint8_t*>(data), info);
  return true;
}

template <class Info>
bool ReadInfo(CFile& file, Info& info) {
  std::array<std::uint8_t, PackedSize<Info>()> bytes;
  if (file.Read(bytes.data(), PackedSize<Info>()) != bytes.size()) return false;
  LoadPacked(bytes.data(), info);
  return true;
}

template <class Info>
bool WriteInfo(CFile& file, const Info& info) try {
  WriteBlock(file, PackedSize<Info>(), [&](std::uint8_t* bytes) { StorePacked(bytes, info); });
  return true;
} catch (const std::exception&) {
  return false;
}

/// Opens the file and has a document read from it as from memory, of which only a window is there.
template <class ReadDocument>
bool ReadThroughWindow(const CString& path, ReadDocument&& read) try {
  CWindowFile file;
  return file.Open(path, CFile::modeRead | CFile::typeBinary) && read(file);
} catch (const std::bad_alloc&) {
  return false;
}

/// Creates the file and lets write fill it; true when all of it has reached the file.
template <class WriteBytes>
bool WriteWholeFile(const CString& path, WriteBytes&& write) try {
  CDocumentFile file;
  if (!file.Open(path, CFile::modeCreate | CFile::modeWrite | CFile::typeBinary)) return false;
  const bool written = write(file);
  return file.Finish() && written;
} catch (const std::bad_alloc&) {
  return false;
}

}  // namespace qenzor
