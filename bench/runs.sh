#!/bin/sh
# Times whole runs beside the floor program, which only reads and writes what the run must read and write.
# Usage: bench/runs.sh BUILD_FOLDER [ROUNDS] [PAGES...]; without PAGES groups of 1, 50, 500 and, where the disk has
# room for it, 5000 pages. Prints a table, and leaves it in BUILD_FOLDER/bench: runs.tsv, runs.json.
set -eu
here=$(cd "$(dirname "$0")" && pwd)
build=$(cd "$1" && pwd)
rounds=${2:-9}
shift
[ $# -eq 0 ] || shift
[ $# -gt 0 ] || set -- 1 50 500 5000
kivsys=$build/apps/kivsys/kivsys
floor=$build/bench/floor
timed=$build/bench/timed
work=$build/bench/runs
table=$build/bench/runs.tsv
caches=/proc/sys/vm/drop_caches
largestForLiteral=50
manyPages=1000
rm -rf "$work"
mkdir -p "$work/in"
printf 'run\tpages\trounds\tseconds\tlowest\thighest\tfloor\tlowest\thighest\tratio\tKB\tCPU\tfloor CPU\n' >"$table"

# group PAGES: makes the group, its names file, and what the floor needs.
group() {
  group=$work/group$1
  mkdir -p "$group"
  "$build/bench/make_group" "$group" "$1"
  for page in "$group"/*.MUS; do
    printf '%s 1\r\n' "$page"
  done | tr / '\\' >"$work/names.txt"
}

# convert FOLDER: converts the group into a new folder, prints seconds and memory. The folders stay until the group is
# done with: a disk from which files have just been taken is slow to take others.
convert() {
  mkdir -p "$work/$1"
  "$timed" 1 "$kivsys" convert --force --names "$work/names.txt" --result "$work/$1/WORK0001.MUS"
}
# rewrite FOLDER: what the floor needs to write as much.
rewrite() {
  mkdir -p "$work/$1"
  "$timed" 1 "$floor" convert "$work/results" "$work/$1" "$group"/*.MUS
}
analyze() { "$timed" 1 "$kivsys" analyze --names "$work/names.txt"; }
readOnly() { "$timed" 1 "$floor" read "$group"/*.MUS; }
dropCaches() {
  sync
  echo 3 >"$caches"
}

# of COLUMN FILE, then what is wanted: the median, the lowest or the highest.
sorted() { awk -v column="$1" '{ print $column }' "$2" | sort -n; }
median() { sorted "$1" "$2" | awk '{ all[NR] = $1 } END { print all[int((NR + 1) / 2)] }'; }
lowest() { sorted "$1" "$2" | head -n 1; }
highest() { sorted "$1" "$2" | tail -n 1; }

# row RUN PAGES: adds the line of what lies in $work/run and, unless the run has no floor, in $work/floor.
row() {
  taken=$work/run
  printf '%s\t%s\t%s\t%s\t%s\t%s' "$1" "$2" "$(wc -l <"$taken")" "$(median 1 "$taken")" "$(lowest 1 "$taken")" \
    "$(highest 1 "$taken")" >>"$table"
  if [ -s "$work/floor" ]; then
    printf '\t%s\t%s\t%s\t%s' "$(median 1 "$work/floor")" "$(lowest 1 "$work/floor")" "$(highest 1 "$work/floor")" \
      "$(awk -v a="$(median 1 "$taken")" -v b="$(median 1 "$work/floor")" 'BEGIN { printf "%.2f", a / b }')" >>"$table"
  else
    printf '\t\t\t\t' >>"$table"
  fi
  cpu=
  [ ! -s "$work/floor" ] || cpu=$(median 3 "$work/floor")
  printf '\t%s\t%s\t%s\n' "$(highest 2 "$taken")" "$(median 3 "$taken")" "$cpu" >>"$table"
  rm -f "$taken" "$work/floor"
}

# compare RUN FLOOR ROUNDS [BEFORE]: runs both in turn, each behind the command BEFORE.
compare() {
  round=0
  while [ "$round" -lt "$3" ]; do
    ${4:-true}
    $1 "out/run$round" >>"$work/run"
    ${4:-true}
    $2 "out/floor$round" >>"$work/floor"
    round=$((round + 1))
  done
}

# The plain procedures must make the same results of the group.
compareResults() {
  rm -rf "$work/literal"
  mkdir "$work/literal"
  (cd "$work/literal" && "$build/bench/literal_convert" ../names.txt WORK0001.MUS >/dev/null 2>&1)
  rm -f "$work"/literal/KivSystem*
  diff -r "$work/results" "$work/literal"
  echo "results of $1 pages: the same bytes as those of the plain procedures"
}

# hasRoom PAGES TURNS: whether the disk has room for pages, results, and those of every turn with those of the floor.
hasRoom() {
  [ "$(df -Pk "$work" | awk 'NR == 2 { print $4 }')" -gt $(($1 * 131 * (3 + 2 * $2))) ]
}

cd "$work/in"
echo "load before: $(cut -d ' ' -f 1-3 /proc/loadavg)"
for pages in "$@"; do
  turns=$rounds
  [ "$pages" -lt "$manyPages" ] || turns=$(((rounds + 2) / 3))
  if ! hasRoom "$pages" "$turns"; then
    echo "no room on the disk for $pages pages: not measured"
    continue
  fi
  group "$pages"
  convert results >/dev/null
  [ "$pages" -gt "$largestForLiteral" ] || compareResults "$pages"
  compare analyze readOnly "$turns"
  row analyze "$pages"
  compare convert rewrite "$turns"
  row convert "$pages"
  if [ "$pages" -eq 500 ]; then
    if [ -w "$caches" ]; then
      compare analyze readOnly "$turns" dropCaches
      row analyze-cold "$pages"
    else
      echo "cold runs: not measured, as only root can empty the system's cache"
    fi
  fi
  rm -rf "$group" "$work/results" "$work/out" "$work/literal"
done

# Start-up: one small page, 200 times.
group=$work/small
mkdir "$group"
"$build/bench/make_group" "$group" 1 8
turn=0
while [ "$turn" -lt 10 ]; do
  "$timed" 20 "$kivsys" analyze "$group/PAGE00001.MUS" >>"$work/run"
  "$timed" 20 "$floor" read "$group/PAGE00001.MUS" >>"$work/floor"
  turn=$((turn + 1))
done
row analyze-8-KB 1
echo "load after: $(cut -d ' ' -f 1-3 /proc/loadavg)"
cd "$build"
rm -rf "$work"
"$here/table.sh" "$build" --json >"$build/bench/runs.json"
"$here/table.sh" "$build"
