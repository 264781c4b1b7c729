#pragma once

// Objects made from JSON by their field lists.

#include <algorithm>
#include <bit>
#include <charconv>
#include <memory>
#include <nlohmann/json.hpp>
#include <optional>

#include "qenzor/platform/code_page.h"
#include "qenzor/platform/geometry.h"
#include "qenzor/work/places_impl.h"

namespace qenzor::work {

/// With floats as the documents have them, so that no number is rounded twice.
using Json = nlohmann::basic_json<std::map, std::vector, std::string, bool, std::int64_t,
                                  std::uint64_t, float>;

/// Fills values from JSON. What does not fit is told as a sentence and as a JSON pointer from the
/// value that was handed in; the values are then good for nothing.
class CJsonReader {
 public:
  template <class V>
  bool Read(const Json& json, V& value);
  /// The value of a field, which knows its coding.
  template <class Entry, class V>
  bool ReadField(const Json& json, const Entry& f, V& value) {
    static_cast<void>(f);
    if constexpr (requires { typename Entry::Coding; })
      return ReadAs<typename Entry::Coding>(json, value);
    else
      return Read(json, value);
  }
  /// The element of a set.
  template <Set Chunk>
  bool ReadElement(const Json& json, std::unique_ptr<typename Chunk::Element>& elem);

  const CString& GetPointer() const noexcept { return m_pointer; }
  const CString& GetReason() const noexcept { return m_reason; }

 private:
  bool Refuse(CString reason) {
    m_reason = std::move(reason);
    return false;
  }
  /// Runs read one step further down; the pointer stays there when that fails.
  template <class F>
  bool Below(std::string_view step, F&& read);
  template <class F>
  bool ForEach(const Json& json, F&& read);

  bool ReadText(const Json& json, CStringW& value);
  bool ReadFloat(const Json& json, float& value);
  bool ReadColor(const Json& json, std::uint32_t& value);
  bool ReadIdent(const Json& json, std::span<char> value);
  bool ReadWide(const Json& json, std::uint64_t& value);

  template <class Coding, class V>
  bool ReadAs(const Json& json, V& value) {
    if constexpr (std::is_same_v<Coding, ColorCoding>)
      return ReadColor(json, value);
    else if constexpr (std::is_same_v<Coding, IdentCoding>)
      return ReadIdent(json, value);
    else
      return Read(json, value);
  }
  template <class Integer>
  bool ReadInteger(const Json& json, Integer& value);
  template <class... Integers>
  bool ReadIntegers(const Json& json, Integers&... values);
  template <class A>
  bool ReadArray(const Json& json, A& value);
  template <Set Chunk>
  bool ReadSet(const Json& json, Chunk& set);
  template <class T>
  bool ReadMembers(const Json& json, T& object, std::size_t others);

