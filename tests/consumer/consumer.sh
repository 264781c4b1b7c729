#!/usr/bin/env bash
# consumer.sh PREFIX WORK CXX [FLAGS]: builds and runs the consumer against the library installed at
# PREFIX by way of find_package, as CMake of today and of 3.16 gets it, and by way of pkg-config.
set -euo pipefail
prefix=$1 work=$2 cxx=$3 flags=${4-}
source=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
rm -rf "$work"

# configure FOLDER OPTION...
configure() {
  cmake -S "$source" -B "$work/$1" -G Ninja -DCMAKE_PREFIX_PATH="$prefix" \
    -DCMAKE_FIND_USE_PACKAGE_REGISTRY=OFF -DCMAKE_CXX_COMPILER="$cxx" -DCMAKE_CXX_FLAGS="$flags" \
    "${@:2}"
}

configure today
cmake --build "$work/today"
cd "$work/today"
./consumer
./elements
echo "find_package: built and run"

configure old -DPRETENDED_CMAKE_VERSION=3.16.0
cmake --build "$work/old" --target elements
echo "find_package of CMake 3.16: built"

# refused TEXT OPTION...: the configuration fails and says so.
refused() {
  rm -rf "$work/refused"
  ! configure refused "${@:2}" >"$work/refused.log" 2>&1 && grep -q "$1" "$work/refused.log" ||
    { cat "$work/refused.log"; echo "expected a refusal with: $1"; exit 1; }
}
refused 'needs CMake 3.16 or newer' -DPRETENDED_CMAKE_VERSION=3.15.7
refused 'component nonsense' -DWANTED_COMPONENT=nonsense
for component in draw html; do
  if [ -n "$(find "$prefix" -name "libqenzor-$component.so")" ]; then
    configure "$component" -DWANTED_COMPONENT=$component
  else
    refused "(QENZOR_${component^^})" -DWANTED_COMPONENT=$component
  fi
done

PKG_CONFIG_PATH=$(dirname "$(find "$prefix" -name qenzor.pc)")
export PKG_CONFIG_PATH
libdir=$(pkg-config --variable=libdir qenzor)
# with_pkg_config PACKAGE PROGRAM: the flags are lists of words.
with_pkg_config() {
  # shellcheck disable=SC2046,SC2086
  "$cxx" -std=c++20 $flags -DFOUND_VERSION="\"$(pkg-config --modversion "$1")\"" \
    "$source/$2.cpp" $(pkg-config --cflags --libs "$1") -Wl,-rpath,"$libdir" -o "$2-pkg-config"
  "./$2-pkg-config"
}
with_pkg_config qenzor consumer
with_pkg_config qenzor-tinyxml elements
echo "pkg-config $(pkg-config --modversion qenzor): built and run"

documents=$prefix/share/doc/qenzor
for document in LICENSE README.md CHANGELOG.md docs/file-format.md; do
  [ -s "$documents/$document" ] || { echo "not installed: $document"; exit 1; }
done

if [ -e "$prefix/bin/qenzor" ]; then
  [ "$("$prefix/bin/qenzor" --version)" = "qenzor $(pkg-config --modversion qenzor)" ]
fi
