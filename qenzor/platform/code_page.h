#pragma once

#include <cstdint>
#include <string_view>

#include "qenzor/platform/export.h"
#include "qenzor/platform/strings.h"

namespace qenzor {

/// Conversion between UTF-16 and the narrow code page, CP932 (the Shift_JIS variant of Windows).
///
/// Only pairs that convert to each other are known: no look-alike is substituted, so text that
/// narrows without a '?' widens to itself again. All functions may be called from several threads.
/// They fail only when memory runs out, and need nothing from the system.

/// Appends `wide` to `out`, one '?' for each UTF-16 unit that the code page lacks (two for a
/// surrogate pair). When memory runs out, `out` is unchanged.
QENZOR_EXPORT void AppendNarrow(CString& out, std::u16string_view wide);

/// `wide` in the code page, with '?' as in AppendNarrow.
QENZOR_EXPORT CString NarrowText(std::u16string_view wide);

/// `narrow` as UTF-16. A byte that begins no character becomes U+FFFD, and reading goes on with the
/// byte after it.
QENZOR_EXPORT CStringW WidenText(std::string_view narrow);

/// How text is put into bytes.
enum class TextEncoding : std::uint8_t {
  kCodePage,
  kUtf8,
};

/// `wide` in that encoding. In UTF-8 only half a surrogate pair is lost, to U+FFFD.
QENZOR_EXPORT CString EncodeText(std::u16string_view wide, TextEncoding encoding);

/// The inverse. In UTF-8 each byte that is no part of a character becomes U+FFFD.
QENZOR_EXPORT CStringW DecodeText(std::string_view bytes, TextEncoding encoding);

/// The same with UTF-8, which terminals and most libraries speak.
inline CString ToUtf8(std::u16string_view wide) { return EncodeText(wide, TextEncoding::kUtf8); }
inline CStringW FromUtf8(std::string_view utf8) { return DecodeText(utf8, TextEncoding::kUtf8); }

}  // namespace qenzor
