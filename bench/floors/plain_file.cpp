#include "bench/floors/plain_file.h"

#include <fcntl.h>
#include <unistd.h>

#include <cstdio>
#include <stdexcept>

namespace qenzor::bench {

FileBytes ReadWholeFile(const std::filesystem::path& path) {
  const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(std::fopen(path.c_str(), "rb"),
                                                             &std::fclose);
  if (!file) throw std::runtime_error("cannot open " + path.string());
  FileBytes bytes;
  bytes.Size = std::filesystem::file_size(path);
  bytes.Data = std::make_unique_for_overwrite<std::uint8_t[]>(bytes.Size);
  if (std::fread(bytes.Data.get(), 1, bytes.Size, file.get()) != bytes.Size)
    throw std::runtime_error("cannot read " + path.string());
  return bytes;
}

PlainWriter::PlainWriter(const std::filesystem::path& path)
    : m_file(::open(path.c_str(), O_CREAT | O_TRUNC | O_WRONLY | O_CLOEXEC, 0644)) {
  if (m_file < 0) throw std::runtime_error("cannot create " + path.string());
}

PlainWriter::~PlainWriter() { ::close(m_file); }

void PlainWriter::Flush() {
  std::size_t done = 0;
  while (done < m_used) {
    const ssize_t count = ::write(m_file, m_buffer.data() + done, m_used - done);
    if (count < 0) throw std::runtime_error("cannot write");
    done += static_cast<std::size_t>(count);
  }
  m_used = 0;
}

}  // namespace qenzor::bench
