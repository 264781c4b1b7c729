#pragma once

#include <memory>

namespace world {

/// Adds an element to the end of a set edit.
template <class Set, class Elem>
void Append(Set& set, std::unique_ptr<Elem> elem) {
  set.AddElem(set.GetElemCount(), elem.release());
}

}  // namespace world
