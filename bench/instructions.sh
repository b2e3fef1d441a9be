#!/bin/sh
# Counts instructions, which do not depend on the load of the machine: of each further page of an analysis, also of a
# group that needs a conversion with its explanation, and of each further system of a conversion, of its proof, and of
# suggestions.
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
mkdir -p "$work/pages" "$work/incomplete" "$work/systems" "$work/run" "$work/state"
# What undo keeps is not the user's.
XDG_STATE_HOME=$work/state
export XDG_STATE_HOME
"$build/bench/make_group" "$work/pages" 60
"$build/bench/make_group" "$work/incomplete" 60 incomplete
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
page=$(further "$(count "$kivsys" analyze --jobs 1 $(first pages 60))" "$(count "$kivsys" analyze --jobs 1 $(first pages 10))" 50)
# shellcheck disable=SC2046
explained=$(further "$(count "$kivsys" analyze --jobs 1 --json $(first incomplete 60))" \
  "$(count "$kivsys" analyze --jobs 1 --json $(first incomplete 10))" 50)
# perSystem COMMAND [OPTION...]: the same of systems.
perSystem() {
  # shellcheck disable=SC2046
  further "$(count "$kivsys" "$@" $(first systems 30))" "$(count "$kivsys" "$@" $(first systems 10))" 60
}
system=$(perSystem convert --jobs 1 --result "$work/WORK0001.MUS")
suggestion=$(perSystem suggest)
# proof PAGES: the instructions that the proof of a conversion takes.
proof() {
  rm -f "$work"/WORK*.MUS
  # shellcheck disable=SC2046
  "$kivsys" convert --quiet --no-undo --result "$work/WORK0001.MUS" $(first systems "$1") >/dev/null
  mkdir -p "$work/results"
  rm -f "$work"/results/*
  mv "$work"/WORK*.MUS "$work/results"
  # shellcheck disable=SC2046
  count "$kivsys" verify --result "$work/results/WORK0001.MUS" $(first systems "$1")
}
proof=$(further "$(proof 30)" "$(proof 10)" 60)
printf 'analyze, instructions per page    %s\n' "$page"
awk -v page="$page" -v bytes="$bytes" 'BEGIN { printf "analyze, instructions per byte    %.2f\n", page / bytes }'
printf 'analyze --json, incomplete page   %s\n' "$explained"
printf 'convert, instructions per system  %s\n' "$system"
printf 'verify, instructions per system   %s\n' "$proof"
printf 'suggest, instructions per system  %s\n' "$suggestion"
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
check explained-page "$explained"
check convert-system "$system"
check verify-system "$proof"
check suggest-system "$suggestion"
