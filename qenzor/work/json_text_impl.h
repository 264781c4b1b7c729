#pragma once

// JSON texts of objects, made from the field lists.

#include <charconv>
#include <cmath>
#include <string_view>

#include "qenzor/platform/code_page.h"
#include "qenzor/platform/geometry.h"
#include "qenzor/work/places_impl.h"

namespace qenzor::work {

/// Appends text, which must be UTF-8, as a JSON string.
void AppendJsonString(CString& out, std::string_view text);
/// Appends a stored text: a string, or a list of code units where halves of pairs stand alone.
void AppendJsonText(CString& out, const CStringW& text);
/// Appends the shortest number that reads as the same value, or the name of one that is none.
void AppendJsonFloat(CString& out, float value);
/// Appends the characters as a string, or their codes as a list where they are not ASCII.
void AppendJsonIdent(CString& out, std::string_view ident);
void AppendJsonColor(CString& out, std::uint32_t color);

template <class Number>
void AppendNumber(CString& out, Number number) {
  constexpr std::size_t kRoom = 24;
  std::array<char, kRoom> room;
  out.append(room.data(), std::to_chars(room.data(), room.data() + kRoom, number).ptr);
}

template <class... Numbers>
void AppendNumbers(CString& out, Numbers... numbers) {
  char before = '[';
  ((out += before, AppendNumber(out, numbers), before = ','), ...);
  out += ']';
}

template <class List, class Append>
void AppendList(CString& out, const List& list, Append&& append) {
  out += '[';
  bool first = true;
  for (const auto& elem : list) {
    if (!first) out += ',';
    first = false;
    append(elem);
  }
  out += ']';
}

template <class V>
void AppendJson(CString& out, const V& value);
template <class T>
void AppendMembers(CString& out, const T& object);

template <class Coding, class V>
void AppendJsonAs(CString& out, const V& value) {
  if constexpr (std::is_same_v<Coding, ColorCoding>)
    AppendJsonColor(out, value);
  else if constexpr (std::is_same_v<Coding, IdentCoding>)
    AppendJsonIdent(out, {value.data(), value.size()});
  else
    AppendJson(out, value);
}

template <class Entry, class T>
void AppendJsonField(CString& out, const Entry& f, const T& object) {
  if constexpr (requires { typename Entry::Coding; })
    AppendJsonAs<typename Entry::Coding>(out, object.*f.Member);
  else
    AppendJson(out, object.*f.Member);
}

/// An element of a set, with its class where the set may hold several.
template <Set Chunk>
void AppendJsonElement(CString& out, const typename Chunk::Element& elem) {
  Visit(elem, [&]<HasFieldList Class>(const Class& chunk) {
    out += '{';
    if constexpr (kTellsClass<Chunk>) {
      out += R"("class":)";
      AppendJsonString(out, Class::kTag);
    }
    AppendMembers(out, chunk);
    out += '}';
  });
}

template <class V>
void AppendJson(CString& out, const V& value) {
  if constexpr (std::is_floating_point_v<V>) {
    AppendJsonFloat(out, value);
  } else if constexpr (std::is_integral_v<V>) {
    // Beyond 53 bits many programs lose digits of numbers, but not of strings.
    constexpr bool kIsLong = sizeof(V) == 8;
    if (kIsLong) out += '"';
    AppendNumber(out, value);
    if (kIsLong) out += '"';
  } else if constexpr (std::is_same_v<V, CRect>) {
    AppendNumbers(out, value.left, value.top, value.right, value.bottom);
  } else if constexpr (requires { value.x; }) {
    AppendNumbers(out, value.x, value.y);
  } else if constexpr (Slot<V>) {
    if (value == nullptr)
      out += "null";
    else
      AppendJson(out, *value);
  } else if constexpr (Array<V>) {
    AppendList(out, value, [&](const auto& elem) { AppendJson(out, elem); });
  } else if constexpr (Set<V>) {
    AppendList(out, value, [&](const auto* elem) { AppendJsonElement<V>(out, *elem); });
  } else if constexpr (HasFieldList<V> || HasFields<V>) {
    out += '{';
    AppendMembers(out, value);
    out += '}';
  } else {
    AppendJsonText(out, value);
  }
}

template <class T>
void AppendMembers(CString& out, const T& object) {
  AllValues(ListOf<T>(), [&](const auto& f) {
    if (out.back() != '{') out += ',';
    AppendJsonString(out, f.Tag);
    out += ':';
    AppendJsonField(out, f, object);
    return true;
  });
}

}  // namespace qenzor::work
