#!/bin/sh
# Builds the example's pages, analyzes them, shows which systems differ and how, converts them, and shows the results.
# Then repairs the broken example.
# Usage: examples/demo.sh KIVSYS FOLDER
set -eu
kivsys=$(cd "$(dirname "$1")" && pwd)/$(basename "$1")
examples=$(cd "$(dirname "$0")" && pwd)
example=$examples/beethoven-9
rm -rf "$2"
mkdir -p "$2"
cd "$2"

echo "Ludwig van Beethoven, Symphony No. 9: two passages on five pages, one of them in two files"
echo
pages=
for text in "$example"/SYMPH*.txt; do
  page=$(basename "$text" .txt).MUS
  "$kivsys" build --force "$text" "$page"
  pages="$pages $page"
done
# shellcheck disable=SC2086  # the page names have no blanks
set -- $pages
echo "\$ kivsys analyze $*"
"$kivsys" analyze "$@"
echo
echo "Systems (S) by instruments; a dot is a staff that is missing there:"
echo
# Names are in instruments.txt: identifier, tab, name. Records of the report: SYSTEM=1,INSTRID=101,...,FILE=...
awk -F '\t' '
  FNR == NR { name[$1] = $2; next }
  { sub(/\r$/, "") }
  /^\*/ || !/^SYSTEM=/ { next }
  {
    count = split($0, field, ",")
    system_ = substr(field[1], 8) + 0
    id = substr(field[2], 9)
    file = $0
    sub(/.*\\/, "", file)
    if (!(id in seen)) { seen[id] = 1; order[++ids] = id }
    if (system_ > systems) systems = system_
    there[system_, id] = 1
    if (!(system_ in pages)) pages[system_] = file
    else if (index(pages[system_], file) == 0) pages[system_] = pages[system_] " + " file
  }
  END {
    for (i = 2; i <= ids; ++i)
      for (j = i; j > 1 && order[j] + 0 < order[j - 1] + 0; --j) { t = order[j]; order[j] = order[j - 1]; order[j - 1] = t }
    printf "%4s %-22s", "id", "instrument"
    for (s = 1; s <= systems; ++s) printf " S%-2d", s
    print ""
    for (i = 1; i <= ids; ++i) {
      printf "%4s %-22s", order[i], name[order[i]]
      for (s = 1; s <= systems; ++s) printf " %-3s", (s, order[i]) in there ? "#" : "."
      print ""
    }
    print ""
    for (s = 1; s <= systems; ++s) {
      missing = ""
      count = 0
      for (i = 1; i <= ids; ++i)
        if (!((s, order[i]) in there)) { missing = missing (count++ ? ", " : "") name[order[i]] }
      printf "S%d (%s): %s\n", s, pages[s], count ? "without " missing : "all " ids " instruments"
    }
  }' "$example/instruments.txt" KivSystem2.TXT
echo
mkdir results
echo "\$ kivsys convert $* --result results/WORK0001.MUS"
"$kivsys" convert "$@" --result results/WORK0001.MUS
echo
echo "The staves of each result from the top: a real one or a rest staff, and its bars"
echo
for result in results/*.MUS; do
  echo "result $(basename "$result" .MUS)"
  "$kivsys" dump "$result"
done | awk -F '\t' '
  FNR == 1 { ++input }
  input == 1 { name[$1] = $2; next }
  input == 2 {
    sub(/\r$/, "")
    if (!/^SYSTEM=/) next
    split($0, field, ",")
    there[substr(field[1], 8) + 0, substr(field[2], 9)] = 1
    next
  }
  /^result / { title[++results] = substr($0, 8); next }
  {
    split($0, word, " ")
    staff = word[4]
    # Number and offset stand in front of the words of an item.
    if (word[3] == "staff") {
      for (w = 5; word[w] != ""; ++w) if (word[w] == "instrument") id[results, staff] = word[w + 1]
      if (staff > staves) staves = staff
    } else if (word[3] == "barline" && / spans 1( |$)/ && !/ kind [89]/) ++bars[results, staff]
  }
  END {
    printf "%4s %-22s", "id", "instrument"
    for (r = 1; r <= results; ++r) printf " %-8s", title[r]
    print ""
    for (s = staves; s >= 1; --s) {
      printf "%4s %-22s", id[1, s], name[id[1, s]]
      for (r = 1; r <= results; ++r)
        printf " %-8s", id[r, s] != id[1, s] ? "?" id[r, s] : ((r, id[r, s]) in there ? "real " : "rest ") bars[r, s]
      print ""
    }
  }' "$example/instruments.txt" KivSystem2.TXT -
echo
echo "A minuet, broken on purpose: ids that are 0, doubled or mistyped, a wrong cue, a damaged page"
"$examples/repair_demo.sh" "$kivsys" minuet
echo
echo "Report, verdict and results are in $(pwd | sed 's|.*/\(build/\)|\1|'): KivSystem2.TXT, KivSystem1.TXT, results"
