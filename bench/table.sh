#!/bin/sh
# Prints the table that bench/runs.sh left: as text, as --markdown or as --json.
# Usage: bench/table.sh BUILD_FOLDER [--markdown | --json]
set -eu
form=${2:-text}
awk -F '\t' -v form="${form#--}" '
  function ms(seconds) { return seconds == "" ? "-" : sprintf("%.1f", 1000 * seconds) }
  function span(at) { return $at == "" ? "-" : ms($at) " (" ms($(at + 1)) " - " ms($(at + 2)) ")" }
  function orDash(text) { return text == "" ? "-" : text }
  function orNull(text) { return text == "" ? "null" : text }
  function head(layout) {
    printf layout, "run", "pages", "rounds", "ms, median (range)", "baseline, ms", "ratio", "CPU ms / baseline", "MB resident"
  }
  function line(layout) { printf layout, $1, $2, $3, span(4), span(7), orDash($10), ms($12) " / " ms($13), sprintf("%.1f", $11 / 1024) }
  BEGIN {
    text = "%-13s %5s %6s  %-26s %-26s %6s  %-19s %12s\n"
    markdown = "| %s | %s | %s | %s | %s | %s | %s | %s |\n"
    if (form == "text") head(text)
    if (form == "markdown") { head(markdown); print "| --- | ---: | ---: | --- | --- | ---: | --- | ---: |" }
    if (form == "json") print "["
  }
  NR == 1 { next }
  form == "text" { line(text) }
  form == "markdown" { line(markdown) }
  form == "json" {
    printf "%s {\"run\": \"%s\", \"pages\": %s, \"rounds\": %s, \"seconds\": %s, \"lowest\": %s, \"highest\": %s, ",
      (NR > 2 ? ",\n" : ""), $1, $2, $3, $4, $5, $6
    printf "\"baseline\": %s, \"baselineLowest\": %s, \"baselineHighest\": %s, \"ratio\": %s, \"residentKB\": %s, \"cpu\": %s, \"baselineCpu\": %s}",
      orNull($7), orNull($8), orNull($9), orNull($10), $11, $12, orNull($13)
  }
  END { if (form == "json") print "\n]" }' "$1/bench/runs.tsv"
