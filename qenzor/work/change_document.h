#pragma once

#include <string_view>

#include "qenzor/core/result.h"
#include "qenzor/platform/export.h"
#include "qenzor/work/change.h"

namespace qenzor {

/// A change document is data from a stranger: longer and deeper ones are refused.
inline constexpr std::uint64_t kMaxChangeBytes = std::uint64_t{256} << 20U;
inline constexpr std::uint32_t kMaxChangeDepth = 64;

/// The change document in a JSON text in UTF-8. A failure of the text tells line and column, one of
/// what it says begins with a JSON pointer. Whether values are right is found when it is applied.
QENZOR_EXPORT Result<ChangeDocument> ParseChanges(std::string_view json);

/// One change as a line of JSON, without a line feed.
QENZOR_EXPORT CString RenderChange(const Change& change);
/// What stands before the changes of a document of this kind, which are parted by commas, and
/// behind them.
QENZOR_EXPORT CString RenderChangesFront(ClassFamily document);
inline constexpr std::string_view kChangesEnd = "\n]}\n";
/// All of a change document, a line for each change.
QENZOR_EXPORT CString RenderChanges(const ChangeDocument& changes);

/// Turns the changes round, so that they lead back. A failure (kWrongUsage) names the change that
/// does not tell enough for that; the document is then good for nothing.
QENZOR_EXPORT Result<void> ReverseChanges(ChangeDocument& changes);

}  // namespace qenzor
