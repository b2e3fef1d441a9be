#!/bin/sh
# Takes pictures of the real panel at work, with the bundled example.
# Usage: screenshots.sh WINDOWS_BUILD KIVSYS FOLDER [DOTS_PER_INCH]
set -eu
here=$(cd "$(dirname "$0")" && pwd)
build=$(cd "$1" && pwd)
kivsys=$(cd "$(dirname "$2")" && pwd)/$(basename "$2")
mkdir -p "$3"
folder=$(cd "$3" && pwd)
dpi=${4:-96}

work=$build/screenshots
rm -rf "$work"
mkdir -p "$work"
for text in "$here"/../../examples/beethoven-9/SYMPH*.txt; do
  "$kivsys" build "$text" "$work/$(basename "$text" .txt).MUS"
done
KIV_DPI=$dpi "$here/run_in_wine.sh" "$build" --program "$build/tests/window/screenshots.exe" "$work"
for picture in "$work"/*.bmp; do
  convert "$picture" -alpha off -strip "$folder/$(basename "$picture" .bmp).png"
done
