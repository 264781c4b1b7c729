#pragma once

#include "qenzor/core/abstract_chunk.h"
#include "qenzor/core/fields.h"
#include "qenzor/core/forms.h"

namespace qenzor {

/// Everything that a chunk class does, from its field list. Self is the class, with its kChunkId
/// and kTag; Data declares its members and lists them in Fields(); Base is CAbstractChunk or a
/// class between that declares sub-chunks of its own in BaseFields(), which follow the others.
/// The member functions stand in chunk_of_impl.h; each class's source instantiates them.
template <class Self, class Base, class Data>
class QENZOR_EXPORT CChunkOf : public Base, public Data {
 public:
  using BaseType = Base;
  using DataType = Data;
  static const CRuntimeClass kRuntimeClass;

  CChunkOf();
  const CRuntimeClass& GetRuntimeClass() const override;
  [[nodiscard]] CAbstractChunk* Clone() override;
  void DeepCopy(CAbstractChunk* source) override;
  void SubChunkSet(std::uint32_t index, CAbstractChunk* chunk) override;
  void RecursiveReCalcDataSize() override;

 protected:
  bool ReadPrimitiveBlock(const void* data, const std::uint32_t& size,
                          std::uint32_t& consumed) override;
  bool ReadPrimitiveBlock(CFile* file, std::uint32_t& consumed) override;
  void Release() override;
  bool WriteData(CFile* file, bool recalc) override;
};

}  // namespace qenzor
