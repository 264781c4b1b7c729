#pragma once

#include <string>
#include <string_view>
#include <utility>

#include "qenzor/view/frame.h"

namespace qenzor {

/// The images of a folder as a page carries them.
class CImageFiles {
 public:
  CImageFiles(std::string folder, const WarningSink& warn)
      : m_folder(std::move(folder)), m_warn(warn) {}

  /// The image of the bare name as JSON: the text of a data: URL, or null when it is missing, of
  /// which the sink hears.
  std::string MakeDataUrl(std::u16string_view name) const;

 private:
  std::string m_folder;
  const WarningSink& m_warn;
};

}  // namespace qenzor