  CString m_pointer;
  CString m_reason;
};

template <class F>
bool CJsonReader::Below(std::string_view step, F&& read) {
  const std::size_t before = m_pointer.size();
  m_pointer += '/';
  for (const char c : step) m_pointer += c == '~' ? "~0" : c == '/' ? "~1" : CString(1, c);
  if (!read()) return false;
  m_pointer.resize(before);
  return true;
}

template <class F>
bool CJsonReader::ForEach(const Json& json, F&& read) {
  for (std::size_t i = 0; i < json.size(); ++i)
    if (!Below(std::to_string(i), [&] { return read(json[i], i); })) return false;
  return true;
}

template <class Integer>
bool CJsonReader::ReadInteger(const Json& json, Integer& value) {
  if constexpr (sizeof(Integer) == 8) {
    return ReadWide(json, value);
  } else {
    using Limits = std::numeric_limits<Integer>;
    const bool is_unsigned = json.is_number_unsigned();
    const bool fits =
        is_unsigned ? std::in_range<Integer>(json.get<std::uint64_t>())
                    : json.is_number_integer() && std::in_range<Integer>(json.get<std::int64_t>());
    if (!fits)
      return Refuse("is no integer from " + std::to_string(Limits::min()) + " to " +
                    std::to_string(Limits::max()));
    value = json.get<Integer>();
    return true;
  }
}

template <class... Integers>
bool CJsonReader::ReadIntegers(const Json& json, Integers&... values) {
  if (!json.is_array() || json.size() != sizeof...(Integers))
    return Refuse("is no list of " + std::to_string(sizeof...(Integers)) + " integers");
  std::size_t at = 0;
  return (Below(std::to_string(at),
                [&] {
                  const bool read = ReadInteger(json[at], values);
                  ++at;
                  return read;
                }) &&
          ...);
}

template <class A>
bool CJsonReader::ReadArray(const Json& json, A& value) {
  if (!json.is_array()) return Refuse("is no list");
  if (json.size() > A::kMaxCount)
    return Refuse("has more than " + std::to_string(A::kMaxCount) + " entries");
  value.Reset(static_cast<typename A::count_type>(json.size()));
  return ForEach(json, [&](const Json& elem, std::size_t i) { return Read(elem, value[i]); });
}

template <class T>
bool CJsonReader::ReadMembers(const Json& json, T& object, std::size_t others) {
  std::size_t known = others;
  const bool read = AllValues(ListOf<T>(), [&](const auto& f) {
    const auto found = json.find(f.Tag);
    if (found == json.end()) return true;
    ++known;
    return Below(f.Tag, [&] { return ReadField(*found, f, object.*f.Member); });
  });
  if (!read || known == json.size()) return read;
  for (const auto& member : json.items()) {
    bool is_field = member.key() == "class" && others > 0;
    AllValues(ListOf<T>(), [&](const auto& f) {
      is_field = is_field || f.Tag == member.key();
      return true;
    });
    if (!is_field) return Below(member.key(), [&] { return Refuse("is no field of this class"); });
  }
  return true;
}

template <Set Chunk>
bool CJsonReader::ReadElement(const Json& json, std::unique_ptr<typename Chunk::Element>& elem) {
  using Element = typename Chunk::Element;
  if (!json.is_object()) return Refuse("is no object");
  if constexpr (!kTellsClass<Chunk>) {
    auto made = std::make_unique<Element>();
    const bool read = ReadMembers(json, *made, 0);
    elem = std::move(made);
    return read;
  } else {
    const auto found = json.find("class");
    if (found == json.end() || !found->is_string()) return Refuse("does not tell its class");
    bool read = false;
    const bool known = AnyClass([&]<class Row>(Row /*row*/) {
      if constexpr (std::is_base_of_v<Element, typename Row::Chunk>) {
        if (found->template get_ref<const std::string&>() != Row::kTag) return false;
        auto made = std::make_unique<typename Row::Chunk>();
        read = ReadMembers(json, *made, 1);
        elem = std::move(made);
        return true;
      } else {
        return false;
      }
    });
    if (!known) return Below("class", [&] { return Refuse("is no class that may stand here"); });
    return read;
  }
}

template <Set Chunk>
bool CJsonReader::ReadSet(const Json& json, Chunk& set) {
  if (!json.is_array()) return Refuse("is no list");
  return ForEach(json, [&](const Json& member, std::size_t /*i*/) {
    std::unique_ptr<typename Chunk::Element> elem;
    if (!ReadElement<Chunk>(member, elem)) return false;
    if constexpr (KeyedSet<Chunk>)
      if (set.GetElem(elem->GetKey()) != nullptr) return Refuse("has the key of one before");
    set.SubChunkSet(0, elem.release());
    return true;
  });
}

template <class V>
bool CJsonReader::Read(const Json& json, V& value) {
  if constexpr (std::is_floating_point_v<V>) {
    return ReadFloat(json, value);
  } else if constexpr (std::is_integral_v<V>) {
    return ReadInteger(json, value);
  } else if constexpr (std::is_same_v<V, CRect>) {
    return ReadIntegers(json, value.left, value.top, value.right, value.bottom);
  } else if constexpr (requires { value.x; }) {
    return ReadIntegers(json, value.x, value.y);
  } else if constexpr (Slot<V>) {
    value.reset();
    if (json.is_null()) return true;
    value = std::make_unique<typename V::element_type>();
    return Read(json, *value);
  } else if constexpr (Array<V>) {
    return ReadArray(json, value);
  } else if constexpr (Set<V>) {
    return ReadSet(json, value);
  } else if constexpr (HasFieldList<V> || HasFields<V>) {
    return json.is_object() ? ReadMembers(json, value, 0) : Refuse("is no object");
  } else {
    return ReadText(json, value);
  }
}

}  // namespace qenzor::work
