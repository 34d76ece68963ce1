#!/usr/bin/env bash
# Builds the program of shapes, plain and optimised, against stripped copies of the libraries, and compares what gdb shows with
# the committed texts; once more with the printers at each of the places where gdb may find them, and for a core file.
# usage: tests/gdb/run.sh --library FILE... --include DIR --types FILE [--compiler NAME...] [--update]
#   --library    libmokcntr14_x64.so.* and the libraries below it, each with its full version
#   --include    the folder of foundation/ and cntr/
#   --types      what debug/gdb/types.cpp was compiled to
#   --compiler   what the program is built with; g++ and clang++ unless said
#   --update     writes the texts, as the first program has them, instead of comparing
set -euo pipefail
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
printers=$here/../../debug/gdb/mokcntr14_printers.py

libraries=() compilers=() include='' types='' update=''
while [ $# -gt 0 ]; do
  case "$1" in
    --library) libraries+=("$2"); shift 2 ;;
    --include) include=$2; shift 2 ;;
    --types) types=$2; shift 2 ;;
    --compiler) compilers+=("$2"); shift 2 ;;
    --update) update=yes; shift ;;
    *) sed -n '4,9s/^# //p' "$0" >&2; exit 2 ;;
  esac
done
[ ${#compilers[@]} -gt 0 ] || compilers=(g++ clang++)
for program in gdb "${compilers[@]}"; do
  command -v "$program" >/dev/null || { echo "$0: $program is needed, and not installed" >&2; exit 1; }
done

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
mkdir -p "$work/lib/mokcntr14"
cp "$types" "$work/lib/mokcntr14/types.o"
for library in "${libraries[@]}"; do
  name=$(basename "$library")
  strip -o "$work/lib/$name" "$library"
  ln -s "$name" "$work/lib/$(objdump -p "$library" | sed -n 's/ *SONAME *//p')"
  ln -s "$name" "$work/lib/${name%%.so.*}.so"
done
real=$(cd "$work/lib" && pwd -P)/$(cd "$work/lib" && ls libmokcntr14_x64.so.*.*.*)

# ask <script> <gdb argument>...: what gdb shows, without the addresses that differ from run to run.
ask() {
  local script=$1
  shift
  gdb -nx -batch "$@" -x "$here/$script.gdb" >"$work/shown" 2>&1 </dev/null ||
    { cat "$work/shown" >&2; echo "$script.gdb: gdb failed" >&2; exit 1; }
  sed -e '1,/^---$/d' -e 's/0x7f[0-9a-f]\{10\}/ADDRESS/g' "$work/shown"
}

failed=0
# check <script> <what> <gdb argument>...
check() {
  local script=$1 what=$2
  shift 2
  ask "$script" "$@" >"$work/$script.txt"
  if [ -n "$update" ]; then
    cp "$work/$script.txt" "$here/$script.txt"
    update=''
  elif ! diff -u "$here/$script.txt" "$work/$script.txt"; then
    echo "$script, $what: not as expected" >&2
    failed=1
  else
    echo "$script, $what: as expected"
  fi
}

cp "$printers" "$real-gdb.py"
beside=(-iex "add-auto-load-safe-path $work/lib")
again=$update
for compiler in "${compilers[@]}"; do
  for level in -O0 -O2; do
    program=$work/shapes-$(basename "$compiler")$level
    "$compiler" -std=c++17 -g "$level" "-I$include" "$here/shapes.cpp" -o "$program" "-L$work/lib" "-Wl,-rpath,$work/lib" \
      -lmokcntr14_x64 -lmokip14_x64 -lmokdispc14_x64 -lmokstd14_x64
    for script in whole corrupted; do
      update=$again
      check "$script" "$(basename "$compiler") $level" "${beside[@]}" "$program"
    done
    again=''
  done
done
first=$work/shapes-$(basename "${compilers[0]}")-O0

gdb -nx -batch "${beside[@]}" -ex 'break shown::seeShapes' -ex run -ex "generate-core-file $work/core" "$first" >/dev/null 2>&1 \
  </dev/null
ask core "${beside[@]}" "$first" "$work/core" >"$work/core.txt"
grep -qF 'closed contour, label 7, 4 vertices = {(0, 0), (4, 0), (4, 4), (0, 4)}' "$work/core.txt" ||
  { cat "$work/core.txt" >&2; echo "core file: not as expected" >&2; failed=1; }

# Where a system keeps them, apart from the libraries.
mkdir -p "$work/auto-load$(dirname "$real")"
mv "$real-gdb.py" "$work/auto-load$real-gdb.py"
check whole "from a folder of scripts" -iex "add-auto-load-scripts-directory $work/auto-load" \
  -iex "add-auto-load-safe-path $work/auto-load" "$first"
check whole "sourced by hand" -ex "source $work/auto-load$real-gdb.py" "$first"

# With neither printers nor types the contour is not shown as above: what is compared comes from them.
plain=$(gdb -nx -batch -ex 'break shown::seeShapes' -ex run -ex 'print shapes.contour' "$first" 2>&1 </dev/null) || true
if [[ $plain != *'$1 ='* || $plain == *'closed contour'* ]]; then
  echo "$plain" >&2
  echo "without printers: not as expected" >&2
  failed=1
fi
exit "$failed"
