#!/usr/bin/env bash
# Runs every piece of code of the page on streams, and compares what it prints with what the page shows below it.
# usage: recipes.sh PAGE MOKSHAPE SAMPLES
set -euo pipefail
page=$(realpath "$1")
mokshape=$(realpath "$2")
samples=$(realpath "$3")

for needed in parallel python3 "${CXX:-c++}"; do
  command -v "$needed" >/dev/null || { echo "$needed is not there: install parallel, python3 and a C++ compiler" >&2; exit 1; }
done

folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
mkdir "$folder/blocks" "$folder/run" "$folder/bin" "$folder/parallel"
ln -s "$mokshape" "$folder/bin/mokshape"
ln -s "$samples" "$folder/run/samples"
export PATH=$folder/bin:$PATH PARALLEL_HOME=$folder/parallel
: >"$PARALLEL_HOME/will-cite"

awk -v folder="$folder/blocks" '
  /^```/ { if (inside) { close(file); inside = 0 } else { file = sprintf("%s/%02d.%s", folder, ++count, substr($0, 4)); inside = 1
           printf "" > file }
           next }
  inside { print > file }' "$page"

cd "$folder/run"
count=0
blocks=("$folder"/blocks/*)
for ((i = 0; i < ${#blocks[@]}; i += 2)); do
  code=${blocks[i]}
  shown=${blocks[i + 1]:-}
  [[ $shown == *.text ]] || { echo "the page does not show what this prints:" >&2; cat "$code" >&2; exit 1; }
  echo "----- recipe $((++count)), ${code##*.}"
  case $code in
    *.sh) bash -euo pipefail "$code" >../out ;;
    *.python) python3 "$code" >../out ;;
    *.cpp)
      # Left of a || nothing ends at its first failure by itself.
      "${CXX:-c++}" -std=c++17 -Wall -Wextra -Werror -x c++ "$code" -o ../recipe && ../recipe >../out
      ;;
    *) echo "code in an unknown language: $code" >&2; exit 1 ;;
  esac || { echo "the recipe failed:" >&2; cat "$code" >&2; exit 1; }
  diff "$shown" ../out || { echo "the page shows something else (<) than its recipe prints (>)" >&2; exit 1; }
done
[ "$count" -ge 6 ] || { echo "only $count recipes were found" >&2; exit 1; }
