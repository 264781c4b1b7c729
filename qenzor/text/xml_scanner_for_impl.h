#pragma once

#include "qenzor/text/xml_options.h"
#include "qenzor/text/xml_scanner_impl.h"

namespace qenzor {

/// A scanner at the front of a text that is read in that encoding.
inline CXmlScanner ScannerFor(XmlEncoding encoding) {
  using Assumed = CXmlScanner::Assumed;
  if (encoding == XmlEncoding::kShiftJis) return {};
  return CXmlScanner(encoding == XmlEncoding::kUtf8 ? Assumed::kUtf8 : Assumed::kUtf8Undeclared);
}

}  // namespace qenzor
