#include "values.h"

#include <algorithm>
#include <cmath>
#include <string_view>

#include "qenzor/core/stored_text.h"
#include "qenzor/platform/code_page.h"

namespace qenzor::python {

namespace {

PyTypeObject* g_point = nullptr;
PyTypeObject* g_rect = nullptr;

/// An exact int, of which no Python code is run any more.
Ref<> AsInteger(PyObject* object) {
  if (PyLong_CheckExact(object)) return Ref<>::Share(object);
  return Ref<>::New(PyNumber_Index(object));
}

[[noreturn]] void RaiseOutside(PyObject* object, const std::string& least,
                               const std::string& most) {
  const auto text = Ref<>::New(PyObject_Str(object));
  const char* const shown = Checked(PyUnicode_AsUTF8(text.Get()));
  Raise(PyExc_OverflowError, std::string(shown) + " is not within " + least + " to " + most);
}

}  // namespace

PyTypeObject* FindTupleType(const char* name) {
  const auto module = Ref<>::New(PyImport_ImportModule("qenzor._types"));
  auto* type = Checked(PyObject_GetAttrString(module.Get(), name));
  if (!PyType_Check(type) ||
      PyType_IsSubtype(reinterpret_cast<PyTypeObject*>(type), &PyTuple_Type) == 0)
    Raise(PyExc_TypeError, std::string(name) + " is no tuple");
  return reinterpret_cast<PyTypeObject*>(type);
}

void InitValues() {
  g_point = FindTupleType("Point");
  g_rect = FindTupleType("Rect");
}

PyObject* MakeNamedTuple(PyTypeObject* type, std::initializer_list<PyObject*> items) {
  PyObject* const tuple = type->tp_alloc(type, static_cast<Py_ssize_t>(items.size()));
  Py_ssize_t place = 0;
  bool whole = tuple != nullptr;
  for (PyObject* const item : items) {
    whole = whole && item != nullptr;
    if (tuple != nullptr)
      PyTuple_SET_ITEM(tuple, place++, item);
    else
      Py_XDECREF(item);
  }
  if (!whole) {
    Py_XDECREF(tuple);
    throw PythonError{};
  }
  return tuple;
}

PyObject* ToPython(const CPoint& point) {
  return MakeNamedTuple(g_point, {PyLong_FromLong(point.x), PyLong_FromLong(point.y)});
}

PyObject* ToPython(const CPoint16& point) { return ToPython(CPoint{point.x, point.y}); }

PyObject* ToPython(const CRect& rect) {
  return MakeNamedTuple(g_rect, {PyLong_FromLong(rect.left), PyLong_FromLong(rect.top),
                                 PyLong_FromLong(rect.right), PyLong_FromLong(rect.bottom)});
}

PyObject* ToPython(const CStringW& text) {
  int order = PY_BIG_ENDIAN != 0 ? 1 : -1;
  return Checked(PyUnicode_DecodeUTF16(reinterpret_cast<const char*>(text.data()),
                                       static_cast<Py_ssize_t>(text.size() * sizeof(char16_t)),
                                       "surrogatepass", &order));
}

PyObject* ToPython(const CString& text) { return ToPython(WidenText(text)); }

std::int64_t SignedFrom(PyObject* object, std::int64_t least, std::int64_t most) {
  const Ref<> integer = AsInteger(object);
  int overflow = 0;
  const std::int64_t value = PyLong_AsLongLongAndOverflow(integer.Get(), &overflow);
  if (overflow != 0 || value < least || value > most)
    RaiseOutside(integer.Get(), std::to_string(least), std::to_string(most));
  return value;
}

std::uint64_t UnsignedFrom(PyObject* object, std::uint64_t most) {
  const Ref<> integer = AsInteger(object);
  const std::uint64_t value = PyLong_AsUnsignedLongLong(integer.Get());
  if (PyErr_Occurred() != nullptr) {
    PyErr_Clear();
    RaiseOutside(integer.Get(), "0", std::to_string(most));
  }
  if (value > most) RaiseOutside(integer.Get(), "0", std::to_string(most));
  return value;
}

float FloatFrom(PyObject* object) {
  const double value = PyFloat_AsDouble(object);
  if (value == -1 && PyErr_Occurred() != nullptr) throw PythonError{};
  const auto narrow = static_cast<float>(value);
  if (std::isfinite(value) && !std::isfinite(narrow))
    Raise(PyExc_OverflowError, "the number is too large for a float of 32 bits");
  return narrow;
}

void IntegersFrom(PyObject* object, std::int64_t least, std::int64_t most, std::int32_t* values,
                  std::size_t count) {
  const auto items = Ref<>::New(PySequence_Tuple(object));
  if (static_cast<std::size_t>(PyTuple_GET_SIZE(items.Get())) != count)
    Raise(PyExc_ValueError, std::to_string(count) + " integers are wanted, not " +
                                std::to_string(PyTuple_GET_SIZE(items.Get())));
  for (std::size_t i = 0; i < count; ++i)
    values[i] = static_cast<std::int32_t>(
        SignedFrom(PyTuple_GET_ITEM(items.Get(), static_cast<Py_ssize_t>(i)), least, most));
}

CStringW WideFrom(PyObject* object, std::uint32_t max_bytes) {
  if (!PyUnicode_Check(object)) {
    PyErr_Format(PyExc_TypeError, "a str is wanted, not %.100s", Py_TYPE(object)->tp_name);
    throw PythonError{};
  }
  const char* const encoding = PY_BIG_ENDIAN != 0 ? "utf-16-be" : "utf-16-le";
  const auto bytes = Ref<>::New(PyUnicode_AsEncodedString(object, encoding, "surrogatepass"));
  const auto units = static_cast<std::size_t>(PyBytes_GET_SIZE(bytes.Get())) / sizeof(char16_t);
  CStringW text(reinterpret_cast<const char16_t*>(PyBytes_AS_STRING(bytes.Get())), units);
  if (text.find(u'\0') != text.npos)
    Raise(PyExc_ValueError, "a text cannot hold a NUL, at which reading would end it");
  if (units > kMaxStoredTextUnits || StoredTextBytes(units) > max_bytes)
    Raise(PyExc_ValueError, "the text has " + std::to_string(units) +
                                " UTF-16 units and the file has room for " +
                                std::to_string(max_bytes / 2 - 1));
  return text;
}

CString NarrowFrom(PyObject* object, std::uint32_t max_bytes) {
  const CStringW wide = WideFrom(object, max_bytes);
  CString narrow = NarrowText(wide);
  if (WidenText(narrow) != wide)
    Raise(PyExc_ValueError, "the text has characters that the code page (Shift_JIS) lacks");
  return narrow;
}

void BytesFrom(PyObject* object, char* bytes, std::size_t size) {
  if (!PyBytes_Check(object)) {
    PyErr_Format(PyExc_TypeError, "bytes are wanted, not %.100s", Py_TYPE(object)->tp_name);
    throw PythonError{};
  }
  if (static_cast<std::size_t>(PyBytes_GET_SIZE(object)) != size)
    Raise(PyExc_ValueError, std::to_string(size) + " bytes are wanted, not " +
                                std::to_string(PyBytes_GET_SIZE(object)));
  std::copy_n(PyBytes_AS_STRING(object), size, bytes);
}

namespace {

/// The points of a buffer of integers in two columns; false for any other object.
bool TakeBuffer(PyObject* object, std::vector<CPoint>& points) {
  struct View : Py_buffer {
    bool Is = false;
    ~View() {
      if (Is) PyBuffer_Release(this);
    }
  } view;
  if (PyObject_CheckBuffer(object) == 0) return false;
  view.Is = PyObject_GetBuffer(object, &view, PyBUF_FORMAT | PyBUF_C_CONTIGUOUS) == 0;
  if (!view.Is) {
    PyErr_Clear();
    return false;
  }
  const std::string_view format = view.format == nullptr ? "B" : view.format;
  if (view.ndim != 2 || view.shape[1] != 2) return false;
  const auto take = [&]<class T>(T /*tag*/) {
    const auto count = static_cast<std::size_t>(view.shape[0]);
    const auto* const values = static_cast<const T*>(view.buf);
    points.resize(count);
    for (std::size_t i = 0; i < 2 * count; ++i) {
      const std::int64_t value = values[i];
      if (value < INT16_MIN || value > INT16_MAX)
        Raise(PyExc_OverflowError, std::to_string(value) + " is not within -32768 to 32767");
      (i % 2 == 0 ? points[i / 2].x : points[i / 2].y) = static_cast<std::int32_t>(value);
    }
    return true;
  };
  if (format == "h") return take(std::int16_t{});
  if (format == "i") return take(std::int32_t{});
  if (format == "l" || format == "q") return take(std::int64_t{});
  return false;
}

}  // namespace

std::vector<CPoint> PointsFrom(PyObject* object) {
  std::vector<CPoint> points;
  if (TakeBuffer(object, points)) return points;
  const auto items = Ref<>::New(PySequence_Tuple(object));
  const Py_ssize_t count = PyTuple_GET_SIZE(items.Get());
  points.reserve(static_cast<std::size_t>(count));
  for (Py_ssize_t i = 0; i < count; ++i)
    points.push_back(FromPython<ShortGeometryCoding, CPoint>(PyTuple_GET_ITEM(items.Get(), i)));
  return points;
}

}  // namespace qenzor::python
