#include <array>
#include <cstdint>
#include <fstream>
#include <iterator>

#include "qenzor/html/image_files_impl.h"
#include "qenzor/platform/code_page.h"

namespace qenzor {

namespace {

constexpr std::size_t kMaxBytes = 16 << 20;  // of one image; pages are to be sent around

struct Format {
  std::string_view Signature;
  std::string_view Type;
};
constexpr std::array<Format, 3> kFormats{
    {{"\x89PNG\r\n\x1A\n", "image/png"}, {"\xFF\xD8\xFF", "image/jpeg"}, {"BM", "image/bmp"}}};

std::string_view FindType(std::string_view bytes) {
  for (const Format& format : kFormats)
    if (bytes.starts_with(format.Signature)) return format.Type;
  return {};
}

std::string ReadBytes(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  std::string bytes(kMaxBytes + 1, '\0');
  file.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  bytes.resize(static_cast<std::size_t>(file.gcount()));
  return bytes.size() > kMaxBytes ? std::string() : bytes;
}

void AppendBase64(std::string& out, std::string_view bytes) {
  constexpr std::string_view kDigits =
      "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
  for (std::size_t i = 0; i < bytes.size(); i += 3) {
    std::uint32_t bits = 0;
    for (std::size_t k = i; k < i + 3; ++k)
      bits = bits << 8U | (k < bytes.size() ? static_cast<unsigned char>(bytes[k]) : 0U);
    for (std::size_t k = 0; k < 4; ++k)
      out += i + k <= bytes.size() ? kDigits[(bits >> (18 - 6 * k)) & 63U] : '=';
  }
}

}  // namespace

std::string CImageFiles::MakeDataUrl(std::u16string_view name) const {
  const std::string shown = EncodeText(name, TextEncoding::kUtf8);
  const bool is_name = !shown.empty() && shown != "." && shown != "..";
  const std::string bytes =
      m_folder.empty() || !is_name ? std::string() : ReadBytes(m_folder + '/' + shown);
  const std::string_view type = FindType(bytes);
  if (type.empty()) {
    m_warn("image \"" + shown + "\" is missing");
    return "null";
  }
  std::string url = "\"data:" + std::string(type) + ";base64,";
  AppendBase64(url, bytes);
  return url + '"';
}

}  // namespace qenzor
