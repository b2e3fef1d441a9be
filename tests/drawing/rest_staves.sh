#!/bin/sh
# Draws the pictures of docs/rest-staves.md: results of the example with and without --fit.
# Usage: rest_staves.sh KIVSYS FOLDER
set -eu
here=$(cd "$(dirname "$0")" && pwd)
kivsys=$(cd "$(dirname "$1")" && pwd)/$(basename "$1")
folder=$(cd "$2" && pwd)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cd "$work"

for text in "$here"/../../examples/silent-march/*.txt; do
  "$kivsys" build "$text" "$(basename "$text" .txt).MUS"
done
{
  "$kivsys" convert MARCH00[1-3]*.MUS --result plain/WORK0001.MUS
  "$kivsys" convert --fit MARCH*.MUS --result fit/WORK0001.MUS
} >messages.txt 2>&1 || {
  cat messages.txt >&2
  exit 1
}
for result in plain/*.MUS fit/*.MUS; do
  number=${result#*WORK000}
  "$kivsys" draw "$result" --out "$folder/rest-staves-${number%.MUS}-${result%%/*}.svg"
done
