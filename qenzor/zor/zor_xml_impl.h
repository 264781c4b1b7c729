#pragma once

#include "qenzor/core/result.h"
#include "qenzor/text/xml_options.h"
#include "qenzor/text/xml_pieces_impl.h"
#include "qenzor/zor/zor.h"

namespace qenzor {

/// The document edit that XML text makes, read from the file's position on in pieces of those
/// sizes, or why there is none.
QENZOR_EXPORT Result<CZorEdit> ReadZorXmlPieces(CFile& text, const XmlReadOptions& options = {},
                                                const XmlPieceSizes& sizes = {});

}  // namespace qenzor
