#include "qenzor/core/result.h"

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

}  // namespace qenzor
