#!/bin/sh
# Counts instructions, which do not depend on the load of the machine: of each further page of an analysis, and of each
# further system of a conversion.
# Usage: bench/instructions.sh BUILD_FOLDER [--check]; with --check it compares with bench/instructions.txt and fails
# where a count has grown by more than 5 %.
set -eu
here=$(cd "$(dirname "$0")" && pwd)
build=$(cd "$1" && pwd)
kivsys=$build/apps/kivsys/kivsys
# The length of a name counts, and so does what else a folder holds; so neither the folder of the sources, nor one that
# changes meanwhile.
work=$(mktemp -d /var/tmp/kiv-bench-XXXXXX)
trap 'rm -rf "$work"' EXIT
mkdir -p "$work/pages" "$work/systems" "$work/run"
"$build/bench/make_group" "$work/pages" 60
"$build/bench/make_systems" "$work/systems" 90 20
cd "$work/run"

# count COMMAND...: the instructions that it executes, with no results there yet.
count() {
  rm -f "$work"/WORK*.MUS
  valgrind --tool=callgrind --callgrind-out-file=callgrind.out "$@" 2>&1 >/dev/null | sed -n 's/.*Collected : //p'
}
# first FOLDER COUNT: the first pages of a folder.
first() { find "$work/$1" -name '*.MUS' | sort | head -n "$2"; }
# further MANY FEW DIFFERENCE: what each of the further ones costs.
further() { echo $((($1 - $2) / $3)); }

bytes=$(wc -c <"$work/pages/PAGE00001.MUS")
# shellcheck disable=SC2046  # the names are ours and have no blanks
page=$(further "$(count "$kivsys" analyze $(first pages 60))" "$(count "$kivsys" analyze $(first pages 10))" 50)
# shellcheck disable=SC2046
system=$(further "$(count "$kivsys" convert --result "$work/WORK0001.MUS" $(first systems 30))" \
  "$(count "$kivsys" convert --result "$work/WORK0001.MUS" $(first systems 10))" 60)
printf 'analyze, instructions per page    %s\n' "$page"
awk -v page="$page" -v bytes="$bytes" 'BEGIN { printf "analyze, instructions per byte    %.2f\n", page / bytes }'
printf 'convert, instructions per system  %s\n' "$system"
[ "${2:-}" = --check ] || exit 0

# check NAME COUNT: against the committed one.
check() {
  awk -v name="$1" -v now="$2" '
    $1 == name {
      found = 1
      printf "%s: %.1f %% of the %s committed\n", name, 100 * now / $2, $2
      grown = now > 1.05 * $2
    }
    END { exit !found || grown }' "$here/instructions.txt"
}
check analyze-page "$page"
check convert-system "$system"
