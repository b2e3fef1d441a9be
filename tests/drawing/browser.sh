#!/bin/sh
# Draws the bundled example, renders the drawings in a browser, and checks the pictures.
# Usage: browser.sh KIVSYS FOLDER
# FOLDER is deleted and created again. Its pictures: chart.png, page.png (a converted system), first.png (a selected
# page).
set -eu
here=$(cd "$(dirname "$0")" && pwd)
kivsys=$(cd "$(dirname "$1")" && pwd)/$(basename "$1")
rm -rf "$2"
mkdir -p "$2/results"
cd "$2"
bad=0

for text in "$here"/../../examples/beethoven-9/SYMPH*.txt; do
  "$kivsys" build "$text" "$(basename "$text" .txt).MUS"
done
"$kivsys" convert SYMPH*.MUS --result results/WORK0001.MUS >/dev/null 2>messages.txt || {
  cat messages.txt >&2
  exit 1
}
"$kivsys" chart SYMPH*.MUS --out chart.svg
"$kivsys" draw results/WORK0002.MUS --out page.svg
"$kivsys" draw SYMPH001.MUS --out first.svg

fail() {
  echo "pictures: $*" >&2
  bad=1
}

# take_screenshot NAME WIDTH HEIGHT: NAME.svg as a browser shows it, in a window of this size.
take_screenshot() {
  timeout 60 chromium --headless --no-sandbox --disable-gpu --hide-scrollbars --force-device-scale-factor=1 \
    --user-data-dir="$PWD/profile" --window-size="$2,$3" --screenshot="$PWD/$1.png" "file://$PWD/$1.svg" \
    >browser.txt 2>&1 || fail "$1: the browser failed"
  rm -rf profile
  [ -s "$1.png" ] || {
    cat browser.txt >&2
    fail "$1: there is no picture"
    exit 1
  }
  size=$(identify -format '%wx%h' "$1.png")
  [ "$size" = "$2x$3" ] || fail "$1: the picture has $size pixels instead of $2x$3"
}

# value NAME CLASS ATTRIBUTE: of the first element with the class.
value() { sed -n "s/^<[^>]* *class=\"$2\"[^>]* $3=\"\([^\"]*\)\".*/\1/p" "$1.svg" | head -n 1; }
whole() { awk -v number="$1" 'BEGIN { printf "%d", number + 0.5 }'; }

# ink NAME X Y WIDTH HEIGHT: the number of dark pixels per thousand in this area.
ink() {
  convert "$1.png" -crop "$4x$5+$(whole "$2")+$(whole "$3")" +repage -colorspace Gray -threshold 50% \
    -format '%[fx:round(1000*(1-mean))]' info:
}

# expect WHAT MEASURED LOWEST HIGHEST
expect() {
  if [ "$2" -lt "$3" ] || [ "$2" -gt "$4" ]; then
    fail "$1: $2 pixels per thousand are dark, not $3 to $4"
  fi
}

# color NAME X Y: the color of one pixel, as RRGGBB.
color() { convert "$1.png" -depth 8 -format "%[hex:p{$(whole "$2"),$(whole "$3")}]" info: | cut -c 1-6; }
expect_color() { [ "$2" = "$3" ] || fail "$1: the color is $2, not $3"; }

