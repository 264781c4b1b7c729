#pragma once

#include <cstdint>
#include <functional>
#include <string_view>

#include "qenzor/platform/standard.h"

namespace qenzor {

/// What encoding the text of an XML document is in.
enum class XmlEncoding : std::uint8_t {
  kShiftJis,  ///< CP932, whatever the text declares
  kUtf8,      ///< UTF-8, whatever the text declares
  kAuto,      ///< what byte-order mark and declaration say: UTF-8, also if they say nothing, or
              ///< CP932 for any other name; in writing, kShiftJis
};

/// How XML text is read.
struct XmlReadOptions {
  XmlEncoding Encoding = XmlEncoding::kShiftJis;
  /// Hears a sentence when a text that has been read as kShiftJis seems to be in another encoding.
  std::function<void(std::string_view)> Warn;
};

}  // namespace qenzor
