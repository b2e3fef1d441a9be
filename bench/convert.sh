#!/bin/sh
# Compares kivsys convert with the reference implementation: the bytes of the results, and the times.
# Usage: bench/convert.sh BUILD_FOLDER [KIVSYS [FOLDER]]; FOLDER is where to work, on a disk in memory to leave out what
# flushing files costs both of them.
set -eu
build=$(cd "$1" && pwd)
kivsys=$(realpath "${2:-$build/apps/kivsys/kivsys}")
reference=$build/bench/reference_convert
work=$(cd "${3:-$build/bench}" && pwd)/convert
rounds=5
rm -rf "$work"
mkdir -p "$work/group"
"$build/bench/make_systems" "$work/group" 300 20
for page in "$work"/group/*.MUS; do
  printf '%s 1\r\n' "$page" | sed 's,/,\\,g'
done >"$work/names.txt"

# run WHICH ROUND: converts into a new folder and prints the seconds. The folders stay, as a disk from which files have
# just been deleted is slow to store others.
run() {
  folder=$work/$1$2
  mkdir "$folder"
  cd "$folder"
  case $1 in
    kivsys) set -- "$kivsys" convert --names ../names.txt --result WORK0001.MUS ;;
    reference) set -- "$reference" ../names.txt WORK0001.MUS ;;
  esac
  begun=$(date +%s.%N)
  "$@" >output.txt 2>messages.txt || {
    cat messages.txt >&2
    exit 1
  }
  ended=$(date +%s.%N)
  cd "$work"
  echo "$begun $ended" | awk '{ printf "%.3f\n", $2 - $1 }'
}

# The first run of each is for the comparison, and warms up.
run kivsys 0 >/dev/null
run reference 0 >/dev/null
results=0
for page in "$work"/reference0/WORK*.MUS; do
  cmp "$page" "$work/kivsys0/${page##*/}"
  results=$((results + 1))
done
written=$(find "$work/kivsys0" -name 'WORK*.MUS' | wc -l)
[ "$written" -eq "$results" ] || {
  echo "kivsys wrote $written results, the reference implementation $results" >&2
  exit 1
}
printf 'results, byte for byte      %s\n' "$results"

round=0
while [ "$round" -lt "$rounds" ]; do
  round=$((round + 1))
  run kivsys "$round" >>"$work/kivsys.txt"
  run reference "$round" >>"$work/reference.txt"
done
median() { sort -n "$1" | sed -n "$(((rounds + 1) / 2))p"; }
printf 'convert, kivsys             %s s\n' "$(median "$work/kivsys.txt")"
printf 'convert, reference          %s s\n' "$(median "$work/reference.txt")"
awk -v kivsys="$(median "$work/kivsys.txt")" -v reference="$(median "$work/reference.txt")" \
  'BEGIN { printf "ratio                       %.1f\n", reference / kivsys }'
