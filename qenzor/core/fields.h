#pragma once

#include <cstdint>
#include <limits>
#include <string_view>
#include <tuple>
#include <type_traits>

#include "qenzor/core/text_coding.h"

namespace qenzor {

/// One entry of a class's field list. The list is the only place where a field is declared: its
/// bytes, its size, its copy, its XML line and the reading of that line all follow from it, in the
/// order of the list. Tag is the field's XML tag.
///
/// Field: a value of fixed size.
template <class Owner, class Value, class CodingT>
struct Field {
  using Coding = CodingT;
  using ValueType = Value;
  std::string_view Tag;
  Value Owner::*Member;
};

/// Stored text: a 16-bit byte count and the text behind a byte-order mark.
template <class Owner, class Value>
struct TextField {
  std::string_view Tag;
  Value Owner::*Member;
  std::uint32_t MaxBytes;  ///< longest stored text that reading accepts
};

/// A count and that many elements, each an element of its own in XML.
template <class Owner, class ArrayT>
struct ArrayField {
  using Array = ArrayT;
  std::string_view Tag;
  Array Owner::*Member;
};

/// Fields that stand inside an element of their own in XML, and plainly in the bytes.
template <class Fields>
struct FieldGroup {
  std::string_view Tag;
  Fields Members;
};

/// An owned sub-chunk that may be absent. Its type names the chunk class that it takes.
template <class Owner, class Slot, class ChunkT>
struct SlotField {
  using Chunk = ChunkT;
  std::string_view Tag;
  Slot Owner::*Member;
};

template <class Owner, class Value>
constexpr auto field(std::string_view tag, Value Owner::*member) {
  return Field<Owner, Value, DefaultCoding<Value>>{tag, member};
}

template <class Coding, class Owner, class Value>
constexpr auto field_as(std::string_view tag, Value Owner::*member) {
  return Field<Owner, Value, Coding>{tag, member};
}

template <class Owner>
constexpr auto color(std::string_view tag, std::uint32_t Owner::*member) {
  return field_as<ColorCoding>(tag, member);
}

template <class Owner, class Value>
constexpr auto text(std::string_view tag, Value Owner::*member,
                    std::uint32_t max_bytes = std::numeric_limits<std::uint16_t>::max()) {
  return TextField<Owner, Value>{tag, member, max_bytes};
}

template <class Owner, class Array>
constexpr auto array(std::string_view tag, Array Owner::*member) {
  return ArrayField<Owner, Array>{tag, member};
}

template <class Fields>
constexpr auto group_of(std::string_view tag, Fields fields) {
  return FieldGroup<Fields>{tag, fields};
}

template <class Chunk, class Owner, class Slot>
constexpr auto slot(std::string_view tag, Slot Owner::*member) {
  return SlotField<Owner, Slot, Chunk>{tag, member};
}

template <class T>
concept HasFields = requires {
  T::Fields();
};

/// Whether the list holds fields of fixed size only, so that its bytes are one packed record.
template <class Fields>
inline constexpr bool kIsPacked = false;
template <class... O, class... V, class... C>
inline constexpr bool kIsPacked<std::tuple<Field<O, V, C>...>> = true;

/// Whether a T takes the same number of bytes whatever it holds.
template <class T>
constexpr bool IsFixedSize() {
  if constexpr (HasFields<T>)
    return kIsPacked<decltype(T::Fields())>;
  else
    return true;
}

/// Calls f with every entry of a field list, in order.
template <class Fields, class F>
constexpr void ForEachField(const Fields& fields, F&& f) {
  std::apply([&f](const auto&... entry) { (f(entry), ...); }, fields);
}

/// The same until f gives false; false then.
template <class Fields, class F>
constexpr bool AllFields(const Fields& fields, F&& f) {
  return std::apply([&f](const auto&... entry) { return (f(entry) && ...); }, fields);
}

/// Calls f with the entries of two lists side by side, each pair in order.
template <class FieldsA, class FieldsB, class F>
constexpr void ForEachFieldPair(const FieldsA& a, const FieldsB& b, F&& f) {
  [&]<std::size_t... I>(std::index_sequence<I...>) { (f(std::get<I>(a), std::get<I>(b)), ...); }
  (std::make_index_sequence<std::tuple_size_v<FieldsA>>{});
}

/// The whole field list of a class made of a data declaration and a base class: its own entries,
/// then those of the class that it is built on.
template <class T>
constexpr auto FieldsOf() {
  if constexpr (requires { T::BaseType::BaseFields(); })
    return std::tuple_cat(T::DataType::Fields(), T::BaseType::BaseFields());
  else
    return T::DataType::Fields();
}

/// Bytes that one array element or value of fixed size takes in a file.
template <class T>
constexpr std::uint32_t PackedSize() {
  if constexpr (HasFields<T>) {
    std::uint32_t size = 0;
    ForEachField(T::Fields(), [&size]<class O, class V, class C>(const Field<O, V, C>&) {
      size += C::template kSize<V>;
    });
    return size;
  } else {
    return DefaultCoding<T>::template kSize<T>;
  }
}

/// The fewest bytes that a record takes in a file.
template <class T>
constexpr std::uint32_t LeastSize() {
  std::uint32_t size = 0;
  ForEachField(T::Fields(), [&size]<class F>(const F& /*f*/) {
    if constexpr (requires { typename F::Coding; })
      size += F::Coding::template kSize<typename F::ValueType>;
    else
      size += 2;  // at least a count
  });
  return size;
}

/// Reads a value of fixed size from its packed bytes.
template <class T>
void LoadPacked(const std::uint8_t* bytes, T& value) noexcept {
  if constexpr (HasFields<T>) {
    ForEachField(T::Fields(), [&]<class O, class V, class C>(const Field<O, V, C>& f) {
      C::Load(bytes, value.*f.Member);
      bytes += C::template kSize<V>;
    });
  } else {
    DefaultCoding<T>::Load(bytes, value);
  }
}

template <class T>
void StorePacked(std::uint8_t* bytes, const T& value) noexcept {
  if constexpr (HasFields<T>) {
    ForEachField(T::Fields(), [&]<class O, class V, class C>(const Field<O, V, C>& f) {
      C::Store(bytes, value.*f.Member);
      bytes += C::template kSize<V>;
    });
  } else {
    DefaultCoding<T>::Store(bytes, value);
  }
}

}  // namespace qenzor
