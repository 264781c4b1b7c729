#pragma once

#include <string>
#include <string_view>

#include "qenzor/core/result.h"
#include "qenzor/document.h"
#include "qenzor/qen/qen.h"

namespace qenzor {

// Map project as XML text, in memory and in files. Text is read in pieces: beside the edit form
// that it makes, little more of it is in memory than its longest value. A failure to read tells
// line and column.

/// The document edit that the XML in the file at a path, in bytes, or in an open file from its
/// position on makes. What the caller's file throws reaches him.
QENZOR_EXPORT Result<CQenEdit> ReadQenXml(const CDocumentSource& source,
                                          const XmlReadOptions& options = {});
/// The same from text.
QENZOR_EXPORT Result<CQenEdit> ParseQenXml(std::string_view text,
                                           const XmlReadOptions& options = {});

/// The document, which is only read, as XML text.
QENZOR_EXPORT Result<std::string> QenToXml(CQen& document,
                                           XmlEncoding encoding = XmlEncoding::kShiftJis);
/// The same at a file's position.
QENZOR_EXPORT Result<void> WriteQenXml(CFile& file, CQen& document,
                                       XmlEncoding encoding = XmlEncoding::kShiftJis);

}  // namespace qenzor
