#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "qenzor/draw/cairo_impl.h"
#include "qenzor/view/frame.h"

namespace qenzor {

/// The images of a folder, by their names: PNG, BMP and JPEG of up to 64 megapixels.
class CImages {
 public:
  struct Image {
    SurfaceHolder Surface;
    int Width = 0;
    int Height = 0;
  };

  CImages(std::string folder, WarningSink warn)
      : m_folder(std::move(folder)), m_warn(std::move(warn)) {}

  /// The image of the bare name, null when it is missing, of which the sink hears once. Pixels of
  /// the colour key's red, green and blue are transparent. Good until the next call.
  const Image* Find(std::u16string_view name, std::optional<std::uint32_t> color_key);

 private:
  Image Load(const std::string& name, std::optional<std::uint32_t> color_key) const;

  std::string m_folder;
  WarningSink m_warn;
  std::map<std::pair<std::u16string, std::optional<std::uint32_t>>, Image> m_images;
  std::size_t m_pixels = 0;  // of all that are kept
};

}  // namespace qenzor
