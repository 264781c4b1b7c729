#pragma once

// Values of fields as Python objects, and back. What turns a Python object into a value may run any
// Python code, so that pointers into documents are to be asked for afterwards.

#include <array>
#include <concepts>
#include <cstdint>
#include <limits>
#include <string>
#include <type_traits>
#include <vector>

#include "python_api.h"
#include "qenzor/core/coding.h"
#include "qenzor/platform/geometry.h"
#include "qenzor/platform/strings.h"

namespace qenzor::python {

/// Finds the named tuples of the Python package; to be called once, before anything else here.
void InitValues();

/// A tuple of the class, which is one of the package's named tuples; takes over the items.
PyObject* MakeNamedTuple(PyTypeObject* type, std::initializer_list<PyObject*> items);
/// A named tuple of the module qenzor._types.
PyTypeObject* FindTupleType(const char* name);

template <std::integral T>
PyObject* ToPython(T value) {
  if constexpr (std::is_unsigned_v<T>)
    return Checked(PyLong_FromUnsignedLongLong(value));
  else
    return Checked(PyLong_FromLongLong(value));
}
inline PyObject* ToPython(float value) { return Checked(PyFloat_FromDouble(double{value})); }
PyObject* ToPython(const CPoint& point);
PyObject* ToPython(const CPoint16& point);
PyObject* ToPython(const CRect& rect);
PyObject* ToPython(const CStringW& text);
/// Text in the code page.
PyObject* ToPython(const CString& text);
template <std::size_t kSize>
PyObject* ToPython(const std::array<char, kSize>& bytes) {
  return Checked(PyBytes_FromStringAndSize(bytes.data(), kSize));
}

/// Raises TypeError for what is no integer, OverflowError for what lies outside.
std::int64_t SignedFrom(PyObject* object, std::int64_t least, std::int64_t most);
std::uint64_t UnsignedFrom(PyObject* object, std::uint64_t most);
/// Raises OverflowError for what no finite float holds.
float FloatFrom(PyObject* object);
/// So many integers within the limits, of any sequence or iterable.
void IntegersFrom(PyObject* object, std::int64_t least, std::int64_t most, std::int32_t* values,
                  std::size_t count);
/// Raises ValueError where the text has a NUL or takes more than so many bytes in a file.
CStringW WideFrom(PyObject* object, std::uint32_t max_bytes);
/// The same in the code page; ValueError for characters that it lacks.
CString NarrowFrom(PyObject* object, std::uint32_t max_bytes);
void BytesFrom(PyObject* object, char* bytes, std::size_t size);

/// What the field's coding has room for.
template <class Coding, class T>
T FromPython(PyObject* object) {
  constexpr bool kIsShort = std::is_same_v<Coding, ShortGeometryCoding>;
  using Limits = std::numeric_limits<std::int16_t>;
  using LongLimits = std::numeric_limits<std::int32_t>;
  [[maybe_unused]] constexpr std::int64_t kLeast = kIsShort ? Limits::min() : LongLimits::min();
  [[maybe_unused]] constexpr std::int64_t kMost = kIsShort ? Limits::max() : LongLimits::max();
  if constexpr (std::is_unsigned_v<T>) {
    return static_cast<T>(UnsignedFrom(object, std::numeric_limits<T>::max()));
  } else if constexpr (std::is_integral_v<T>) {
    using Own = std::numeric_limits<T>;
    return static_cast<T>(SignedFrom(object, Own::min(), Own::max()));
  } else if constexpr (std::is_same_v<T, float>) {
    return FloatFrom(object);
  } else if constexpr (std::is_same_v<T, CRect>) {
    std::array<std::int32_t, 4> edges;
    IntegersFrom(object, kLeast, kMost, edges.data(), edges.size());
    return {edges[0], edges[1], edges[2], edges[3]};
  } else if constexpr (requires(T value) { value.x; }) {
    std::array<std::int32_t, 2> values;
    IntegersFrom(object, kLeast, kMost, values.data(), values.size());
    return {static_cast<decltype(T::x)>(values[0]), static_cast<decltype(T::y)>(values[1])};
  } else {
    T bytes{};
    BytesFrom(object, bytes.data(), bytes.size());
    return bytes;
  }
}

/// All that an iterable gives; arrays of integers in two columns are quick.
std::vector<CPoint> PointsFrom(PyObject* object);

template <class T>
std::vector<T> ManyFrom(PyObject* object) {
  if constexpr (std::is_same_v<T, CPoint>) {
    return PointsFrom(object);
  } else {
    const auto items = Ref<>::New(PySequence_Tuple(object));
    std::vector<T> values;
    const Py_ssize_t count = PyTuple_GET_SIZE(items.Get());
    values.reserve(static_cast<std::size_t>(count));
    for (Py_ssize_t i = 0; i < count; ++i)
      values.push_back(FromPython<DefaultCoding<T>, T>(PyTuple_GET_ITEM(items.Get(), i)));
    return values;
  }
}

}  // namespace qenzor::python
