#pragma once

#include <utility>

#include "qenzor/core/result.h"

namespace qenzor::work {

/// What is wrong with what a change document says, at a JSON pointer.
inline Failure ContentFailure(const CString& pointer, const CString& reason) {
  Failure failure;
  failure.Kind = FailureKind::kWrongUsage;
  failure.Reason = pointer.empty() ? reason : pointer + ": " + reason;
  return failure;
}

inline Failure NoMemory() {
  Failure failure;
  failure.Kind = FailureKind::kOutOfMemory;
  failure.Reason = "the memory does not suffice";
  return failure;
}

}  // namespace qenzor::work
