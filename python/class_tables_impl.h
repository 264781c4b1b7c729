#pragma once

// Makes the tables of reflection.h from the field lists. Included where the classes of a document
// are added.

#include "field_tables_impl.h"
#include "qenzor/core/class_list.h"

namespace qenzor::python {

template <class T>
void FillFields(ClassInfo& info) {
  constexpr auto kFields = FlatFieldsOf<T>();
  [&]<std::size_t... I>(std::index_sequence<I...>) {
    const auto add = [&]<std::size_t kAt>(std::integral_constant<std::size_t, kAt>) {
      FieldInfo field;
      field.Name = std::get<kAt>(kFields).Tag;
      FillField<T, kAt>(std::get<kAt>(kFields), field);
      info.Fields.push_back(std::move(field));
    };
    (add(std::integral_constant<std::size_t, I>{}), ...);
  }
  (std::make_index_sequence<std::tuple_size_v<decltype(kFields)>>{});
}

/// The lists of an edit form hold no more than those of the chunk form can tell.
template <class Chunk>
void LimitLists(ClassInfo& info) {
  constexpr auto kFields = FlatFieldsOf<Chunk>();
  std::size_t at = 0;
  ForEachField(kFields, [&]<class F>(const F& /*field*/) {
    if constexpr (requires { typename F::Array; })
      info.Fields[at].List.Most = MostOf<typename F::Array::count_type>();
    ++at;
  });
}

template <class T>
void FillOwning(ClassInfo& info) {
  info.Destroy = [](void* object) { delete static_cast<T*>(object); };
  info.Equal = [](const void* a, const void* b) {
    return *static_cast<const T*>(a) == *static_cast<const T*>(b);
  };
  info.Create = []() -> void* { return new T(); };
}

/// A record with lists inside, from one form to the other.
template <class From, class To>
void CopyFieldsOf(const From& from, To& to) {
  ForEachFieldPair(FlatFieldsOf<To>(), FlatFieldsOf<From>(), [&](const auto& f, const auto& g) {
    const auto& source = from.*g.Member;
    if constexpr (requires { source.begin(); })
      (to.*f.Member).assign(source.begin(), source.end());
    else
      to.*f.Member = source;
  });
}

template <class T>
concept IsClonable = requires(T& object) {
  object.Clone();
};

/// What all forms of all classes have.
template <class T>
void FillClass(ClassInfo& info, PyTypeObject* const* type, const std::string& name) {
  using Edit = typename EditOf<T>::Type;
  info.Name = name;
  info.Type = type;
  info.Edit = &g_info<Edit>;
  FillOwning<T>(info);
  info.CopyToEdit = [](const void* object) -> void* {
    const T& source = *static_cast<const T*>(object);
    std::unique_ptr<Edit> copy;
    if constexpr (std::is_base_of_v<CAbstractChunk, T>) {
      copy = ToEdit(source);
    } else if constexpr (!kIsEditable<T>) {
      copy = std::make_unique<Edit>();
      CopyFieldsOf(source, *copy);
    } else if constexpr (IsClonable<T>) {
      copy = CloneOf(source);
    } else {
      copy = std::make_unique<T>(source);
    }
    if (copy == nullptr) throw std::bad_alloc();
    return copy.release();
  };
  if constexpr (std::is_base_of_v<CAbstractChunk, T>) {
    info.FromChunk = [](CAbstractChunk* chunk) -> void* { return static_cast<T*>(chunk); };
    RegisterClass(T::kRuntimeClass, info);
  } else if constexpr (std::is_base_of_v<CAbstractChunkEdit, T>) {
    info.FromEdit = [](CAbstractChunkEdit* edit) -> void* { return static_cast<T*>(edit); };
    info.AsEdit = [](void* object) -> CAbstractChunkEdit* { return static_cast<T*>(object); };
    RegisterClass(typeid(T), info);
  }
}

/// The elements of a set without keys, in either form.
template <class Chunk, class Set>
void FillElements(ClassInfo& info) {
  info.IsSet = true;
  ListInfo& list = info.Elements;
  list.What = ListInfo::Holds::kObjects;
  list.ElementType = &g_type<typename Chunk::Element>;
  list.Most = std::numeric_limits<std::uint32_t>::max();
  list.Size = [](const void* set) {
    return static_cast<std::size_t>(static_cast<const Set*>(set)->GetElemCount());
  };
  list.At = [](const void* set, std::size_t at) {
    return ObjectOf(static_cast<const Set*>(set)->GetElem(static_cast<std::uint32_t>(at)));
  };
  if constexpr (kIsEditable<Set>) {
    list.Reserve = [](void* set, std::size_t more) {
      auto& elems = *static_cast<Set*>(set)->GetElemPtr();
      elems.reserve(elems.size() + more);
    };
    list.Splice = [](void* set, Range range, std::vector<Owned>& objects) {
      return SpliceObjects(*static_cast<Set*>(set)->GetElemPtr(), range, objects);
    };
  }
}

template <class Chunk, class Set>
void FillKeyed(ClassInfo& info) {
  info.IsSet = info.IsKeyed = true;
  KeyedInfo& keyed = info.Keyed;
  keyed.ElementType = &g_type<typename Chunk::Element>;
  keyed.Keys = [](const void* set) {
    std::vector<std::uint64_t> keys;
    for (const auto* elem : static_cast<const Set*>(set)->GetElems())
      keys.push_back(elem->GetKey());
    return keys;
  };
  keyed.Size = [](const void* set) {
    return static_cast<std::size_t>(static_cast<const Set*>(set)->GetElemCount());
  };
  keyed.Find = [](const void* set, std::uint64_t key) {
    return ObjectOf(static_cast<const Set*>(set)->GetElem(key));
  };
  if constexpr (kIsEditable<Set>) {
    using Elem = typename Set::ElementEdit;
    keyed.KeyOf = [](const void* elem) { return static_cast<const Elem*>(elem)->GetKey(); };
    keyed.Insert = [](void* set, Owned elem) {
      static_cast<Set*>(set)->Insert(std::unique_ptr<Elem>(ElementOf<Elem>(elem.Release())));
    };
    keyed.Remove = [](void* set, std::uint64_t key) {
      return Owned(ObjectOf(static_cast<Set*>(set)->Take(key).release()));
    };
  }
}

template <class Chunk, class T>
void FillForm() {
  ClassInfo& info = g_info<T>;
  FillClass<T>(info, &g_type<Chunk>, std::string(Chunk::kTag));
  if constexpr (requires { typename Chunk::Key; })
    FillKeyed<Chunk, T>(info);
  else if constexpr (requires { typename Chunk::Element; })
    FillElements<Chunk, T>(info);
  else
    FillFields<T>(info);
}

/// Adds a class of records, of which a document's file info is one.
template <class Record>
void AddRecord(const std::string& name) {
  using Edit = typename EditOf<Record>::Type;
  if (g_type<Record> != nullptr) return;
  FillClass<Record>(g_info<Record>, &g_type<Record>, name);
  FillFields<Record>(g_info<Record>);
  if constexpr (!std::is_same_v<Record, Edit>) {
    FillClass<Edit>(g_info<Edit>, &g_type<Record>, name);
    FillFields<Edit>(g_info<Edit>);
    LimitLists<Record>(g_info<Edit>);
  }
  MakeType(g_info<Record>, g_type<Record>, nullptr);
}

/// The type of the class that the chunk is built on; null where that says nothing.
template <class Chunk>
PyTypeObject* BaseTypeOf() {
  if constexpr (requires { typename Chunk::BaseType; }) {
    using Base = typename Chunk::BaseType;
    if constexpr (!std::is_same_v<Base, CAbstractChunk>)
      return MakeAbstractType(g_type<Base>, NameOf<Base>());
  }
  return nullptr;
}

template <class Chunk>
void AddChunk() {
  using Edit = typename Chunk::EditClass;
  constexpr bool kHasFields = requires { typename Chunk::DataType; };
  if constexpr (kHasFields)
    ForEachField(FlatFieldsOf<Chunk>(), []<class F>(const F& /*field*/) {
      if constexpr (requires { typename F::Array; })
        if constexpr (HasFields<typename F::Array::value_type>)
          AddRecord<typename F::Array::value_type>(NameOf<typename F::Array::value_type>());
    });
  FillForm<Chunk, Chunk>();
  FillForm<Chunk, Edit>();
  if constexpr (std::is_base_of_v<CAbstractObj, Chunk>) {
    Chunk object;
    g_info<Chunk>.Kind = g_info<Edit>.Kind = KindOf(object);
  }
  if constexpr (kHasFields) LimitLists<Chunk>(g_info<Edit>);
  MakeType(g_info<Chunk>, g_type<Chunk>, BaseTypeOf<Chunk>());
}

template <class... Chunks>
void AddChunks(ClassList<Chunks...> /*classes*/) {
  (AddChunk<Chunks>(), ...);
}

}  // namespace qenzor::python
