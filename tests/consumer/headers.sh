#!/usr/bin/env bash
# headers.sh PREFIX CXX: every header installed at PREFIX compiles alone, twice in a row and without
# a warning, and needs nothing but the standard library and its own kind. Under an older standard
# the first error says which one it takes.
set -euo pipefail
export include=$1/include cxx=$2

cd "$include"
mapfile -t headers < <(find qenzor -name '*.h' | sort)
[ "${#headers[@]}" -gt 0 ] || { echo "no header is installed"; exit 1; }

if grep -nE '^ *# *include' "${headers[@]}" | grep -vE '<[a-z0-9_]+>|"qenzor/[a-z0-9_/]+\.h"'; then
  echo "the headers above include what their users may not have"
  exit 1
fi

check() {
  printf '#include "%s"\n#include "%s"\n' "$1" "$1" |
    "$cxx" -std=c++20 -fsyntax-only -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Werror \
      -I "$include" -x c++ - || { echo "does not compile alone: $1"; return 1; }
}
export -f check
printf '%s\0' "${headers[@]}" | xargs -0 -P "$(nproc)" -I{} bash -c 'check {}'
echo "${#headers[@]} headers compile alone"

first=$(echo '#include "qenzor/qen/qen.h"' |
  "$cxx" -std=c++17 -fsyntax-only -I "$include" -x c++ - 2>&1 | grep -m 1 'error:' || true)
[[ $first == *"C++20"* ]] || { echo "C++17 is first told: $first"; exit 1; }
