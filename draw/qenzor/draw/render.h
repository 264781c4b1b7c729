#pragma once

#include <cstddef>
#include <cstdint>
#include <map>

#include "qenzor/draw/picture.h"
#include "qenzor/platform/file.h"

namespace qenzor {

enum class PictureFormat : std::uint8_t { kSvg, kPng, kPdf };

/// How a planned picture is drawn.
struct QENZOR_EXPORT RenderOptions {
  std::uint32_t Background = 0xFFFFFFFF;
  bool AllLabels = false;  ///< also those that cover others
  CString Images;          ///< the folder that images are looked up in; empty: all are missing
  std::map<std::uint8_t, CString> Fonts;  ///< families by font number; sans-serif otherwise
};

/// What became of a picture.
struct RenderReport {
  std::size_t LabelsLeftOut = 0;  ///< because they would have covered others
};

/// Draws a picture into a file. The same picture and options give the same bytes. Fails for
/// pictures that are too large, and when the file does not take what is written. The sink hears of
/// images and glyphs that are missing.
QENZOR_EXPORT Result<RenderReport> RenderPicture(const CPicture& picture, PictureFormat format,
                                                 const RenderOptions& options, CFile& file,
                                                 const WarningSink& warn);

}  // namespace qenzor
