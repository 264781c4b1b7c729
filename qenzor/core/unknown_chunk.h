#pragma once

#include "qenzor/core/abstract_chunk.h"

namespace qenzor {

/// Stands for a chunk of a kind that the library does not know. It keeps the header only: read from
/// a file its data is skipped, read from memory its data must be a clean run of chunks, which are
/// dropped. Written with recalculation it is a bare header with data size 0.
class QENZOR_EXPORT CUnKnownChunk : public CAbstractChunk {
 public:
  static const CRuntimeClass kRuntimeClass;

  CUnKnownChunk();
  const CRuntimeClass& GetRuntimeClass() const override;

  using CAbstractChunk::ReadData;
  /// True if the file's position can be moved forward by the data size, even past its end.
  bool ReadData(CFile* file) override;
  [[nodiscard]] CAbstractChunk* Clone() override;
  void DeepCopy(CAbstractChunk* source) override;
  void RecursiveReCalcDataSize() override;

 protected:
  bool ReadPrimitiveBlock(const void* data, const std::uint32_t& size,
                          std::uint32_t& consumed) override;
  bool ReadPrimitiveBlock(CFile* file, std::uint32_t& consumed) override;
  void Release() override;
  bool WriteData(CFile* file, bool recalc) override;
};

}  // namespace qenzor
