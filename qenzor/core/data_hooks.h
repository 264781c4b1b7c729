#pragma once

#include <cstdint>
#include <type_traits>

#include "qenzor/platform/standard.h"

namespace qenzor {

/// What a class may do beyond its field list; the functions here do nothing. Data that needs one of
/// these names a struct Hooks, final and derived from this one, which overrides it. `override`
/// makes the compiler reject a misspelt name, and no call goes through a table, since the class of
/// the hooks is known where they are called.
template <class Data>
struct DataHooks {
  /// The fields have been read from memory, or from a file.
  virtual void AfterMemoryRead(Data& /*data*/) const {}
  virtual void AfterFileRead(Data& /*data*/) const {}
  /// How many bytes a block in memory counts as when its fields take `consumed` bytes, `before` of
  /// them ahead of the elements of its array.
  virtual std::uint32_t MemoryConsumed(std::uint32_t /*before*/, std::uint32_t consumed) const {
    return consumed;
  }
  /// The fields have been copied; this copies what follows from them.
  virtual void CopyDerived(const Data& /*from*/, Data& /*to*/) const {}
  /// An edit object is being released: lists and slots are empty, and numbers may start again.
  virtual void ResetNumber(Data& /*data*/) const {}

  DataHooks() = default;
  virtual ~DataHooks() = default;
  DataHooks(const DataHooks&) = delete;
  DataHooks& operator=(const DataHooks&) = delete;
};

/// The hooks of data that names none.
template <class Data>
struct NoHooks final : DataHooks<Data> {};

template <class Data>
struct HooksOf {
  using Type = NoHooks<Data>;
};
template <class Data>
requires requires { typename Data::Hooks; }
struct HooksOf<Data> {
  using Type = typename Data::Hooks;
  static_assert(
      requires(const Type& hooks, Data& data) {
        hooks.AfterMemoryRead(data);
        hooks.AfterFileRead(data);
        hooks.CopyDerived(data, data);
        hooks.ResetNumber(data);
      },
      "Hooks must be derived from DataHooks of the data that names it.");
};

template <class Data>
typename HooksOf<Data>::Type HooksFor() noexcept {
  return {};
}

template <class Hooks>
Hooks* DeclarerOf(std::uint32_t (Hooks::*)(std::uint32_t, std::uint32_t) const);

/// Whether the data counts its bytes in memory by a rule of its own.
template <class Data, class Hooks = typename HooksOf<Data>::Type>
inline constexpr bool kCountsItself =
    std::is_same_v<decltype(DeclarerOf(&Hooks::MemoryConsumed)), Hooks*>;

}  // namespace qenzor
