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
};

/// Writes the elements of an array set, in order.
template <class T>
class QENZOR_EXPORT CChunkSetArrayTextConverter : public CChunkSetTextConverter {
 public:
  void ConvertDataToString(CStdioFile& file, CAbstractChunk* chunk, std::uint32_t level) override;
};

/// Writes the elements of a keyed set, in the set's order.
template <class K, class T>
class QENZOR_EXPORT CChunkSetMapTextConverter;

template <class T>
class QENZOR_EXPORT CChunkSetMapTextConverter<std::uint64_t, T> : public CChunkSetTextConverter {
 public:
  void ConvertDataToString(CStdioFile& file, CAbstractChunk* chunk, std::uint32_t level) override;
};

/// A concrete set converter over one of those above, with the element classes that the set names,
/// in the order in which they are tested.
template <class SetBase, class... Elements>
class QENZOR_EXPORT CSetConverterOf : public SetBase {
 public:
  CString GetElemTagName(CAbstractChunk* elem) override;
};

}  // namespace qenzor
