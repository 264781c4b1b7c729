#pragma once

#include <type_traits>
#include <utility>

#include "qenzor/catalogue.h"

namespace qenzor {

namespace catalogue {

template <class... F>
struct Overloaded : F... {
  using F::operator()...;
};
template <class... F>
Overloaded(F...) -> Overloaded<F...>;

/// The form of a row that an Object may turn out to be.
template <class Row, class Object>
using FormLike =
    std::conditional_t<std::is_base_of_v<CAbstractChunkEdit, std::remove_const_t<Object>>,
                       typename Row::Edit, typename Row::Chunk>;

template <class Form, class Object, class F>
bool VisitAs(Object& object, const F& f) {
  using Target = std::conditional_t<std::is_const_v<Object>, const Form, Form>;
  if constexpr (std::is_base_of_v<Object, Target>) {
    if constexpr (std::is_invocable_v<const F&, Target&>) {
      auto* target = class_cast<Target>(&object);
      if (target != nullptr) f(*target);
      return target != nullptr;
    }
  }
  return false;
}

}  // namespace catalogue

/// Calls the function that takes the object's class: of f..., which together must not be ambiguous,
/// the one that fits best, as if they were overloads. The object is a chunk or an edit object,
/// known by any of its bases; functions may take it by a base, too. True when one was called.
///
///     Visit(*object, [&](const CLineObj& line) { … }, [&](const CAbstractObj& other) { … });
template <class Object, class... F>
bool Visit(Object& object, F&&... f) {
  const catalogue::Overloaded overloaded{std::forward<F>(f)...};
  return AnyClass([&]<class Row>(Row) {
    return catalogue::VisitAs<catalogue::FormLike<Row, Object>>(object, overloaded);
  });
}

}  // namespace qenzor
