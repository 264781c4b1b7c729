#pragma once

// What field lists do in the text form: XML lines out, XML elements in.

#include <tinyxml.h>

#include <memory>
#include <string_view>

#include "qenzor/core/fields.h"
#include "qenzor/platform/memory_budget_impl.h"
#include "qenzor/text/abstract_chunk_text_converter.h"
#include "qenzor/text/xml_pieces_impl.h"
#include "qenzor/text/xml_writer_impl.h"

namespace qenzor {

template <class Fields, class T>
void WriteXmlFields(CXmlWriter xml, const Fields& fields, const T& object);
/// Gives the element to the field whose tag it bears; false when there is none.
template <class Fields, class T>
bool ReadXmlField(CXmlElement& elem, const Fields& fields, T& object);

/// Fills the object's fields from the element's children; those of unknown tags are passed over.
template <class Fields, class T>
void ReadXmlFields(CXmlElement& elem, const Fields& fields, T& object) {
  elem.ForEachChild([&](CXmlElement& child) { ReadXmlField(child, fields, object); });
}

/// The text directly inside the element; empty when its first child is no text.
inline std::string_view TextOf(TiXmlElement& elem) {
  const char* text = elem.GetText();
  return text == nullptr ? std::string_view() : std::string_view(text);
}

inline std::int32_t NumberOf(TiXmlElement& elem, const char* attribute) {
  const char* text = elem.Attribute(attribute);
  return text == nullptr ? 0 : ParseInt32(text);
}

// Writing one value.

template <class Value>
void WriteXmlValue(CXmlWriter& xml, std::string_view tag, const Value& value, NumberCoding) {
  xml.Value(tag, value);
}

inline void WriteXmlValue(CXmlWriter& xml, std::string_view tag, std::uint32_t value, ColorCoding) {
  xml.Color(tag, value);
}

inline void WriteXmlValue(CXmlWriter& xml, std::string_view tag, const CRect& value,
                          LongRectCoding) {
  xml.Rect(tag, value);
}

template <class Value>
void WriteXmlValue(CXmlWriter& xml, std::string_view tag, const Value& value, ShortGeometryCoding) {
  if constexpr (std::is_same_v<Value, CRect>)
    xml.Rect(tag, value);
  else
    xml.Point(tag, value.x, value.y);
}

// Reading one value.

template <class Value>
void ReadXmlValue(TiXmlElement& elem, Value& value, NumberCoding) {
  constexpr std::size_t kMaxFloatLength = 63;  // a longer text, or none, leaves the value alone
  const std::string_view text = TextOf(elem);
  if constexpr (std::is_floating_point_v<Value>) {
    if (!text.empty() && text.size() <= kMaxFloatLength) value = ParseFloat(text);
  } else if constexpr (sizeof(Value) == 8) {
    value = ParseUInt64(text);
  } else if constexpr (std::is_same_v<Value, std::uint32_t>) {
    value = ParseUInt32(text);
  } else {
    value = static_cast<Value>(ParseInt32(text));
  }
}

template <class Value>
void ReadXmlValue(TiXmlElement& elem, Value& value, KeptNumberCoding) {
  if (!TextOf(elem).empty()) ReadXmlValue(elem, value, NumberCoding{});
}

inline void ReadXmlValue(TiXmlElement& elem, std::uint32_t& value, ColorCoding) {
  const auto byte_of = [&](const char* attribute) {
    return static_cast<std::uint32_t>(NumberOf(elem, attribute)) & 0xFF;
  };
  value = byte_of("A") << 24 | byte_of("R") << 16 | byte_of("G") << 8 | byte_of("B");
}

inline void ReadXmlValue(TiXmlElement& elem, CRect& value, LongRectCoding) {
  value = {NumberOf(elem, "W"), NumberOf(elem, "S"), NumberOf(elem, "E"), NumberOf(elem, "N")};
}

template <class Value>
void ReadXmlValue(TiXmlElement& elem, Value& value, ShortGeometryCoding) {
  if constexpr (std::is_same_v<Value, CRect>) {
    ReadXmlValue(elem, value, LongRectCoding{});
  } else {
    using Coordinate = decltype(value.x);
    value.x = static_cast<Coordinate>(NumberOf(elem, "x"));
    value.y = static_cast<Coordinate>(NumberOf(elem, "y"));
  }
}

// Writing fields.

template <class T, class O, class V, class C>
void WriteXmlField(CXmlWriter& xml, const T& object, const Field<O, V, C>& f) {
  WriteXmlValue(xml, f.Tag, object.*f.Member, C{});
}

template <class T, class O>
void WriteXmlField(CXmlWriter& xml, const T& object, const TextField<O, CStringW>& f) {
  xml.Text(f.Tag, EncodeText(object.*f.Member, xml.GetFile().GetEncoding()));
}

template <class T, class O, class Array>
void WriteXmlField(CXmlWriter& xml, const T& object, const ArrayField<O, Array>& f) {
  using Element = typename Array::value_type;
  if constexpr (requires(const Element& element) { element.x, element.y; })
    return xml.PointLines(f.Tag, object.*f.Member);
  for (const Element& element : object.*f.Member) {
    if constexpr (HasFields<Element>) {
      xml.OpenTag(f.Tag);
      WriteXmlFields(xml.Deeper(), Element::Fields(), element);
      xml.CloseTag(f.Tag);
    } else {
      WriteXmlValue(xml, f.Tag, element, DefaultCoding<Element>{});
    }
  }
}

template <class T, class Members>
void WriteXmlField(CXmlWriter& xml, const T& object, const FieldGroup<Members>& f) {
  xml.OpenTag(f.Tag);
  WriteXmlFields(xml.Deeper(), f.Members, object);
  xml.CloseTag(f.Tag);
}

template <class T, class O, class Slot, class Chunk>
void WriteXmlField(CXmlWriter& xml, const T& object, const SlotField<O, Slot, Chunk>& f) {
  if (object.*f.Member != nullptr)
    CAbstractChunkTextConverter::ConvertChunkToString(xml.GetFile(), CString(f.Tag),
                                                      (object.*f.Member).get(), xml.GetLevel());
}

template <class Fields, class T>
void WriteXmlFields(CXmlWriter xml, const Fields& fields, const T& object) {
  ForEachField(fields, [&](const auto& f) { WriteXmlField(xml, object, f); });
}

// Reading fields, into the edit form.

template <class T, class O, class V, class C>
void TakeXmlField(CXmlElement& elem, T& object, const Field<O, V, C>& f) {
  ReadXmlValue(elem.GetValue(), object.*f.Member, C{});
}

template <class T, class O>
void TakeXmlField(CXmlElement& elem, T& object, const TextField<O, CString>& f) {
  CString text = elem.GetNarrowText();
  ChargeMemory(text.size());
  object.*f.Member = std::move(text);
}

/// Wide text undoes the escapes of a line feed and of a space, in that order.
template <class T, class O>
void TakeXmlField(CXmlElement& elem, T& object, const TextField<O, CStringW>& f) {
  CStringW text = elem.GetWideText();
  ReplaceAll(text, CStringW(u"<br />"), CStringW(u"\n"));
  ReplaceAll(text, CStringW(u"&nbsp;"), CStringW(u" "));
  ChargeMemory(text.size() * sizeof(char16_t));
  object.*f.Member = std::move(text);
}

template <class T, class O, class List>
void TakeXmlField(CXmlElement& elem, T& object, const ArrayField<O, List>& f) {
  using Element = typename List::value_type;
  List& list = object.*f.Member;
  ChargeMemory(2 * sizeof(Element));  // as much again that growing leaves unused
  if constexpr (HasFields<Element>) {
    ReadXmlFields(elem, Element::Fields(), list.emplace_back());
  } else if constexpr (requires { typename Element::element_type; }) {
    using RecordEdit = typename Element::element_type;
    list.push_back(std::make_unique<RecordEdit>());
    ReadXmlFields(elem, RecordEdit::Fields(), *list.back());
  } else {
    ReadXmlValue(elem.GetValue(), list.emplace_back(), DefaultCoding<Element>{});
  }
}

template <class T, class Members>
void TakeXmlField(CXmlElement& elem, T& object, const FieldGroup<Members>& f) {
  ReadXmlFields(elem, f.Members, object);
}

template <class T, class O, class Slot, class Chunk>
void TakeXmlField(CXmlElement& elem, T& object, const SlotField<O, Slot, Chunk>& /*f*/) {
  auto edit = std::make_unique<typename Chunk::EditClass>();
  Chunk::ConverterClass::FillEdit(*edit, elem);
  object.SetSubChunkEdit(edit.release());
}

template <class Fields, class T>
bool ReadXmlField(CXmlElement& elem, const Fields& fields, T& object) {
  const std::string_view tag = elem.GetTag();
  return !AllFields(fields, [&](const auto& f) {
    if (f.Tag != tag) return true;
    TakeXmlField(elem, object, f);
    return false;
  });
}

}  // namespace qenzor
