#pragma once

// Makes the entries of a class's table from its field list.

#include <algorithm>
#include <string_view>
#include <tuple>

#include "node.h"
#include "qenzor/core/fields.h"
#include "qenzor/edit/convert.h"
#include "reflection.h"
#include "values.h"

namespace qenzor::python {

/// The table of a class in one form, and the Python type of a class, which its edit form shares.
template <class T>
inline ClassInfo g_info;
template <class T>
inline PyTypeObject* g_type = nullptr;

/// The name of a class as Python has it.
template <class T>
std::string NameOf() {
  std::string_view name = __PRETTY_FUNCTION__;
  name.remove_prefix(name.find("T = ") + 4);
  name = name.substr(0, name.find_first_of(";]"));
  name.remove_prefix(name.rfind(':') + 1);
  if (name.size() > 1 && name[0] == 'C' && name[1] >= 'A' && name[1] <= 'Z') name.remove_prefix(1);
  // The records of a draw info are called after the list that they are in.
  constexpr std::string_view kScale = "Scale";
  if (name.ends_with(kScale)) return std::string(name.substr(0, name.size() - 5)) + "ScData";
  return std::string(name);
}

/// The class in the edit form: itself for what has but one form.
template <class T>
struct EditOf {
  using Type = T;
};
template <class T>
requires requires { typename T::EditClass; }
struct EditOf<T> {
  using Type = typename T::EditClass;
};
template <class T>
inline constexpr bool kIsEditable = !requires {
  typename T::EditClass;
};

// Field lists, with what is in groups beside the rest.

template <class... F>
constexpr auto Flatten(const std::tuple<F...>& fields) {
  constexpr auto kFlat = []<class G>(const G& f) {
    if constexpr (requires { f.Members; })
      return f.Members;
    else
      return std::tuple{f};
  };
  return std::apply([&](const auto&... f) { return std::tuple_cat(kFlat(f)...); }, fields);
}

template <class T>
constexpr auto FlatFieldsOf() {
  if constexpr (requires { typename T::DataType; })
    return Flatten(FieldsOf<T>());
  else
    return Flatten(T::Fields());
}

/// What an element of a list or a set is, of the class that the list says or one derived from it.
template <class T>
Object ObjectOf(T* element) {
  if (element == nullptr) return {};
  if constexpr (!std::is_base_of_v<CAbstractChunk, T> && !std::is_base_of_v<CAbstractChunkEdit, T>)
    return {element, &g_info<T>};
  else if constexpr (
      requires { T::kTag; } || requires { T::ChunkClass::kTag; })
    return {element, &g_info<T>};
  else {
    const ClassInfo& info = FindClass(*element);
    if constexpr (std::is_base_of_v<CAbstractChunk, T>)
      return {info.FromChunk(element), &info};
    else
      return {info.FromEdit(element), &info};
  }
}

template <class T>
T* ElementOf(const Object& object) {
  if constexpr (requires { T::ChunkClass::kTag; } || !std::is_base_of_v<CAbstractChunkEdit, T>)
    return static_cast<T*>(object.At);
  else
    return static_cast<T*>(object.Info->AsEdit(object.At));
}

/// A list of owned objects in an edit form.
template <class List>
std::vector<Owned> SpliceObjects(List& list, Range range, std::vector<Owned>& objects) {
  using Elem = typename List::value_type::element_type;
  std::vector<Owned> gone;
  gone.reserve(range.Count);
  const auto first = list.begin() + static_cast<std::ptrdiff_t>(range.First);
  const auto last = first + static_cast<std::ptrdiff_t>(range.Count);
  for (auto at = first; at != last; ++at)
    if (*at != nullptr) gone.emplace_back(ObjectOf(at->release()));
  auto place = list.erase(first, last);
  for (Owned& object : objects)
    place = std::next(list.emplace(place, ElementOf<Elem>(object.Release())));
  return gone;
}

template <class T>
void ReplacePlain(CList<T>& list, Range range, const std::vector<T>& values) {
  list.reserve(list.size() - range.Count + values.size());
  const auto first = list.begin() + static_cast<std::ptrdiff_t>(range.First);
  list.insert(list.erase(first, first + static_cast<std::ptrdiff_t>(range.Count)), values.begin(),
              values.end());
}

/// Raises ValueError where a list would be longer than it can be.
void CheckLength(const ListInfo& list, std::size_t size);

// One field.

template <class T, std::size_t kAt>
struct FieldOf {
  static constexpr auto kField = std::get<kAt>(FlatFieldsOf<T>());

