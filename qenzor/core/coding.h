#pragma once

#include <array>
#include <bit>
#include <cstdint>
#include <cstring>
#include <type_traits>

#include "qenzor/platform/geometry.h"

namespace qenzor {

namespace little_endian {

template <class T>
T Load(const std::uint8_t* bytes) noexcept {
  static_assert(std::is_trivially_copyable_v<T>);
  std::array<std::uint8_t, sizeof(T)> raw;
  std::memcpy(raw.data(), bytes, sizeof(T));
  if constexpr (std::endian::native == std::endian::big)
    for (std::size_t i = 0; i < sizeof(T) / 2; ++i) std::swap(raw[i], raw[sizeof(T) - 1 - i]);
  return std::bit_cast<T>(raw);
}

template <class T>
void Store(std::uint8_t* bytes, T value) noexcept {
  auto raw = std::bit_cast<std::array<std::uint8_t, sizeof(T)>>(value);
  if constexpr (std::endian::native == std::endian::big)
    for (std::size_t i = 0; i < sizeof(T) / 2; ++i) std::swap(raw[i], raw[sizeof(T) - 1 - i]);
  std::memcpy(bytes, raw.data(), sizeof(T));
}

}  // namespace little_endian

/// A number as wide in the file as in memory.
struct NumberCoding {
  template <class T>
  static constexpr std::uint32_t kSize = sizeof(T);

  template <class T>
  static void Load(const std::uint8_t* bytes, T& value) noexcept {
    value = little_endian::Load<T>(bytes);
  }
  template <class T>
  static void Store(std::uint8_t* bytes, const T& value) noexcept {
    little_endian::Store(bytes, value);
  }
};

/// The identification at the front of a file: six characters, CR, LF, end-of-file mark.
struct IdentCoding {
  template <class T>
  static constexpr std::uint32_t kSize = sizeof(T);

  template <class T>
  static void Load(const std::uint8_t* bytes, T& value) noexcept {
    std::memcpy(value.data(), bytes, sizeof(T));
  }
  template <class T>
  static void Store(std::uint8_t* bytes, const T& value) noexcept {
    std::memcpy(bytes, value.data(), sizeof(T));
  }
};

/// Points and rectangles with 16 bits a value in the file: reading extends the sign, writing keeps
/// the low 16 bits.
struct ShortGeometryCoding {
  template <class T>
  static constexpr std::uint32_t kSize = std::is_same_v<T, CRect> ? 8 : 4;

  template <class T>
  static void Load(const std::uint8_t* bytes, T& value) noexcept {
    if constexpr (std::is_same_v<T, CRect>)
      value = {LoadShort(bytes), LoadShort(bytes + 2), LoadShort(bytes + 4), LoadShort(bytes + 6)};
    else
      value = {LoadShort(bytes), LoadShort(bytes + 2)};
  }
  template <class T>
  static void Store(std::uint8_t* bytes, const T& value) noexcept {
    if constexpr (std::is_same_v<T, CRect>) {
      StoreShort(bytes, value.left);
      StoreShort(bytes + 2, value.top);
      StoreShort(bytes + 4, value.right);
      StoreShort(bytes + 6, value.bottom);
    } else {
      StoreShort(bytes, value.x);
      StoreShort(bytes + 2, value.y);
    }
  }

 private:
  static std::int16_t LoadShort(const std::uint8_t* bytes) noexcept {
    return little_endian::Load<std::int16_t>(bytes);
  }
  static void StoreShort(std::uint8_t* bytes, std::int32_t value) noexcept {
    little_endian::Store(bytes, static_cast<std::uint16_t>(value));
  }
};

/// A rectangle with 32 bits a value in the file.
struct LongRectCoding {
  template <class T>
  static constexpr std::uint32_t kSize = 16;

  static void Load(const std::uint8_t* bytes, CRect& rect) noexcept {
    NumberCoding::Load(bytes, rect.left);
    NumberCoding::Load(bytes + 4, rect.top);
    NumberCoding::Load(bytes + 8, rect.right);
    NumberCoding::Load(bytes + 12, rect.bottom);
  }
  static void Store(std::uint8_t* bytes, const CRect& rect) noexcept {
    NumberCoding::Store(bytes, rect.left);
    NumberCoding::Store(bytes + 4, rect.top);
    NumberCoding::Store(bytes + 8, rect.right);
    NumberCoding::Store(bytes + 12, rect.bottom);
  }
};

/// The coding that a type implies where a field names none.
template <class T>
using DefaultCoding =
    std::conditional_t<std::is_arithmetic_v<T>, NumberCoding, ShortGeometryCoding>;

}  // namespace qenzor
