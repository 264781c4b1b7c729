#pragma once

#include <string_view>

namespace qenzor {

// The files that every page holds, as the build has put them into the library.
extern const std::string_view kPageCss;
extern const std::string_view kPageJs;
extern const std::string_view kMaplibreGlJs;
extern const std::string_view kMaplibreGlCss;
extern const std::string_view kLicenseTxt;  // MapLibre's

}  // namespace qenzor
