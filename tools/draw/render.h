#pragma once

#include "commands.h"
#include "qenzor/draw/render.h"

namespace tool {

/// The format that a picture's name asks for.
std::optional<qenzor::PictureFormat> FindFormat(const std::string& path);

int RunRender(const Options& options);

}  // namespace tool
