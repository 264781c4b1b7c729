#pragma once

#include <Python.h>

#include <exception>
#include <new>
#include <string>
#include <utility>

namespace qenzor::python {

/// Thrown where a Python error has been set.
struct PythonError {};

/// Throws a Python exception of the type.
[[noreturn]] inline void Raise(PyObject* type, const std::string& what) {
  PyErr_SetString(type, what.c_str());
  throw PythonError{};
}

/// What a function of Python gave, which is null where it has set an error.
template <class T>
T* Checked(T* result) {
  if (result == nullptr) throw PythonError{};
  return result;
}
/// The same for functions that give -1.
inline int Checked(int result) {
  if (result < 0) throw PythonError{};
  return result;
}
inline Py_ssize_t CheckedSize(Py_ssize_t result) {
  if (result < 0) throw PythonError{};
  return result;
}

/// Owns a reference to a Python object, or none.
template <class T = PyObject>
class Ref {
 public:
  Ref() = default;
  /// Takes over a reference.
  static Ref Take(T* object) { return Ref(object); }
  /// Takes over the reference that a function of Python gave.
  static Ref New(T* object) { return Ref(Checked(object)); }
  static Ref Share(T* object) {
    Py_XINCREF(reinterpret_cast<PyObject*>(object));
    return Ref(object);
  }
  Ref(const Ref& other) : Ref(Share(other.m_object)) {}
  Ref(Ref&& other) noexcept : m_object(std::exchange(other.m_object, nullptr)) {}
  Ref& operator=(Ref other) noexcept {
    std::swap(m_object, other.m_object);
    return *this;
  }
  ~Ref() { Py_XDECREF(reinterpret_cast<PyObject*>(m_object)); }

  T* Get() const { return m_object; }
  T* operator->() const { return m_object; }
  explicit operator bool() const { return m_object != nullptr; }
  /// Gives the reference away.
  T* Release() { return std::exchange(m_object, nullptr); }
  PyObject* ReleaseObject() { return reinterpret_cast<PyObject*>(Release()); }

 private:
  explicit Ref(T* object) : m_object(object) {}
  T* m_object = nullptr;
};

/// Sets the Python error that belongs to the C++ exception at hand.
inline void SetErrorOfException() noexcept {
  try {
    throw;
  } catch (const PythonError&) {
    // is set
  } catch (const std::bad_alloc&) {
    PyErr_NoMemory();
  } catch (const std::exception& error) {
    PyErr_SetString(PyExc_RuntimeError, error.what());
  }
}

/// What f gives; where it throws, the failed result with the Python error set.
template <class Result, class F>
Result Guarded(Result failed, F&& f) noexcept {
  try {
    return f();
  } catch (...) {
    SetErrorOfException();
    return failed;
  }
}
template <class F>
PyObject* Guarded(F&& f) noexcept {
  return Guarded(static_cast<PyObject*>(nullptr), std::forward<F>(f));
}

}  // namespace qenzor::python
