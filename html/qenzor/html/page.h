#pragma once

#include <cstdint>
#include <map>

#include "qenzor/core/result.h"
#include "qenzor/platform/file.h"
#include "qenzor/qen/qen.h"
#include "qenzor/view/filters.h"
#include "qenzor/view/frame.h"
#include "qenzor/zor/zor.h"

namespace qenzor {

/// What a web page is to show.
struct QENZOR_EXPORT HtmlContent {
  const CQen* Map = nullptr;
  const CZor* Drawing = nullptr;  ///< may be null: everything is drawn plainly
  FrameOptions Frame;
  Filters Which;
  bool DefaultStyle = false;  ///< draw plainly what has no draw attribute
  bool AllLabels = false;     ///< also those that cover others
  CString Title;              ///< UTF-8
  CString Images;             ///< the folder that images are looked up in; empty: all are missing
  std::map<std::uint8_t, CString> Fonts;  ///< families by font number; sans-serif otherwise
};

/// Writes one page to look around in, which needs nothing from elsewhere. The same content gives
/// the same bytes. Fails for a map whose coordinates are not degrees, and when the file does not
/// take what is written. The sink hears of what is odd in the documents and of what a page does not
/// show, each thing once.
QENZOR_EXPORT Result<void> WriteHtmlPage(const HtmlContent& content, CFile& file,
                                         const WarningSink& warn);

}  // namespace qenzor
