#pragma once

#include <string_view>

#include "qenzor/platform/export.h"
#include "qenzor/platform/slab.h"

namespace qenzor {

struct ClassRow;

/// What an object tells of its class at run time: its name and the class it derives from. There is
/// one instance per class; instances are compared by address.
struct CRuntimeClass {
  std::string_view Name;
  const CRuntimeClass* Base = nullptr;
  /// What the library's factories know of the class; null for classes that are not made by them.
  const ClassRow& (*Row)() noexcept = nullptr;

  constexpr bool IsDerivedFrom(const CRuntimeClass& other) const noexcept {
    const CRuntimeClass* cls = this;
    while (cls != nullptr && cls != &other) cls = cls->Base;
    return cls != nullptr;
  }
};

/// The object base: run-time class information and a virtual destructor.
/// A class that derives from one of the library's and keeps its GetRuntimeClass counts as that one.
class QENZOR_EXPORT CObject : public CSlabObject {
 public:
  static const CRuntimeClass kRuntimeClass;

  virtual const CRuntimeClass& GetRuntimeClass() const;
  virtual ~CObject();

  CObject(const CObject&) = delete;
  CObject& operator=(const CObject&) = delete;

 protected:
  CObject() = default;
};

/// The object as a T when its class is T or derives from T, else null.
template <class T>
T* class_cast(CObject* object) noexcept {
  if (object == nullptr || !object->GetRuntimeClass().IsDerivedFrom(T::kRuntimeClass))
    return nullptr;
  return static_cast<T*>(object);
}
/// The same for an object that is only read; T may be const or not, the result is.
template <class T>
const T* class_cast(const CObject* object) noexcept {
  if (object == nullptr || !object->GetRuntimeClass().IsDerivedFrom(T::kRuntimeClass))
    return nullptr;
  return static_cast<const T*>(object);
}

}  // namespace qenzor
