#include <gdk-pixbuf/gdk-pixbuf.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <fstream>

#include "qenzor/draw/images_impl.h"
#include "qenzor/platform/code_page.h"

namespace qenzor {

namespace {

constexpr std::uint64_t kMaxPixels = 64'000'000;      // of one image
constexpr std::uint64_t kMaxKeptPixels = 64'000'000;  // of all that are kept at once
constexpr std::uint32_t kRgb = 0xFFFFFF;

using PixbufHolder = std::unique_ptr<GdkPixbuf, FreeWith<&g_object_unref>>;

bool Fits(std::uint64_t width, std::uint64_t height) {
  return width > 0 && height > 0 && width <= kMaxPixels && height <= kMaxPixels &&
         width * height <= kMaxPixels;
}

/// Whether the file is a PNG, and of which size, from its first bytes.
std::optional<std::pair<std::uint32_t, std::uint32_t>> FindPngSize(const std::string& path) {
  constexpr std::string_view kSignature = "\x89PNG\r\n\x1A\n";
  std::array<char, 24> front{};
  std::ifstream file(path, std::ios::binary);
  if (!file.read(front.data(), front.size()) ||
      !std::string_view(front.data(), front.size()).starts_with(kSignature))
    return std::nullopt;
  const auto number = [&](std::size_t at) {
    std::uint32_t value = 0;
    for (std::size_t i = at; i < at + 4; ++i)
      value = value << 8U | static_cast<unsigned char>(front[i]);
    return value;
  };
  return std::pair(number(16), number(20));
}

SurfaceHolder NewSurface(int width, int height) {
  SurfaceHolder surface(cairo_image_surface_create(CAIRO_FORMAT_ARGB32, width, height));
  if (cairo_surface_status(surface.get()) != CAIRO_STATUS_SUCCESS) surface.reset();
  return surface;
}

SurfaceHolder LoadPng(const std::string& path) {
  SurfaceHolder png(cairo_image_surface_create_from_png(path.c_str()));
  if (cairo_surface_status(png.get()) != CAIRO_STATUS_SUCCESS) return nullptr;
  if (cairo_image_surface_get_format(png.get()) == CAIRO_FORMAT_ARGB32) return png;
  SurfaceHolder surface = NewSurface(cairo_image_surface_get_width(png.get()),
                                     cairo_image_surface_get_height(png.get()));
  if (surface == nullptr) return nullptr;
  const CairoHolder cairo(cairo_create(surface.get()));
  cairo_set_source_surface(cairo.get(), png.get(), 0, 0);
  cairo_paint(cairo.get());
  return surface;
}

/// Calls change(pixel) for each, an opaque or premultiplied 0xAARRGGBB.
template <class Change>
void ForEachPixel(cairo_surface_t* surface, Change change) {
  cairo_surface_flush(surface);
  unsigned char* row = cairo_image_surface_get_data(surface);
  const int width = cairo_image_surface_get_width(surface);
  for (int y = 0; y < cairo_image_surface_get_height(surface); ++y) {
    for (int x = 0; x < width; ++x) {
      std::uint32_t pixel = 0;
      std::memcpy(&pixel, row + 4 * static_cast<std::ptrdiff_t>(x), sizeof(pixel));
      pixel = change(x, y, pixel);
      std::memcpy(row + 4 * static_cast<std::ptrdiff_t>(x), &pixel, sizeof(pixel));
    }
    row += cairo_image_surface_get_stride(surface);
  }
  cairo_surface_mark_dirty(surface);
}

SurfaceHolder LoadBmpOrJpeg(const std::string& path) {
  int width = 0;
  int height = 0;
  const GdkPixbufFormat* format = gdk_pixbuf_get_file_info(path.c_str(), &width, &height);
  if (format == nullptr || width <= 0 || height <= 0 ||
      !Fits(static_cast<std::uint64_t>(width), static_cast<std::uint64_t>(height)))
    return nullptr;
  gchar* name = gdk_pixbuf_format_get_name(const_cast<GdkPixbufFormat*>(format));
  const std::string_view kind(name);
  const bool known = kind == "bmp" || kind == "jpeg";
  g_free(name);
  if (!known) return nullptr;
  const PixbufHolder pixbuf(gdk_pixbuf_new_from_file(path.c_str(), nullptr));
  if (pixbuf == nullptr) return nullptr;
  SurfaceHolder surface =
      NewSurface(gdk_pixbuf_get_width(pixbuf.get()), gdk_pixbuf_get_height(pixbuf.get()));
  if (surface == nullptr) return nullptr;
  const guint8* bytes = gdk_pixbuf_read_pixels(pixbuf.get());
  const std::ptrdiff_t stride = gdk_pixbuf_get_rowstride(pixbuf.get());
  const std::ptrdiff_t channels = gdk_pixbuf_get_n_channels(pixbuf.get());
  ForEachPixel(surface.get(), [&](int x, int y, std::uint32_t) {
    const guint8* pixel = bytes + y * stride + x * channels;
    const std::uint32_t alpha = channels == 4 ? pixel[3] : 255U;
    const auto part = [&](int i) { return (pixel[i] * alpha + 127U) / 255U; };
    return alpha << 24U | part(0) << 16U | part(1) << 8U | part(2);
  });
  return surface;
}

void ApplyColorKey(cairo_surface_t* surface, std::uint32_t key) {
  ForEachPixel(surface, [&](int, int, std::uint32_t pixel) {
    const std::uint32_t alpha = pixel >> 24U;
    if (alpha == 0) return pixel;
    std::uint32_t plain = pixel & kRgb;
    if (alpha < 255) {
      plain = 0;
      for (unsigned shift = 0; shift < 24; shift += 8)
        plain |= std::min(255U, (((pixel >> shift) & 255U) * 255U + alpha / 2) / alpha) << shift;
    }
    return plain == (key & kRgb) ? 0 : pixel;
  });
}

}  // namespace

const CImages::Image* CImages::Find(std::u16string_view name,
                                    std::optional<std::uint32_t> color_key) {
  const auto key = std::pair(std::u16string(name), color_key);
  auto place = m_images.find(key);
  if (place == m_images.end()) {
    if (m_pixels > kMaxKeptPixels) {
      std::erase_if(m_images, [](const auto& entry) { return entry.second.Surface != nullptr; });
      m_pixels = 0;
    }
    const std::string shown = EncodeText(name, TextEncoding::kUtf8);
    Image image = Load(shown, color_key);
    if (image.Surface == nullptr) m_warn("image \"" + shown + "\" is missing");
    m_pixels += static_cast<std::size_t>(image.Width) * static_cast<std::size_t>(image.Height);
    place = m_images.emplace(key, std::move(image)).first;
  }
  return place->second.Surface == nullptr ? nullptr : &place->second;
}

CImages::Image CImages::Load(const std::string& name,
                             std::optional<std::uint32_t> color_key) const {
  Image image;
  if (m_folder.empty() || name.empty() || name == "." || name == "..") return image;
  const std::string path = m_folder + '/' + name;
  if (const auto size = FindPngSize(path); size.has_value()) {
    if (Fits(size->first, size->second)) image.Surface = LoadPng(path);
  } else {
    image.Surface = LoadBmpOrJpeg(path);
  }
  if (image.Surface == nullptr) return image;
  if (color_key.has_value()) ApplyColorKey(image.Surface.get(), *color_key);
  image.Width = cairo_image_surface_get_width(image.Surface.get());
  image.Height = cairo_image_surface_get_height(image.Surface.get());
  return image;
}

}  // namespace qenzor
