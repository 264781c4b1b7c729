#pragma once

#include <cpl_vsi.h>

#include <cstdint>
#include <memory>
#include <string>

#include "qenzor/platform/file.h"

namespace qenzor::gdal {

/// A file of GDAL's virtual file systems, by which it reaches archives, memory and networks.
class CVsiFile final : public CFile {
 public:
  CVsiFile() = default;
  ~CVsiFile() override = default;

  /// Opens the file at the path as fopen understands the mode. False when that fails.
  bool OpenVsi(const std::string& path, const char* mode);
  /// Closes; true when everything written has reached the file.
  bool Finish();

  std::uint32_t Read(void* data, std::uint32_t size) override;
  void Write(const void* data, std::uint32_t size) override;
  std::uint64_t GetLength() const override;
  std::uint64_t GetPosition() const override;
  std::uint64_t Seek(std::int64_t offset, SeekPosition from) override;
  void Flush() override;
  void Close() override;

 private:
  struct Closer {
    void operator()(VSILFILE* file) const { VSIFCloseL(file); }
  };

  std::unique_ptr<VSILFILE, Closer> m_file;
};

}  // namespace qenzor::gdal
