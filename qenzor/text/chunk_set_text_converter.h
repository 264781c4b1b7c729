#pragma once

#include "qenzor/core/chunk_set.h"
#include "qenzor/text/abstract_chunk_text_converter.h"

namespace qenzor {

/// What the converters of all sets share. Any element of a known tag is converted when reading;
/// the set edit keeps it if its class fits.
class QENZOR_EXPORT CChunkSetTextConverter : public CAbstractChunkTextConverter {
 public:
  void SetChunkEditParam(CAbstractChunkEdit* edit, TiXmlElement* elem) override;
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
  using Element = std::remove_pointer_t<T>;

  void ConvertDataToString(CStdioFile& file, CAbstractChunk* chunk, std::uint32_t level) override;
};

/// Writes the elements of a keyed set, in the set's order.
template <class K, class T>
class QENZOR_EXPORT CChunkSetMapTextConverter;

template <class T>
class QENZOR_EXPORT CChunkSetMapTextConverter<std::uint64_t, T> : public CChunkSetTextConverter {
 public:
  using Element = std::remove_pointer_t<T>;

  void ConvertDataToString(CStdioFile& file, CAbstractChunk* chunk, std::uint32_t level) override;
};

/// A concrete set converter over one of those above: it writes each element that the set may hold
/// under the tag of its class.
template <class SetBase>
class QENZOR_EXPORT CSetConverterOf : public SetBase {
 public:
  CString GetElemTagName(CAbstractChunk* elem) override;
};

}  // namespace qenzor
