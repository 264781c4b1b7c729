#!/usr/bin/env bash
# install.sh BUILD PREFIX: installs the build, then moves the tree to PREFIX. What is tested there
# would not work if an absolute path had been installed.
set -euo pipefail
build=$1 prefix=$2

rm -rf "$prefix" "$prefix.staged"
cmake --install "$build" --prefix "$prefix.staged"
mv "$prefix.staged" "$prefix"
