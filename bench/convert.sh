#!/bin/sh
# Compares kivsys convert with the plain and slow conversion: that the results are the same bytes, and the times.
# Usage: bench/convert.sh BUILD_FOLDER [KIVSYS [FOLDER]]; FOLDER is where to work, on a disk in memory to leave out what
# flushing files costs both of them.
set -eu
build=$(cd "$1" && pwd)
kivsys=${2:-$build/apps/kivsys/kivsys}
literal=$build/bench/literal_convert
work=$(cd "${3:-$build/bench}" && pwd)/convert
rounds=5
rm -rf "$work"
mkdir -p "$work/group"
"$build/bench/make_systems" "$work/group" 300 20
for page in "$work"/group/*.MUS; do
  printf '%s 1\r\n' "$page" | sed 's,/,\\,g'
done >"$work/names.txt"

# run WHO ROUND: converts into a new folder and prints the seconds. The folders stay, as a disk from which files have just
# been taken is slow to take others.
run() {
  folder=$work/$1$2
  mkdir "$folder"
  cd "$folder"
  case $1 in
    fast) set -- "$kivsys" convert --names ../names.txt --result WORK0001.MUS ;;
    literal) set -- "$literal" ../names.txt WORK0001.MUS ;;
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
run fast 0 >/dev/null
run literal 0 >/dev/null
results=0
for page in "$work"/literal0/WORK*.MUS; do
  cmp "$page" "$work/fast0/${page##*/}"
  results=$((results + 1))
done
fast=$(find "$work/fast0" -name 'WORK*.MUS' | wc -l)
[ "$fast" -eq "$results" ] || {
  echo "the fast conversion made $fast results, the literal one $results" >&2
  exit 1
}
printf 'results, byte for byte      %s\n' "$results"

round=0
while [ "$round" -lt "$rounds" ]; do
  round=$((round + 1))
  run fast "$round" >>"$work/fast.txt"
  run literal "$round" >>"$work/literal.txt"
done
median() { sort -n "$1" | sed -n "$(((rounds + 1) / 2))p"; }
printf 'convert, fast               %s s\n' "$(median "$work/fast.txt")"
printf 'convert, literal            %s s\n' "$(median "$work/literal.txt")"
awk -v fast="$(median "$work/fast.txt")" -v literal="$(median "$work/literal.txt")" \
  'BEGIN { printf "ratio                       %.1f\n", literal / fast }'
