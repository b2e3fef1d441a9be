#!/bin/sh
# Runs fuzz targets.
#
#   fuzz/run.sh BUILD SECONDS TARGET...   each for SECONDS, starting from the local corpus in BUILD/corpus; findings are in
#                                         BUILD/finds
#   fuzz/run.sh BUILD --check TARGET...   each over its seeds and the same new inputs every time
set -eu
here=$(cd "$(dirname "$0")" && pwd)
build=$1
length=$2
shift 2

# Inputs are as long as the target needs, and no longer: short ones run fast.
longest() {
  case $1 in
    end_to_end) echo 100 ;;
    mus_reader) echo 200 ;;
    survey_state | journal) echo 800 ;;
    recovery) echo 2000 ;;
    *) echo 400 ;;
  esac
}

# New inputs of a check: some seconds of them.
runs() {
  case $1 in
    mus_reader | names_file) echo 40000 ;;
    command_line | settings) echo 15000 ;;
    end_to_end) echo 3000 ;;
    *) echo 5000 ;;
  esac
}

# fuzz TARGET CORPUS OPTION...
fuzz() {
  target=$1
  corpus=$2
  shift 2
  finds=$build/finds/$target
  mkdir -p "$corpus" "$finds"
  [ ! -f "$here/$target.dict" ] || set -- "$@" -dict="$here/$target.dict"
  # How often an edge is taken says little more about such a long run than that it is taken, and costs half of the time.
  [ "$target" != end_to_end ] || set -- "$@" -use_counters=0
  # A count of blocks after every run is slow; leaks are reported at the end.
  set -- "$@" -max_len="$(longest "$target")" -detect_leaks=0 -timeout=20 -rss_limit_mb=1024 -print_final_stats=1 \
    -artifact_prefix="$finds/" "$corpus" "$build/seeds/$target"
  if "$build/fuzz/fuzz_$target" "$@" >"$finds/log.txt" 2>&1; then
    printf '%-14s %9s runs, %6s a second, %5s edges\n' "$target" \
      "$(sed -n 's/^stat::number_of_executed_units: *//p' "$finds/log.txt")" \
      "$(sed -n 's/^stat::average_exec_per_sec: *//p' "$finds/log.txt")" \
      "$(sed -n 's/.* cov: \([0-9]*\) .*/\1/p' "$finds/log.txt" | tail -n 1)"
    return
  fi
  grep -E 'does not hold|ERROR|runtime error|SUMMARY' "$finds/log.txt" || tail -n 20 "$finds/log.txt"
  found=$(sed -n 's/.*Test unit written to //p' "$finds/log.txt" | tail -n 1)
  echo "$target: FAILED; reproduce it with"
  echo "  ASAN_OPTIONS=malloc_context_size=30 $build/fuzz/fuzz_$target $found"
  return 1
}

# Without what depends on addresses or on the clock.
same='-use_cmp=0 -use_memmem=0 -entropic=0 -reload=0'

bad=0
for target in "$@"; do
  if [ "$length" = --check ]; then
    rm -rf "$build/check/$target"
    # shellcheck disable=SC2086  # a list of words is meant
    fuzz "$target" "$build/check/$target" -seed=1 -runs="$(runs "$target")" $same || bad=1
  else
    fuzz "$target" "$build/corpus/$target" -max_total_time="$length" || bad=1
  fi
done
exit $bad
