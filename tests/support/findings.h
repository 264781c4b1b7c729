#pragma once

#include <cstdint>
#include <ostream>
#include <string>
#include <vector>

#include "qenzor/check/check.h"
#include "tests/support/bytes.h"

namespace qenzor::testing {

/// A finding as tests compare it: its code and where it stands.
struct Found {
  std::string Code;
  std::uint64_t Offset = 0;
  std::string Path;

  bool operator==(const Found&) const = default;
  friend void PrintTo(const Found& found, std::ostream* out) {
    *out << "{\"" << found.Code << "\", " << found.Offset << ", \"" << found.Path << "\"}";
  }
};

/// The same of XML text.
struct XmlFound {
  std::string Code;
  std::uint32_t Line = 0;
  std::uint32_t Column = 0;
  std::string Path;

  bool operator==(const XmlFound&) const = default;
  friend void PrintTo(const XmlFound& found, std::ostream* out) {
    *out << "{\"" << found.Code << "\", " << found.Line << ", " << found.Column << ", \""
         << found.Path << "\"}";
  }
};

/// Keeps what it is told.
class FoundSink : public CFindingSink {
 public:
  bool Take(const Finding& finding) override {
    All.push_back({CodeText(*finding.Kind), finding.Offset, RenderPath(finding.Path)});
    Xml.push_back({All.back().Code, finding.Line, finding.Column, All.back().Path});
    Reasons.push_back(finding.Reason);
    return true;
  }

  std::vector<Found> All;
  std::vector<XmlFound> Xml;  ///< the same by line and column
  std::vector<std::string> Reasons;
};

/// A file info in which there is nothing to find: a mesh of two segments.
inline Bytes GoodQenInfo() {
  return Bytes("QENMAP\r\n\x1A")
      .U16(0x4041)
      .U16(1)
      .U16(0)
      .U32(5)
      .U8(1)
      .I32(0)
      .I32(0)
      .I32(2000)
      .I32(1000)
      .U16(2)
      .U16(1)
      .U16(1);
}
inline Bytes GoodZorInfo() { return Bytes("ZORDRW\r\n\x1A").U16(0x4041).U16(1).U16(0).U32(5); }

inline std::vector<Found> FindingsOf(const Bytes& document, BinaryKind kind,
                                     const CheckOptions& options = {}) {
  FoundSink sink;
  CheckBinary({document.data(), document.size()}, kind, options, sink);
  return sink.All;
}

}  // namespace qenzor::testing
