#!/bin/sh
# Measures kivsys analyze on generated groups of full pages: instructions per byte, time and memory.
# Usage: bench/analyze.sh BUILD_FOLDER
set -eu
build=$(cd "$1" && pwd)
kivsys=$build/apps/kivsys/kivsys
group=$build/bench/group
results=$build/bench/results
mkdir -p "$group" "$results"
"$build/bench/make_group" "$group" 500

# instructions PAGES: how many an analysis of the first pages executes.
instructions() {
  # shellcheck disable=SC2012,SC2046  # the names are ours and have no blanks
  (cd "$results" && valgrind --tool=callgrind --callgrind-out-file=callgrind.out "$kivsys" analyze \
    $(ls "$group"/*.MUS | head -n "$1") 2>&1 >/dev/null | sed -n 's/.*Collected : //p')
}

bytes=$(wc -c <"$group/PAGE00001.MUS")
few=$(instructions 10)
many=$(instructions 60)
printf 'page                        %s bytes\n' "$bytes"
printf 'instructions, 10 pages      %s\n' "$few"
printf 'instructions, 60 pages      %s\n' "$many"
awk -v few="$few" -v many="$many" -v bytes="$bytes" \
  'BEGIN { printf "instructions per byte       %.2f (of each page more)\n", (many - few) / 50 / bytes }'

# measure PAGES: seconds and the highest memory in KB.
measure() {
  # shellcheck disable=SC2012,SC2046
  (cd "$results" && command time -f '%e s, %M KB' "$kivsys" analyze \
    $(ls "$group"/*.MUS | head -n "$1") 2>&1 >/dev/null | tail -n 1)
}
for pages in 50 500; do
  printf '%-4s pages, warm            %s\n' "$pages" "$(measure "$pages")"
done
