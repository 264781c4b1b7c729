// The module _qenzor: what the package qenzor is made of.

#include <pybind11/pybind11.h>
#include <pybind11/stl.h>

#include "arrays.h"
#include "binding.h"
#include "qenzor/version.h"
#include "sequence.h"
#include "values.h"

namespace py = pybind11;

namespace qenzor::python {

PyDocument Adopt(Result<Document> document, bool writing) {
  if (!document) RaiseFailure(document.GetFailure(), writing);
  Document* const taken = document.Take().release();
  return PyDocument{StoreRef<Store>(&taken->GetStore()), taken};
}

py::object ToObject(PyDocument document) {
  const bool is_qen = document.Of->GetKind() == BinaryKind::kQen;
  if (document.Owner->IsEditable())
    return is_qen ? py::cast(PyQenEdit{std::move(document)})
                  : py::cast(PyZorEdit{std::move(document)});
  return is_qen ? py::cast(PyQen{std::move(document)}) : py::cast(PyZor{std::move(document)});
}

BinaryKind KindFrom(const std::string& word) {
  if (word == "qen") return BinaryKind::kQen;
  if (word == "zor") return BinaryKind::kZor;
  throw py::value_error("the kind is qen or zor, not " + word);
}

XmlEncoding EncodingFrom(const std::string& word) {
  if (word == "shift_jis") return XmlEncoding::kShiftJis;
  if (word == "utf-8") return XmlEncoding::kUtf8;
  if (word == "auto") return XmlEncoding::kAuto;
  throw py::value_error("the encoding is shift_jis, utf-8 or auto, not " + word);
}

CString PathFrom(py::handle path) {
  PyObject* bytes = nullptr;
  if (PyUnicode_FSConverter(path.ptr(), &bytes) == 0) throw py::error_already_set();
  const auto kept = py::reinterpret_steal<py::bytes>(bytes);
  return CString(kept);
}

namespace {

/// What a caller names as the place of a document: a path, bytes, or a file that is open.
class CSource {
 public:
  explicit CSource(const py::object& from) {
    if (PyObject_CheckBuffer(from.ptr()) != 0) {
      Take(from);
    } else if (py::hasattr(from, "read")) {
      const py::object content = from.attr("read")();
      if (PyObject_CheckBuffer(content.ptr()) == 0)
        throw py::type_error("the file gives text: open it in binary mode");
      Take(content);
    } else {
      m_source.Path = PathFrom(from);
    }
  }

  const Source& Get() const { return m_source; }

 private:
  void Take(const py::object& buffer) {
    // What nobody changes while it is read; bytes are taken as they are.
    m_bytes = Steal(PyBytes_CheckExact(buffer.ptr()) != 0 ? buffer.inc_ref().ptr()
                                                          : PyBytes_FromObject(buffer.ptr()));
    m_source.Bytes = {reinterpret_cast<const std::uint8_t*>(PyBytes_AS_STRING(m_bytes.ptr())),
                      static_cast<std::size_t>(PyBytes_GET_SIZE(m_bytes.ptr()))};
  }

  Source m_source;
  py::object m_bytes;
};

ReadChoice ChoiceFrom(const std::optional<std::string>& kind, const std::string& encoding) {
  ReadChoice choice;
  if (kind.has_value()) choice.Kind = KindFrom(*kind);
  choice.Encoding = EncodingFrom(encoding);
  return choice;
}

py::object Read(const py::object& from, const std::optional<std::string>& kind,
                const std::string& encoding) {
  const ReadChoice choice = ChoiceFrom(kind, encoding);
  const CSource source(from);
  auto document = [&] {
    const WithoutLock without(nullptr);
    return ReadAny(source.Get(), choice);
  }();
  return ToObject(Adopt(std::move(document), false));
}

class CFindings final : public CFindingSink {
 public:
  bool Take(const Finding& finding) override {
    All.push_back({finding.Kind, finding.Offset, finding.Line, finding.Column,
                   RenderPath(finding.Path), finding.GetSegment(), finding.GetLayer(),
                   finding.GetZId(), finding.GetIndex(), finding.Reason});
    return true;
  }

  struct Kept {
    const FindingKind* Kind;
    std::uint64_t Offset;
    std::uint32_t Line;
    std::uint32_t Column;
    CString Path;
    std::optional<std::uint64_t> Segment;
    std::optional<std::uint64_t> Layer;
    std::optional<std::uint64_t> ZId;
    std::optional<std::uint64_t> Index;
    CString Reason;
  };
  std::vector<Kept> All;
};

/// Text that may quote a file's own bytes.
py::object TextFrom(const CString& text) {
  return Steal(
      PyUnicode_DecodeUTF8(text.data(), static_cast<py::ssize_t>(text.size()), "backslashreplace"));
}

py::list Check(const py::object& from, const std::optional<std::string>& kind,
               std::uint64_t max_details, const std::vector<std::string>& skip,
               bool first_error_only, bool round_trip) {
  CheckOptions options;
  options.MaxDetails = max_details;
  options.FirstErrorOnly = first_error_only;
  options.RoundTrip = round_trip;
  for (const std::string& word : skip) {
    const FindingKind* const skipped = FindFindingKind(word);
    if (skipped == nullptr) throw py::value_error("there is no kind of finding " + word);
    options.Skipped.insert(skipped->Code);
  }
  const ReadChoice choice = ChoiceFrom(kind, "shift_jis");
  const CSource source(from);
  CFindings findings;
  auto content = [&] {
    const WithoutLock without(nullptr);
    auto loaded = LoadAny(source.Get(), choice);
    if (!loaded) return loaded;
    if (loaded->IsXml)
      CheckXml({reinterpret_cast<const char*>(loaded->Bytes.data()), loaded->Bytes.size()},
               loaded->Kind, options, findings);
    else
      CheckBinary(loaded->Bytes, loaded->Kind, options, findings);
    return loaded;
  }();
  if (!content) RaiseFailure(content.GetFailure(), false);
  py::list list;
  for (const CFindings::Kept& one : findings.All)
    list.append(py::make_tuple(
        SeverityName(one.Kind->Severity), CodeText(*one.Kind), one.Kind->Name,
        one.Line == 0 ? py::object(py::int_(one.Offset)) : py::none(),
        one.Line == 0 ? py::none() : py::object(py::int_(one.Line)),
        one.Line == 0 ? py::none() : py::object(py::int_(one.Column)), TextFrom(one.Path),
        one.Segment, one.Layer, one.ZId, one.Index, TextFrom(one.Reason)));
  return list;
}

}  // namespace

}  // namespace qenzor::python

PYBIND11_MODULE(_qenzor, m) {
  using namespace qenzor::python;
  py::register_exception_translator([](std::exception_ptr thrown) {
    try {
      if (thrown) std::rethrow_exception(thrown);
    } catch (const PythonError&) {
      // The Python error is set.
    }
  });
  try {
    InitValues();
    InitClasses(m.ptr());
    AddFieldListType(m.ptr());
    InitWalk(m.ptr());
  } catch (const PythonError&) {
    throw py::error_already_set();
  }
  m.attr("__version__") = QENZOR_VERSION;
  BindFrame(m);
  BindDocuments(m);
  m.def("read", &Read, py::arg("source"), py::arg("kind") = py::none(),
        py::arg("encoding") = "shift_jis");
  m.def("check", &Check, py::arg("source"), py::arg("kind") = py::none(),
        py::arg("max_details") = std::uint64_t{1000}, py::arg("skip") = std::vector<std::string>(),
        py::arg("first_error_only") = false, py::arg("round_trip") = false);
}
