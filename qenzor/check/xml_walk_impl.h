#pragma once

#include <string_view>

#include "qenzor/check/content_impl.h"
#include "qenzor/check/reporter_impl.h"
#include "qenzor/core/result.h"

namespace qenzor::check {

/// Walks XML text that the parser takes. What reading drops, changes or misses in it goes to the
/// reporter, what it holds to the listener.
void WalkXml(std::string_view text, const DocumentSchema& schema, CReporter& reporter,
             CContentListener& listener);

/// Reports why the parser refuses the text, or why its root is not the document's: at the place of
/// the error, or where elements first go wrong, with the element that is open there.
void ReportXmlRefusal(std::string_view text, const DocumentSchema& schema, const Failure& failure,
                      CReporter& reporter);

}  // namespace qenzor::check
