#include "qenzor/work/places_impl.h"

namespace qenzor::work {

namespace {

template <class F>
bool AnySet(std::string_view key, F&& f) {
  return AnyClass([&]<class Row>(Row /*row*/) {
    if constexpr (Row::kIsSet)
      return KeyOfElements<typename Row::Chunk>() == key &&
             f.template operator()<typename Row::Chunk::Element>();
    else
      return false;
  });
}

}  // namespace

bool IsIndexKey(std::string_view key) noexcept {
  return AnySet(key, []<class Element>() { return !Numbered<Element>; });
}

bool IsWideKey(std::string_view key) noexcept {
  return AnySet(key, []<class Element>() {
    if constexpr (Numbered<Element>)
      return sizeof(typename decltype(NumberField<Element>())::ValueType) == 8;
    else
      return false;
  });
}

}  // namespace qenzor::work
