#pragma once

// What Python must know of a data class while it runs. The tables are made from the classes' field
// lists (class_tables_impl.h), so a class or a field that the catalogue has is in Python too.

#include <Python.h>

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <typeinfo>
#include <utility>
#include <vector>

#include "qenzor/qen/abstract_obj.h"
#include "qenzor/view/objects.h"

namespace qenzor::python {

struct ClassInfo;
struct Node;

/// A chunk, an edit object or a record, by the address of its most derived class.
struct Object {
  void* At = nullptr;
  const ClassInfo* Info = nullptr;
};

/// A new edit object or record that nobody else owns yet.
class Owned {
 public:
  Owned() = default;
  explicit Owned(Object object) : m_object(object) {}
  Owned(Owned&& other) noexcept : m_object(std::exchange(other.m_object, Object{})) {}
  Owned& operator=(Owned&& other) noexcept {
    std::swap(m_object, other.m_object);
    return *this;
  }
  ~Owned();

  const Object& Get() const { return m_object; }
  explicit operator bool() const { return m_object.At != nullptr; }
  Object Release() { return std::exchange(m_object, Object{}); }

 private:
  Object m_object;
};

/// A part of a list.
struct Range {
  std::size_t First = 0;
  std::size_t Count = 0;
};

/// A list: a field of a class, or what a set holds. The functions take the object that it is in.
struct ListInfo {
  enum class Holds : std::uint8_t {
    kValues,   ///< numbers, points
    kRecords,  ///< records in place
    kObjects,  ///< owned objects, each in a place of its own
  };
  Holds What = Holds::kValues;
  std::size_t Most = 0;  ///< elements that it can hold
  /// The Python class of records and objects.
  PyTypeObject* const* ElementType = nullptr;

  std::size_t (*Size)(const void* owner) = nullptr;
  PyObject* (*Value)(const void* owner, std::size_t at) = nullptr;
  /// The record or object; nothing where an object is missing.
  Object (*At)(const void* owner, std::size_t at) = nullptr;

  // Of edit forms, null elsewhere.

  /// Puts the values of an iterable in the place of a range.
  void (*ReplaceValues)(Node& owner, const ListInfo& list, Range range, PyObject* values) = nullptr;
  /// Puts copies of records in the place of a range.
  void (*ReplaceRecords)(void* owner, Range range,
                         const std::vector<const void*>& records) = nullptr;
  /// Makes room for so many more objects.
  void (*Reserve)(void* owner, std::size_t more) = nullptr;
  /// Puts objects, for which there is room, in the place of a range, whose objects are given back.
  std::vector<Owned> (*Splice)(void* owner, Range range, std::vector<Owned>& objects) = nullptr;
};

/// What a set offers that files its elements under keys.
struct KeyedInfo {
  std::vector<std::uint64_t> (*Keys)(const void* set) = nullptr;
  std::size_t (*Size)(const void* set) = nullptr;
  Object (*Find)(const void* set, std::uint64_t key) = nullptr;
  std::uint64_t (*KeyOf)(const void* element) = nullptr;
  PyTypeObject* const* ElementType = nullptr;
  // Of edit forms, null elsewhere.
  /// Files an element whose key the set does not have.
  void (*Insert)(void* set, Owned element) = nullptr;
  Owned (*Remove)(void* set, std::uint64_t key) = nullptr;
};

struct FieldInfo {
  enum class Shape : std::uint8_t { kValue, kList, kSlot };
  std::string Name;
  Shape Is = Shape::kValue;

  PyObject* (*Get)(const void* owner) = nullptr;
  /// Asks for the owner only once the value has been looked at. Null in chunk forms.
  void (*Set)(Node& owner, PyObject* value) = nullptr;

  ListInfo List;
  /// The points of a field that has such; null for others.
  std::span<const CPoint> (*Points)(const void* owner) = nullptr;

  const ClassInfo* SlotClass = nullptr;
  void* (*Sub)(const void* owner) = nullptr;
  /// Puts an owned object, or none, into the slot; what was there is gone. Null in chunk forms.
  void (*SetSub)(void* owner, Owned sub) = nullptr;
};

/// A class in one of its forms.
struct ClassInfo {
  std::string Name;
  PyTypeObject* const* Type = nullptr;  ///< one for both forms
  const ClassInfo* Edit = nullptr;      ///< the class in the edit form; itself there
  std::vector<FieldInfo> Fields;
  bool IsSet = false;
  ListInfo Elements;  ///< of sets without keys
  bool IsKeyed = false;
  KeyedInfo Keyed;

  std::optional<ObjectKind> Kind;  ///< of map objects

  void* (*Create)() = nullptr;
  void (*Destroy)(void* object) = nullptr;
  bool (*Equal)(const void* a, const void* b) = nullptr;
  /// A new object of the class Edit with the same content.
  void* (*CopyToEdit)(const void* object) = nullptr;
  // From the bases of chunks and edit objects, and back; null for other classes.
  void* (*FromChunk)(CAbstractChunk* chunk) = nullptr;
  void* (*FromEdit)(CAbstractChunkEdit* edit) = nullptr;
  CAbstractChunkEdit* (*AsEdit)(void* object) = nullptr;
};

inline Owned::~Owned() {
  if (m_object.At != nullptr) m_object.Info->Destroy(m_object.At);
}

inline Owned CopyToEdit(const Object& object) {
  return Owned({object.Info->CopyToEdit(object.At), object.Info->Edit});
}

/// All classes: makes their tables and the Python types, and adds these to the module.
void InitClasses(PyObject* module);
/// The same of one document's classes.
void InitQenClasses();
void InitZorClasses();

/// Makes the Python type of a class, whose base is null where it derives from nothing but the base
/// of all.
void MakeType(const ClassInfo& info, PyTypeObject*& type, PyTypeObject* base);
/// The same, at the first call, of a class that only others derive from.
PyTypeObject* MakeAbstractType(PyTypeObject*& type, const std::string& name);

/// The class that a Python type stands for in the edit form; null for abstract ones.
const ClassInfo* FindEditClass(PyTypeObject* type);

const ClassInfo& FindClass(const CAbstractChunk& chunk);
const ClassInfo& FindClass(const CAbstractChunkEdit& edit);
void RegisterClass(const CRuntimeClass& runtime_class, const ClassInfo& info);
void RegisterClass(const std::type_info& type, const ClassInfo& info);

/// The Python type of all map objects.
PyTypeObject*& MapObjectType();
// The classes of what documents begin with.
const ClassInfo& QenInfoClass();
const ClassInfo& ZorInfoClass();
const ClassInfo& QenRootClass(bool editable);
const ClassInfo& ZorRootClass(bool editable);

}  // namespace qenzor::python
