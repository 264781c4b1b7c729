#!/usr/bin/env bash
# newcomer.sh FOLDER CMAKE-ARGUMENT...
# Adds a data class to a copy of this tree in FOLDER: its pair of files and its row, nothing else. Then
# builds library, tool and one test program there, and runs what proves that the class is one of them.
# Twice the row is wrong first: the build must say so.
set -euo pipefail

newcomer=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
tree=$(cd "$newcomer/../.." && pwd)
copy=$1
shift
export CCACHE_NOHASHDIR=1 CCACHE_BASEDIR=$copy

rm -rf "$copy"
mkdir -p "$copy"
cp -r "$tree"/{CMakeLists.txt,LICENSE,README.md,cmake,docs,qenzor,scripts,tests,tools} "$copy"
rm -r "$copy/tests/newcomer"
mkdir "$copy/tests/circle"

cp "$newcomer"/circle_obj.{h,cpp} "$copy/qenzor/qen"
cp "$newcomer/circle_obj_in_all_forms.cpp" "$copy/tests/circle/circle_obj_test.cpp"
cp "$tree/tests/qen/qen_properties_test.cpp" "$copy/tests/circle"

cmake -S "$copy" -B "$copy/build" -DQENZOR_EXAMPLES=OFF -DQENZOR_TOOL_BUILD=ON \
  -DQENZOR_TESTS=ON "$@" >/dev/null

# fails_with WORDS: the library does not build, and the words stand in what is said about it.
fails_with() {
  if cmake --build "$copy/build" --target qenzor >"$copy/log" 2>&1 || ! grep -q "$1" "$copy/log"; then
    tail -n 40 "$copy/log"
    echo "the build should have failed with: $1"
    exit 1
  fi
}

# No row: the linker misses it.
fails_with 'RowInCatalogue<qenzor::CCircleObj>'

list=$copy/qenzor/qen/all.h
sed -i -e 's|#include "qenzor/qen/cmb_lbl_obj.h"|#include "qenzor/qen/circle_obj.h"\n&|' \
  -e 's|using QenClasses = ClassList<|&CCircleObj, |' "$list"

# An id that is taken: the catalogue's assertion says it.
sed -i 's/kChunkId = 31/kChunkId = 30/' "$copy/qenzor/qen/circle_obj.h"
fails_with 'Two classes have the same chunk id'
sed -i 's/kChunkId = 30/kChunkId = 31/' "$copy/qenzor/qen/circle_obj.h"

# No instantiation: the linker misses the class's own functions.
mv "$copy/qenzor/qen/circle_obj.cpp" "$copy/kept"
fails_with 'CCircleObj'
mv "$copy/kept" "$copy/qenzor/qen/circle_obj.cpp"

cmake --build "$copy/build" --target qenzor qenzor-tool test-circle >"$copy/log" 2>&1 ||
  { grep -E 'error|undefined' "$copy/log"; exit 1; }
"$copy/build/tests/test-circle" --gtest_brief=1
