#!/bin/sh
# Builds the pages of the broken minuet and repairs them; of what each step prints, only the line that matters is shown.
# Usage: examples/repair_demo.sh KIVSYS FOLDER
set -eu
kivsys=$1
example=$(cd "$(dirname "$0")" && pwd)/broken-minuet
mkdir "$2"
cd "$2"
for text in "$example"/*.txt; do
  "$kivsys" build "$text" "$(basename "$text" .txt).MUS"
done

# step PATTERN ARGUMENT...: runs kivsys and shows the line with the pattern. Only an analysis may fail.
step() {
  pattern=$1
  shift
  echo "\$ kivsys $*" | sed 's/MINUET001.*MINUET006.MUS/MINUET*.MUS/'
  "$kivsys" "$@" >said 2>&1 || [ "$1" = analyze ]
  grep "$pattern" said
}

step 'MINUET006.MUS: item' analyze MINUET*.MUS
step 'kept' recover MINUET006.MUS
mkdir damaged
mv MINUET006.MUS damaged
mv RECOVERED-MINUET006.MUS MINUET006.MUS
step 'Corrections:' suggest MINUET*.MUS -o corrections.csv
step 'ids changed' fix MINUET*.MUS --corrections corrections.csv -o corrected
step 'Layouts:' analyze corrected
rm said
