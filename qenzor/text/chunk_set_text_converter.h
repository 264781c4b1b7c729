#pragma once

#include "qenzor/core/chunk_set.h"
#include "qenzor/text/abstract_chunk_text_converter.h"

namespace qenzor {

/// What the converters of all sets share. Any element of a known tag is converted when reading;
/// the set edit keeps it if its class fits.
class QENZOR_EXPORT CChunkSetTextConverter : public CAbstractChunkTextConverter {
 public:
  void SetChunkEditParam(CAbstractChunkEdit* edit, TiXmlElement* elem) override;
  /// The same from an element that need not be in memory as a whole; for the library's own use.
  static void FillEdit(CAbstractChunkEdit& edit, CXmlElement& elem);
  /// The tag under which one element is written: "SetElem" unless a set knows its class.
  virtual CString GetElemTagName(CAbstractChunk* elem);

 protected:
  /// The tag of the element's class; "SetElem" when the class has none.
  static CString TagOfClass(const CAbstractChunk& elem);
};

/// Writes the elements of an array set, in order.
template <class T>
class QENZOR_EXPORT CChunkSetArrayTextConverter : public CChunkSetTextConverter {
 public:
  void ConvertDataToString(CStdioFile& file, CAbstractChunk* chunk, std::uint32_t level) override {
    const auto* set = class_cast<CChunkSetArray<T>>(chunk);
    for (std::uint32_t i = 0; set != nullptr && i < set->GetElemCount(); ++i)
      if (T elem = set->GetElem(i); elem != nullptr)
        this->ConvertChunkToString(file, this->GetElemTagName(elem), elem, level);
  }
};

/// Writes the elements of a keyed set, in the set's order.
template <class K, class T>
class QENZOR_EXPORT CChunkSetMapTextConverter;

template <class T>
class QENZOR_EXPORT CChunkSetMapTextConverter<std::uint64_t, T> : public CChunkSetTextConverter {
 public:
  void ConvertDataToString(CStdioFile& file, CAbstractChunk* chunk, std::uint32_t level) override {
    const auto* set = class_cast<CChunkSetMap<std::uint64_t, T>>(chunk);
    if (set == nullptr) return;
    set->ForEachElem(
        [&](T elem) { this->ConvertChunkToString(file, this->GetElemTagName(elem), elem, level); });
  }
};

template <class Chunk>
struct SetConverterBase {
  using Type = CChunkSetArrayTextConverter<typename Chunk::Element*>;
};
template <class Chunk>
requires requires { typename Chunk::Key; }
struct SetConverterBase<Chunk> {
  using Type = CChunkSetMapTextConverter<typename Chunk::Key, typename Chunk::Element*>;
};

/// The converter of a concrete set: it writes each element that the set may hold under the tag of
/// its class.
template <class Chunk>
class QENZOR_EXPORT CSetConverterOf : public SetConverterBase<Chunk>::Type {
 public:
  CString GetElemTagName(CAbstractChunk* elem) override {
    return class_cast<typename Chunk::Element>(elem) == nullptr
               ? SetConverterBase<Chunk>::Type::GetElemTagName(elem)
               : this->TagOfClass(*elem);
  }
};

}  // namespace qenzor
