#!/bin/sh
# Times whole runs and their I/O baseline, a plain C program that only reads and writes what the run must.
# Usage: bench/runs.sh BUILD_FOLDER [ROUNDS] [PAGES...]; without PAGES groups of 1, 50, 300 and, where they fit
# on the disk, 5000 pages. Prints a table, and leaves it in BUILD_FOLDER/bench: runs.tsv, runs.json.
# The environment variable BENCH_FOLDER names another folder to work in, such as one on a disk in memory.
set -eu
here=$(cd "$(dirname "$0")" && pwd)
build=$(cd "$1" && pwd)
rounds=${2:-9}
shift
[ $# -eq 0 ] || shift
[ $# -gt 0 ] || set -- 1 50 300 5000
kivsys=$build/apps/kivsys/kivsys
baseline=$build/bench/floor
timed=$build/bench/timed
work=${BENCH_FOLDER:-$build/bench}/runs
table=$build/bench/runs.tsv
caches=/proc/sys/vm/drop_caches
largestForReference=50
manyPages=1000
rm -rf "$work"
mkdir -p "$work/in" "$work/state"
# What undo keeps of the runs is not the user's.
XDG_STATE_HOME=$work/state
export XDG_STATE_HOME
printf 'run\tpages\trounds\tseconds\tlowest\thighest\tbaseline\tlowest\thighest\tratio\tKB\tCPU\tbaseline CPU\n' >"$table"

# group PAGES: makes the group and its names file.
group() {
  group=$work/group$1
  mkdir -p "$group"
  "$build/bench/make_group" "$group" "$1" incomplete
  for page in "$group"/*.MUS; do
    printf '%s 1\r\n' "$page"
  done | tr / '\\' >"$work/names.txt"
}

# convert FOLDER: converts the group into a new folder, prints seconds and memory. A single page needs no conversion, so
# only --force lets it have results. The folders stay until the group is done with: a disk from which files have just been
# deleted is slow to store others.
convert() {
  mkdir -p "$work/$1"
  "$timed" 1 "$kivsys" convert --force --names "$work/names.txt" --result "$work/$1/WORK0001.MUS"
}
# rewrite FOLDER: the same for the baseline, which writes as many bytes.
rewrite() {
  mkdir -p "$work/$1"
  files=$(find "$work/results" -name 'WORK*.MUS' | wc -l)
  bytes=$(find "$work/results" -name 'WORK*.MUS' -printf '%s\n' | awk '{ all += $1 } END { print int(all / NR) }')
  "$timed" 1 "$baseline" copy "$files" "$bytes" "$work/$1" "$group"/*.MUS
}
analyze() { "$timed" 1 "$kivsys" analyze --names "$work/names.txt"; }
analyzeJson() { "$timed" 1 "$kivsys" analyze --json --names "$work/names.txt"; }
verify() { "$timed" 1 "$kivsys" verify --names "$work/names.txt" --result "$work/results/WORK0001.MUS"; }
report() { "$timed" 1 "$kivsys" report --names "$work/names.txt" --out "$work/report.html"; }
suggest() { "$timed" 1 "$kivsys" suggest --names "$work/names.txt"; }
survey() { "$timed" 1 "$kivsys" survey --quiet "$group"; }
readOnly() { "$timed" 1 "$baseline" read "$group"/*.MUS; }
readBoth() { "$timed" 1 "$baseline" read "$group"/*.MUS "$work"/results/WORK*.MUS; }
dropCaches() {
  sync
  echo 3 >"$caches"
}

# median, lowest, highest COLUMN FILE
sorted() { awk -v column="$1" '{ print $column }' "$2" | sort -n; }
median() { sorted "$1" "$2" | awk '{ all[NR] = $1 } END { print all[int((NR + 1) / 2)] }'; }
lowest() { sorted "$1" "$2" | head -n 1; }
highest() { sorted "$1" "$2" | tail -n 1; }

# row RUN PAGES: adds the line of what lies in $work/run and, unless the run has no baseline, in $work/baseline.
row() {
  taken=$work/run
  printf '%s\t%s\t%s\t%s\t%s\t%s' "$1" "$2" "$(wc -l <"$taken")" "$(median 1 "$taken")" "$(lowest 1 "$taken")" \
    "$(highest 1 "$taken")" >>"$table"
  if [ -s "$work/baseline" ]; then
    printf '\t%s\t%s\t%s\t%s' "$(median 1 "$work/baseline")" "$(lowest 1 "$work/baseline")" "$(highest 1 "$work/baseline")" \
      "$(awk -v a="$(median 1 "$taken")" -v b="$(median 1 "$work/baseline")" 'BEGIN { printf "%.2f", a / b }')" >>"$table"
  else
    printf '\t\t\t\t' >>"$table"
  fi
  cpu=
  [ ! -s "$work/baseline" ] || cpu=$(median 3 "$work/baseline")
  printf '\t%s\t%s\t%s\n' "$(highest 2 "$taken")" "$(median 3 "$taken")" "$cpu" >>"$table"
  rm -f "$taken" "$work/baseline"
}

# compare RUN BASELINE ROUNDS [BEFORE]: runs both in turn, each after the command BEFORE.
compare() {
  round=0
  while [ "$round" -lt "$3" ]; do
    ${4:-true}
    $1 "out/run$round" >>"$work/run"
    ${4:-true}
    $2 "out/baseline$round" >>"$work/baseline"
    round=$((round + 1))
  done
}

# The reference implementation must write the same results for the group.
compareResults() {
  rm -rf "$work/reference"
  mkdir "$work/reference"
  (cd "$work/reference" && "$build/bench/reference_convert" ../names.txt WORK0001.MUS >/dev/null 2>&1)
  rm -f "$work"/reference/KivSystem*
  diff -r "$work/results" "$work/reference"
  echo "results of $1 pages: the same bytes as those of the reference implementation"
}

# fits PAGES TURNS: whether pages, results, and those of every turn with those of the baseline fit on the disk.
fits() {
  [ "$(df -Pk "$work" | awk 'NR == 2 { print $4 }')" -gt $(($1 * 131 * (3 + 2 * $2))) ]
}

cd "$work/in"
echo "load before: $(cut -d ' ' -f 1-3 /proc/loadavg)"
for pages in "$@"; do
  turns=$rounds
  [ "$pages" -lt "$manyPages" ] || turns=$(((rounds + 2) / 3))
  if ! fits "$pages" "$turns"; then
    echo "$pages pages do not fit on the disk: not measured"
    continue
  fi
  group "$pages"
  convert results >/dev/null
  [ "$pages" -gt "$largestForReference" ] || compareResults "$pages"
  for run in analyze analyzeJson report suggest survey; do
    compare "$run" readOnly "$turns"
    row "$run" "$pages"
  done
  compare verify readBoth "$turns"
  row verify "$pages"
  compare convert rewrite "$turns"
  row convert "$pages"
  if [ "$pages" -eq 300 ]; then
    if [ -w "$caches" ]; then
      compare analyzeJson readOnly "$turns" dropCaches
      row analyzeJson-cold "$pages"
    else
      echo "cold runs: not measured, as only root can empty the system's cache"
    fi
  fi
  rm -rf "$group" "$work/results" "$work/out" "$work/reference"
done

# Start-up: one small page, 200 times.
group=$work/small
mkdir "$group"
"$build/bench/make_group" "$group" 1 8
turn=0
while [ "$turn" -lt 10 ]; do
  "$timed" 20 "$kivsys" analyze "$group/PAGE00001.MUS" >>"$work/run"
  "$timed" 20 "$baseline" read "$group/PAGE00001.MUS" >>"$work/baseline"
  turn=$((turn + 1))
done
row analyze-8-KB 1
echo "load after: $(cut -d ' ' -f 1-3 /proc/loadavg)"
cd "$build"
rm -rf "$work"
"$here/table.sh" "$build" --json >"$build/bench/runs.json"
"$here/table.sh" "$build"