  static const auto& In(const void* owner) { return static_cast<const T*>(owner)->*kField.Member; }
  static auto& In(void* owner) { return static_cast<T*>(owner)->*kField.Member; }
};

template <class T, std::size_t kAt, class O, class V, class Coding>
void FillField(const Field<O, V, Coding>& /*field*/, FieldInfo& info) {
  using Here = FieldOf<T, kAt>;
  info.Get = [](const void* owner) { return ToPython(Here::In(owner)); };
  if constexpr (std::is_same_v<V, CPoint>)
    info.Points = [](const void* owner) { return std::span<const CPoint>(&Here::In(owner), 1); };
  if constexpr (kIsEditable<T>)
    info.Set = [](Node& owner, PyObject* object) {
      const V value = FromPython<Coding, V>(object);
      Here::In(Need(owner)) = value;
    };
}

template <class T, std::size_t kAt, class O, class V>
void FillField(const TextField<O, V>& /*field*/, FieldInfo& info) {
  using Here = FieldOf<T, kAt>;
  info.Get = [](const void* owner) { return ToPython(Here::In(owner)); };
  if constexpr (kIsEditable<T>)
    info.Set = [](Node& owner, PyObject* object) {
      constexpr std::uint32_t kMaxBytes = Here::kField.MaxBytes;
      V text = [&] {
        if constexpr (std::is_same_v<V, CString>)
          return NarrowFrom(object, kMaxBytes);
        else
          return WideFrom(object, kMaxBytes);
      }();
      Here::In(Need(owner)) = std::move(text);
    };
}

/// The most that a list of an edit form can hold to come whole into a chunk: as many as the count
/// tells, and as a position of 16 bits reaches.
template <class Count>
constexpr std::size_t MostOf() {
  constexpr std::size_t kPositions = 65536;
  return std::min<std::size_t>(std::numeric_limits<Count>::max(), kPositions);
}

template <class T, std::size_t kAt, class O, class List>
void FillField(const ArrayField<O, List>& /*field*/, FieldInfo& info) {
  using Here = FieldOf<T, kAt>;
  using Elem = typename List::value_type;
  info.Is = FieldInfo::Shape::kList;
  ListInfo& list = info.List;
  list.Size = [](const void* owner) { return static_cast<std::size_t>(Here::In(owner).size()); };
  if constexpr (requires { typename Elem::element_type; }) {
    using Record = typename Elem::element_type;
    list.What = ListInfo::Holds::kObjects;
    list.ElementType = g_info<Record>.Type;  // which has been added before
    list.At = [](const void* owner, std::size_t at) { return ObjectOf(Here::In(owner)[at].get()); };
    list.Reserve = [](void* owner, std::size_t more) {
      Here::In(owner).reserve(Here::In(owner).size() + more);
    };
    list.Splice = [](void* owner, Range range, std::vector<Owned>& objects) {
      return SpliceObjects(Here::In(owner), range, objects);
    };
  } else if constexpr (HasFields<Elem>) {
    list.What = ListInfo::Holds::kRecords;
    list.ElementType = g_info<Elem>.Type;
    list.At = [](const void* owner, std::size_t at) {
      return Object{const_cast<Elem*>(&Here::In(owner)[at]), &g_info<Elem>};
    };
    if constexpr (kIsEditable<T>)
      list.ReplaceRecords = [](void* owner, Range range, const std::vector<const void*>& records) {
        std::vector<Elem> copies;
        copies.reserve(records.size());
        for (const void* record : records) copies.push_back(*static_cast<const Elem*>(record));
        ReplacePlain(Here::In(owner), range, copies);
      };
  } else {
    list.Value = [](const void* owner, std::size_t at) { return ToPython(Here::In(owner)[at]); };
    if constexpr (std::is_same_v<Elem, CPoint>)
      info.Points = [](const void* owner) {
        return std::span<const CPoint>(Here::In(owner).data(), Here::In(owner).size());
      };
    if constexpr (kIsEditable<T>)
      list.ReplaceValues = [](Node& owner, const ListInfo& self, Range range, PyObject* values) {
        const std::vector<Elem> fresh = ManyFrom<Elem>(values);
        auto& into = Here::In(Need(owner));
        // Code that the values ran may have changed the list.
        range.First = std::min(range.First, into.size());
        range.Count = std::min(range.Count, into.size() - range.First);
        CheckLength(self, into.size() - range.Count + fresh.size());
        ReplacePlain(into, range, fresh);
      };
  }
}

template <class T, std::size_t kAt, class O, class Slot, class Chunk>
void FillField(const SlotField<O, Slot, Chunk>& /*field*/, FieldInfo& info) {
  using Here = FieldOf<T, kAt>;
  using Sub = typename Slot::element_type;
  info.Is = FieldInfo::Shape::kSlot;
  info.SlotClass = &g_info<Sub>;
  info.Sub = [](const void* owner) -> void* { return Here::In(owner).get(); };
  if constexpr (kIsEditable<T>)
    info.SetSub = [](void* owner, Owned sub) {
      Here::In(owner) = std::unique_ptr<Sub>(static_cast<Sub*>(sub.Release().At));
    };
}

}  // namespace qenzor::python