check_page() {
  width=$(sed -n '1s/.* width="\([0-9]*\).*/\1/p' "$1.svg")
  height=$(sed -n '1s/.* height="\([0-9]*\).*/\1/p' "$1.svg")
  take_screenshot "$1" "$width" "$height"
  left=$(value "$1" staffline x1)
  bottom=$(value "$1" staffline y1)
  clef_x=$(value "$1" clef x)
  clef_y=$(value "$1" clef y)
  expect "$1, all" "$(ink "$1" 0 0 "$width" "$height")" 5 200
  expect "$1, left edge" "$(ink "$1" 0 0 16 "$height")" 0 0
  expect "$1, clef" "$(ink "$1" "$((clef_x - 13))" "$((clef_y - 42))" 26 66)" 150 500
  # Between two staves there is the system barline, and nothing else to the left of the clefs.
  expect "$1, system barline" "$(ink "$1" "$((left - 1))" "$((bottom + 5))" 2 20)" 400 1000
  expect "$1, between staves" "$(ink "$1" "$((left + 60))" "$((bottom + 15))" 40 20)" 0 0
  expect "$1, identifier" "$(ink "$1" "$((left - 50))" "$((bottom - 30))" 32 20)" 5 400
  rest_x=$(value "$1" rest x)
  rest_y=$(value "$1" rest y)
  expect "$1, rest" "$(ink "$1" "$((rest_x - 5))" "$((rest_y + 1))" 10 3)" 1000 1000
}

check_page first
expect_color "first, a staff of the page" "$(color first "$((left + 50))" "$((bottom - 5))")" FFFFFF
check_page page
expect_color "page, a rest staff" "$(color page "$((left + 60))" "$((bottom - 5))")" FBE6B8

# A4, landscape, at 96 dots per inch.
take_screenshot chart 1123 793
dots() { awk -v mm="$1" -v more="$2" 'BEGIN { print (mm + more) * 793 / 210 }'; }
# Left, top and width of the first square of a class.
square() { sed -n "s/^<path class=\"$1\" d=\"M\([0-9.]*\) \([0-9.]*\)l\([0-9.]*\) .*/\1 \2 \3/p" chart.svg | head -n 1; }
part() { awk -v width="$1" -v part="$2" 'BEGIN { print width * part }'; }
read -r x y width <<EOF
$(square present)
EOF
middle=$(part "$width" 0.5)
expect_color "chart, a staff" "$(color chart "$(dots "$x" "$middle")" "$(dots "$y" "$middle")")" 2B6F6A
read -r x y width <<EOF
$(square missing)
EOF
expect_color "chart, a missing staff" "$(color chart "$(dots "$x" "$(part "$width" 0.2)")" \
  "$(dots "$y" "$(part "$width" 0.8)")")" FBE6B8
expect "chart, title" "$(ink chart 45 45 90 22)" 50 400
expect "chart, margin" "$(ink chart 0 0 40 793)" 0 0

# A large group is printed on sheets, one page each, which all have their title and nothing in the margin.
number=1000
while [ "$number" -lt 1500 ]; do
  cp SYMPH001.MUS "BIG$number.MUS"
  number=$((number + 1))
done
"$kivsys" chart BIG*.MUS --out sheets.svg
sheets=$(grep -c '<g class="sheet"' sheets.svg)
[ "$sheets" -gt 3 ] || fail "sheets: there are only $sheets"
timeout 60 chromium --headless --no-sandbox --disable-gpu --user-data-dir="$PWD/profile" --no-pdf-header-footer \
  --print-to-pdf="$PWD/sheets.pdf" "file://$PWD/sheets.svg" >browser.txt 2>&1 || fail "sheets: the browser failed"
rm -rf profile
printed=$(pdfinfo sheets.pdf | awk '/^Pages:/ { print $2 }')
[ "$printed" = "$sheets" ] || fail "sheets: $printed pages are printed instead of $sheets"
pdftoppm -r 96 -png sheets.pdf printed
for picture in printed-*.png; do
  name=$(basename "$picture" .png)
  expect "$name, title" "$(ink "$name" 45 45 60 22)" 50 400
  expect "$name, number of the sheet" "$(ink "$name" 1000 45 80 22)" 20 400
  expect "$name, upper margin" "$(ink "$name" 0 0 1120 40)" 0 0
  expect "$name, lower margin" "$(ink "$name" 0 752 1120 38)" 0 0
done
[ "$bad" -ne 0 ] || echo "the drawings are correct"
exit "$bad"
