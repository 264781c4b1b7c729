#pragma once

#include <span>

#include "qenzor/check/content_impl.h"
#include "qenzor/check/reporter_impl.h"

namespace qenzor::check {

/// Walks the bytes of a document; what is wrong with their framing goes to the reporter, what they
/// hold to the listener. Returns whether reading takes the document.
bool WalkBinary(std::span<const std::uint8_t> bytes, const DocumentSchema& schema,
                CReporter& reporter, CContentListener& listener);

}  // namespace qenzor::check
