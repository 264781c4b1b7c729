#include "qenzor/core/result.h"

#include <exception>

namespace qenzor {

CString Failure::Describe() const {
  CString text;
  const auto add = [&text](const CString& part) {
    if (!part.empty()) text += (text.empty() ? "" : ": ") + part;
  };
  add(Path);
  if (Offset.has_value()) add("byte " + std::to_string(*Offset));
  if (Line != 0) add("line " + std::to_string(Line) + ", column " + std::to_string(Column));
  add(ChunkPath);
  add(Reason);
  return text;
}

CFailureException::CFailureException(Failure failure)
    : std::runtime_error(failure.Describe()),
      m_failure(std::make_shared<const Failure>(std::move(failure))) {}

CFailureException::~CFailureException() = default;

Failure OutOfMemory(const CString& path) noexcept {
  Failure failure;
  failure.Kind = FailureKind::kOutOfMemory;
  failure.Reason = "out of memory";  // so short that it takes none
  try {
    failure.Path = path;
  } catch (const std::exception&) {
    failure.Path.clear();
  }
  return failure;
}

}  // namespace qenzor
