#pragma once

#include <cstdint>
#include <functional>
#include <string_view>

#include "qenzor/core/read_options.h"

namespace qenzor {

/// What encoding the text of an XML document is in.
enum class XmlEncoding : std::uint8_t {
  kShiftJis,  ///< CP932, whatever the text declares
  kUtf8,      ///< UTF-8, whatever the text declares
  kAuto,      ///< what byte-order mark and declaration say: UTF-8, also if they say nothing, or
              ///< CP932 for any other name; in writing, kShiftJis
};

/// How XML text is read.
struct XmlReadOptions : ReadOptions {
  XmlEncoding Encoding = XmlEncoding::kShiftJis;
  /// Called with a sentence when text that was read as kShiftJis seems to be in another encoding.
  std::function<void(std::string_view)> Warn;
};

}  // namespace qenzor
