# How every target of this project is compiled: C++20, the project's warnings, and the instruments
# of the fuzz build.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)

# An untyped build would be an unoptimised one: nobody who just runs cmake wants that.
if(PROJECT_IS_TOP_LEVEL AND NOT CMAKE_BUILD_TYPE AND NOT CMAKE_CONFIGURATION_TYPES)
  set(CMAKE_BUILD_TYPE Release CACHE STRING "Debug, Release, RelWithDebInfo or MinSizeRel" FORCE)
endif()

if(PROJECT_IS_TOP_LEVEL AND NOT MSVC)
  add_compile_options(-Wall -Wextra -Wpedantic -Wconversion -Wshadow)
  # Up to version 12, g++ sees an overlap in every "literal" + std::string that it inlines.
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
    add_compile_options(-Wno-restrict)
  endif()
endif()

if(QENZOR_FUZZ)
  if(NOT CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
    message(FATAL_ERROR "QENZOR_FUZZ needs clang: try cmake --preset fuzz")
  endif()
  set(QENZOR_FUZZ_INSTRUMENTS fuzzer-no-link,address,undefined
      CACHE STRING "What the fuzz build compiles into the library")
  add_compile_options(-fsanitize=${QENZOR_FUZZ_INSTRUMENTS} -fno-sanitize-recover=all
                      -fno-omit-frame-pointer)
  add_link_options(-fsanitize=address,undefined)
endif()
