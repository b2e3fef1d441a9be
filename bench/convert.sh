#!/bin/sh
# Compares kivsys convert with the plain and slow conversion: that the results are the same bytes, and the times.
# Usage: bench/convert.sh BUILD_FOLDER [KIVSYS]
set -eu
build=$(cd "$1" && pwd)
kivsys=${2:-$build/apps/kivsys/kivsys}
literal=$build/bench/literal_convert
work=$build/bench/convert
rounds=5
rm -rf "$work"
mkdir -p "$work/group"
"$build/bench/make_systems" "$work/group" 300 20
for page in "$work"/group/*.MUS; do
  printf '%s 1\r\n' "$page" | sed 's,/,\\,g'
done >"$work/names.txt"

# run WHO: converts into a fresh folder and prints the seconds.
run() {
  rm -rf "${work:?}/$1"
  mkdir "$work/$1"
  cd "$work/$1"
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
run fast >/dev/null
run literal >/dev/null
results=0
for page in "$work"/literal/WORK*.MUS; do
  cmp "$page" "$work/fast/${page##*/}"
  results=$((results + 1))
done
fast=$(find "$work/fast" -name 'WORK*.MUS' | wc -l)
[ "$fast" -eq "$results" ] || {
  echo "the fast conversion made $fast results, the literal one $results" >&2
  exit 1
}
printf 'results, byte for byte      %s\n' "$results"

round=0
while [ "$round" -lt "$rounds" ]; do
  run fast >>"$work/fast.txt"
  run literal >>"$work/literal.txt"
  round=$((round + 1))
done
median() { sort -n "$1" | sed -n "$(((rounds + 1) / 2))p"; }
printf 'convert, fast               %s s\n' "$(median "$work/fast.txt")"
printf 'convert, literal            %s s\n' "$(median "$work/literal.txt")"
awk -v fast="$(median "$work/fast.txt")" -v literal="$(median "$work/literal.txt")" \
  'BEGIN { printf "ratio                       %.1f\n", literal / fast }'
