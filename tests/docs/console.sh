#!/usr/bin/env bash
# console.sh PAGE PROGRAMS TOOL FOLDER: runs the commands that the console blocks of the page show, one
# after another, and compares what they print with what stands below them there. All must succeed.
set -euo pipefail
page=$1 programs=$2 tool=$3 folder=$4

rm -rf "$folder"
mkdir -p "$folder"
ln -s "$(dirname "$0")/../../samples" "$folder/samples"
export PATH=$programs:$(dirname "$tool"):$PATH
cd "$folder"

awk '/^```/ { inside = $0 == "```console"; next } inside' "$page" >shown
grep -q '^[$] ' shown || { echo "$page shows no command"; exit 1; }
while IFS= read -r line; do
  printf '%s\n' "$line"
  bash -c "${line#'$ '}" 2>&1 </dev/null || echo "exit status $?"
done < <(grep '^[$] ' shown) >printed
diff -u shown printed
