#pragma once

// What the module's Python classes that stand for documents and frames have in common.

#include <pybind11/pybind11.h>

#include <optional>
#include <string>

#include "documents.h"
#include "qenzor/view/frame.h"

namespace qenzor::python {

/// Takes over a reference that a function of Python gave.
inline pybind11::object Steal(PyObject* object) {
  return pybind11::reinterpret_steal<pybind11::object>(Checked(object));
}

/// A document as Python holds it.
struct PyDocument {
  StoreRef<Store> Owner;
  Document* Of = nullptr;  ///< the owner, by its other name
};
struct PyQen : PyDocument {};
struct PyZor : PyDocument {};
struct PyQenEdit : PyDocument {};
struct PyZorEdit : PyDocument {};

/// The document of a result; raises where it failed.
PyDocument Adopt(Result<Document> document, bool writing);
/// As an object of the Python class that it belongs to.
pybind11::object ToObject(PyDocument document);

BinaryKind KindFrom(const std::string& word);
XmlEncoding EncodingFrom(const std::string& word);
CString PathFrom(pybind11::handle path);
/// The frame of a map, of words as "unit=1/3600000,rows=south". Raises ValueError.
CFrame FrameFrom(const QenFileInfo& info, const std::optional<std::string>& words);

void BindFrame(pybind11::module_& m);
void BindDocuments(pybind11::module_& m);

}  // namespace qenzor::python
