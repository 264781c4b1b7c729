#include "gdal/vsi_file.h"

#include <cstdio>

namespace qenzor::gdal {

bool CVsiFile::OpenVsi(const std::string& path, const char* mode) {
  m_file.reset(VSIFOpenL(path.c_str(), mode));
  return m_file != nullptr;
}

bool CVsiFile::Finish() { return m_file != nullptr && VSIFCloseL(m_file.release()) == 0; }

std::uint32_t CVsiFile::Read(void* data, std::uint32_t size) {
  return static_cast<std::uint32_t>(VSIFReadL(data, 1, size, m_file.get()));
}

void CVsiFile::Write(const void* data, std::uint32_t size) {
  if (VSIFWriteL(data, 1, size, m_file.get()) != size)
    throw CFileException("the file does not take what is written to it");
}

std::uint64_t CVsiFile::GetLength() const {
  const vsi_l_offset position = VSIFTellL(m_file.get());
  VSIFSeekL(m_file.get(), 0, SEEK_END);
  const vsi_l_offset length = VSIFTellL(m_file.get());
  VSIFSeekL(m_file.get(), position, SEEK_SET);
  return length;
}

std::uint64_t CVsiFile::GetPosition() const { return VSIFTellL(m_file.get()); }

std::uint64_t CVsiFile::Seek(std::int64_t offset, SeekPosition from) {
  const std::uint64_t start = from == begin ? 0 : from == current ? GetPosition() : GetLength();
  const std::uint64_t target = start + static_cast<std::uint64_t>(offset);
  if ((offset < 0 && target > start) || VSIFSeekL(m_file.get(), target, SEEK_SET) != 0)
    throw CFileException("the file has no such position");
  return target;
}

void CVsiFile::Flush() { VSIFFlushL(m_file.get()); }

void CVsiFile::Close() { m_file.reset(); }

}  // namespace qenzor::gdal
