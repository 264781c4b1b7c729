#pragma once

/// Says which standard the headers are written in, before a compiler that was asked for an older
/// one stumbles over their contents.
#if defined(_MSVC_LANG) ? _MSVC_LANG < 202002L : __cplusplus < 202002L
#error "qenzor needs C++20: compile with -std=c++20, or set CMAKE_CXX_STANDARD to 20"
#endif
