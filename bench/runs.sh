#!/bin/sh
# Times whole runs beside the floor program, which only reads and writes what the run must read and write.
# Usage: bench/runs.sh BUILD_FOLDER [ROUNDS] [PAGES...]; prints a table, and leaves it as BUILD_FOLDER/bench/runs.json.
set -eu
build=$(cd "$1" && pwd)
rounds=${2:-9}
shift
[ $# -eq 0 ] || shift
[ $# -gt 0 ] || set -- 1 50 500
kivsys=$build/apps/kivsys/kivsys
floor=$build/bench/floor
work=$build/bench/runs
rm -rf "$work"
mkdir -p "$work"

# seconds COMMAND...: how long it takes, its output dropped.
seconds() {
  begun=$(date +%s%N)
  "$@" >/dev/null 2>&1
  ended=$(date +%s%N)
  echo "$begun $ended" | awk '{ printf "%.4f\n", ($2 - $1) / 1e9 }'
}
median() { sort -n "$1" | sed -n "$(((rounds + 1) / 2))p"; }
range() { sort -n "$1" | sed -n '1p;$p' | paste -sd ' ' | tr ' ' '-'; }

# row NAME PAGES RUN FLOOR: a line of the table, and one of the JSON.
row() {
  ratio=$(awk -v a="$(median "$3")" -v b="$(median "$4")" 'BEGIN { printf "%.2f", a / b }')
  printf '%-8s %5s pages   %s s (%s)   floor %s s (%s)   ratio %s\n' "$1" "$2" "$(median "$3")" "$(range "$3")" \
    "$(median "$4")" "$(range "$4")" "$ratio"
  printf '{"run": "%s", "pages": %s, "seconds": %s, "floor": %s, "ratio": %s}\n' "$1" "$2" "$(median "$3")" \
    "$(median "$4")" "$ratio" >>"$work/rows"
}

for pages in "$@"; do
  group=$work/group$pages
  mkdir -p "$group" "$work/reports" "$work/fast$pages" "$work/floor$pages"
  "$build/bench/make_group" "$group" "$pages"
  cd "$work/reports"
  # Fills the cache, and gives the floor its sizes.
  find "$group" -name '*.MUS' | sort >"$work/list"
  # shellcheck disable=SC2046  # the names are ours and have no blanks
  set_list() { cat "$work/list"; }
  "$kivsys" convert --force --result "$work/fast$pages/WORK0001.MUS" $(set_list) >/dev/null 2>&1
  round=0
  while [ "$round" -lt "$rounds" ]; do
    seconds "$kivsys" analyze $(set_list) >>"$work/analyze$pages"
    seconds "$floor" read $(set_list) >>"$work/read$pages"
    rm -rf "$work/out"
    mkdir "$work/out"
    seconds "$kivsys" convert --force --result "$work/out/WORK0001.MUS" $(set_list) >>"$work/convert$pages"
    rm -rf "$work/out"
    mkdir "$work/out"
    seconds "$floor" convert "$work/fast$pages" "$work/out" $(set_list) >>"$work/write$pages"
    round=$((round + 1))
  done
  row analyze "$pages" "$work/analyze$pages" "$work/read$pages"
  row convert "$pages" "$work/convert$pages" "$work/write$pages"
done
{
  printf '[\n'
  paste -sd ',' "$work/rows" | sed 's/},{/},\n {/g; s/^/ /'
  printf ']\n'
} >"$build/bench/runs.json"
