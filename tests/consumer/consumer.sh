#!/usr/bin/env bash
# consumer.sh PREFIX WORK CXX [FLAGS]: builds and runs the consumer against the library installed at
# PREFIX, once by way of find_package and once by way of pkg-config.
set -euo pipefail
prefix=$1 work=$2 cxx=$3 flags=${4-}
source=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)

rm -rf "$work"
cmake -S "$source" -B "$work" -G Ninja -DCMAKE_PREFIX_PATH="$prefix" \
  -DCMAKE_FIND_USE_PACKAGE_REGISTRY=OFF -DCMAKE_CXX_COMPILER="$cxx" -DCMAKE_CXX_FLAGS="$flags"
cmake --build "$work"
cd "$work"
./consumer
echo "find_package: built and run"

PKG_CONFIG_PATH=$(dirname "$(find "$prefix" -name qenzor.pc)")
export PKG_CONFIG_PATH
libdir=$(pkg-config --variable=libdir qenzor)
# The flags are lists of words.
# shellcheck disable=SC2046,SC2086
"$cxx" -std=c++20 $flags "$source/consumer.cpp" $(pkg-config --cflags --libs qenzor) \
  -Wl,-rpath,"$libdir" -o consumer-pkg-config
./consumer-pkg-config
echo "pkg-config $(pkg-config --modversion qenzor): built and run"

if [ -e "$prefix/bin/qenzor" ]; then
  "$prefix/bin/qenzor" --version
fi
