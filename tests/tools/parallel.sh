#!/usr/bin/env bash
# A stream is answered with the same bytes whether one process reads it or GNU parallel deals it out in blocks of any size.
# usage: parallel.sh MOKSHAPE SAMPLES
set -euo pipefail
mokshape=$(realpath "$1")
samples=$(realpath "$2")

if [[ $(parallel --version 2>/dev/null) != "GNU parallel"* ]]; then
  echo "GNU parallel is not there: install parallel" >&2
  exit 1
fi

folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
cd "$folder"
# By name: parallel hands its command to a shell, and the path may have blanks.
mkdir bin parallel
ln -s "$mokshape" bin/mokshape
export PATH=$folder/bin:$PATH PARALLEL_HOME=$folder/parallel
: >"$PARALLEL_HOME/will-cite"

features() {  # features FILE FIRST LAST
  sed -n 's/,$//; /^{"type":"Feature",/p' "$samples/$1" | sed -n "$2,$3p"
}
{
  features letters.geojson 1 30
  printf '\n \t\r\nnot a record\n{"type":"Feature","id":"p","geometry":{"type":"Point","coordinates":[1,2]}}\n'
  features lasso.geojson 1 1
  printf '{"type":"Feature","id":7,"properties":{"name":"\xc3\xa9"},"geometry":null}\r\n'
  printf '\x1e{"type":"LineString","coordinates":[[0,0],[3,4,5]]}\n\xff\xfe\n'
  features coins.geojson 1 4
  features letters.geojson 200 219
  printf '{"type":"Polygon","coordinates":[[[0,0],[2,2],[2,0],[0,2],[0,0]]]}'
} >records

check() {  # check COMMAND PARALLEL_OPTION...
  local command=$1
  shift
  rm -f joblog
  # The status is the number of jobs that had a bad record.
  parallel --pipe --keep-order --joblog joblog "$@" "mokshape $command - --keep-going" <records >dealt 2>errors || true
  cmp single dealt || { echo "mokshape $command - under parallel $*:" >&2; cat errors >&2; exit 1; }
  count=$(($(wc -l <joblog) - 1))
  echo "$command, $*: $count jobs"
}

for command in measure regularize; do
  if mokshape "$command" - --keep-going <records >single 2>errors; then
    echo "no record was refused" >&2
    exit 1
  fi
  # Blank lines have no answer, and the last line has no end.
  [ "$(wc -l <single)" -eq 61 ] || { echo "$(wc -l <single) answers, and not 61" >&2; exit 1; }
  check "$command" --block 1k
  [ "$count" -gt 10 ] || { echo "the blocks were not small" >&2; exit 1; }
  check "$command" --block 10k
  check "$command" --block 1M
  [ "$count" -eq 1 ] || { echo "the block was not large" >&2; exit 1; }
  check "$command" -N1
  [ "$count" -gt 60 ] || { echo "no job of its own for each record" >&2; exit 1; }
done
