#include "documents_impl.h"

namespace qenzor::python {

std::unique_ptr<Document> NewEdit(BinaryKind kind) {
  const auto make = []<class Kind>(Kind /*kind*/) -> std::unique_ptr<Document> {
    auto edit = std::make_unique<typename Kind::Edit>();
    static_cast<typename Kind::Info&>(*edit) = Kind::DefaultInfo();
    return std::unique_ptr<Document>(new EditDocument<Kind>(std::move(edit)));
  };
  return kind == BinaryKind::kQen ? make(QenKind{}) : make(ZorKind{});
}

void RaiseFailure(const Failure& failure, bool writing) {
  if (failure.Kind == FailureKind::kOutOfMemory) {
    PyErr_NoMemory();
    throw PythonError{};
  }
  const auto module = Ref<>::New(PyImport_ImportModule("qenzor._errors"));
  const auto type =
      Ref<>::New(PyObject_GetAttrString(module.Get(), writing ? "WriteError" : "ReadError"));
  const auto none_or = [](bool is_there, PyObject* value) {
    if (is_there) return Ref<>::New(value);
    Py_XDECREF(value);
    return Ref<>::Share(Py_None);
  };
  const auto text = [&](const CString& value) {
    return none_or(!value.empty(), PyUnicode_DecodeFSDefaultAndSize(
                                       value.data(), static_cast<Py_ssize_t>(value.size())));
  };
  const Ref<> reason = text(failure.Reason);
  const Ref<> path = text(failure.Path);
  const Ref<> chunk_path = text(failure.ChunkPath);
  const Ref<> offset =
      none_or(failure.Offset.has_value(), PyLong_FromUnsignedLongLong(failure.Offset.value_or(0)));
  const Ref<> line = none_or(failure.Line != 0, PyLong_FromUnsignedLong(failure.Line));
  const Ref<> column = none_or(failure.Line != 0, PyLong_FromUnsignedLong(failure.Column));
  const auto error =
      Ref<>::New(PyObject_CallFunctionObjArgs(type.Get(), reason.Get(), path.Get(), offset.Get(),
                                              line.Get(), column.Get(), chunk_path.Get(), nullptr));
  PyErr_SetObject(type.Get(), error.Get());
  throw PythonError{};
}

}  // namespace qenzor::python
