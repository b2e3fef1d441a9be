#!/bin/sh
# Runs the native test programs of a build without sanitizers under valgrind. Its findings are in BUILD/memcheck.
# Usage: tools/memcheck.sh BUILD
set -eu
here=$(cd "$(dirname "$0")" && pwd)
build=$1
# Thousands of runs each, which under valgrind would take hours.
long='DamagedPage.*:DamagedGroup.*:AnyNamesFile.AnyByte*:FileNames.EveryShortText*:Convert.TheCounterOfSystemsHas16Bits'
mkdir -p "$build/memcheck"
bad=0
for program in $(cat "$build/tests/programs.txt"); do
  log=$build/memcheck/$program.log
  path=$(find "$build/tests" -name "test_$program" -type f)
  # Programs with an allocator of their own keep it.
  if valgrind -q --error-exitcode=9 --leak-check=full --soname-synonyms=somalloc=nouserintercepts \
    --suppressions="$here/memcheck.supp" "$path" --gtest_brief=1 --gtest_filter="-$long" >"$log" 2>&1; then
    printf '%-20s %s\n' "$program" "$(sed -n 's/.*==\] \([0-9]* tests\) .*(\(.*\) total).*/\1, \2/p' "$log")"
  else
    printf '%-20s FAILED: %s\n' "$program" "$log"
    bad=1
  fi
done
exit $bad
