#!/bin/sh
# Makes apps/kivsystem/icon.ico from its drawings. Needs librsvg2-bin and icoutils.
set -eu
cd "$(dirname "$0")/../apps/kivsystem"
pictures=$(mktemp -d)
trap 'rm -rf "$pictures"' EXIT

# draw DRAWING SIZE: each size from the drawing whose raster it is a multiple of.
draw() { rsvg-convert --width "$2" --height "$2" --output "$pictures/$2.png" "$1"; }

draw icon-16.svg 16
draw icon-24.svg 24
draw icon.svg 32
draw icon-24.svg 48
draw icon.svg 64
draw icon.svg 256
# The largest one is stored as PNG, as the system expects it.
icotool --create --output icon.ico "$pictures/16.png" "$pictures/24.png" "$pictures/32.png" "$pictures/48.png" \
  "$pictures/64.png" --raw="$pictures/256.png"
