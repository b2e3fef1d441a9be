#!/bin/sh
# Rules that no compiler checks. Prints each violation, and fails if there is one.
set -u
cd "$(dirname "$0")/.." || exit
bad=0
files() {
  git -c safe.directory="$PWD" ls-files -co --exclude-standard -- "$@" | while IFS= read -r file; do
    [ ! -f "$file" ] || printf '%s\n' "$file"
  done
}
violation() {
  echo "lint: $*" >&2
  bad=1
}

sources=$(files 'src/*.h' 'src/*.cpp' 'apps/*.h' 'apps/*.cpp' 'tests/*.h' 'tests/*.cpp' 'fuzz/*.h' 'fuzz/*.cpp' \
  'bench/*.h' 'bench/*.c' 'bench/*.cpp')
[ -n "$sources" ] || {
  echo "lint: git does not list the sources" >&2
  exit 1
}
scripts=$(files '*.sh' dev .ci/run)

# Whatever is written by hand, documents and scripts as well: not pages of music, seeds, lists of versions and pictures.
long=$(files ':!examples/*/*' ':!fuzz/corpus/*' ':!*/package-lock.json' | tr '\n' '\0' | xargs -0 grep -Ic '' | awk -F : '$NF > 300')
[ -z "$long" ] || violation "at most 300 lines are allowed: $long"

# A guarantee is worth as much as the test that it names.
# shellcheck disable=SC2016  # the grave accents are those of the document
for test in $(sed -n 's/^|.*| \(.*\) |$/\1/p' docs/security.md | grep -oE '`[A-Z][A-Za-z0-9]+(\.[A-Z][A-Za-z0-9]+)?`' | tr -d '`'); do
  suite=${test%.*}
  name=${test#"$suite"}
  git grep -qE "^TEST(_F|_P)?\\($suite, ${name#.}" -- tests || violation "docs/security.md: there is no test $test"
done

# A test file that no target names would never run.
lists=$(files 'tests/*CMakeLists.txt' 'tests/*.cmake')
for file in $(files 'tests/*_test.cpp'); do
  # shellcheck disable=SC2086  # a list of files is meant
  grep -qE "(^|[ (/])${file##*/}([ )]|\$)" $lists || violation "$file: no target builds it"
done

# The libraries of src/, and what each of them links: "library linked linked ...".
LIBRARIES=$(sed -n 's/.*kiv_library(\([a-z0-9_]*\).*/\1/p' src/*/CMakeLists.txt)
LINKS=$(cat src/*/CMakeLists.txt | tr '\n' ' ' | grep -o 'target_link_libraries(kiv_[^)]*)' |
  sed 's/target_link_libraries(kiv_//; s/)//; s/ PUBLIC\| PRIVATE\| INTERFACE//g; s/ kiv_/ /g')
export LIBRARIES LINKS

# shellcheck disable=SC2086  # a list of files is meant
awk '
function violation(text) {
  print "lint: " FILENAME ":" FNR ": " text > "/dev/stderr"
  bad = 1
}

# The library that a file below src/ belongs to.
function library_of(path) {
  if (path ~ /^platform\/(posix|win32)\//) {
    return "native"
  }
  if (path ~ /^platform\/console\//) {
    return "console"
  }
  sub(/\/.*/, "", path)
  return path
}

# Adds to linked what the library links, directly or through others.
function add_links(whole, library, i, count, names) {
  linked[whole, library] = 1
  count = split(links[library], names, " ")
  for (i = 1; i <= count; ++i) {
    if (!((whole, names[i]) in linked)) {
      add_links(whole, names[i])
    }
  }
}

function check_include(path) {
  sub(/^#include "/, "", path)
  sub(/".*/, "", path)
  included = library_of(path)
  if (path !~ /\// || !(included in libraries)) {
    return
  }
  if (!((library, included) in linked)) {
    violation("src/" library " does not link " included ", and includes " path)
  }
  # A proof that uses what it proves would be none: of the page files it has the reader, and nothing else.
  if (library == "verify" && path !~ /^(verify|platform)\// &&
      path !~ /^(mus\/(format|item|page_walker)|input\/file_names|base\/(sha256|exact_number))\.h$/) {
    violation("verify shares nothing with the rest but the reader, and includes " path)
  }
}

# The marker begins a comment at the begin of a line or after a blank, so not within most texts.
function check_comment(text, marker) {
  if (!match(text, "(^|[ \t])" marker ".*")) {
    return
  }
  text = " " tolower(substr(text, RSTART)) " "
  gsub(/nolint[^ ]*/, "", text)
  if (match(text, dialect)) {
    violation("write the standard term instead of \"" substr(text, RSTART + 1, RLENGTH - 2) "\"")
  }
  if (match(text, british)) {
    violation("American spelling: \"" substr(text, RSTART + 1, RLENGTH - 2) "\"")
  }
}

# Identifiers, which are names of functions and tests among others.
function check_names(text) {
  gsub(/"([^"\\]|\\.)*"|\/\/.*/, "", text)
  if (match(text, dialect_name)) {
    violation("write the standard term instead of \"" substr(text, RSTART + 1, RLENGTH - 2) "\"")
  }
}

# Functions outside classes begin and end in the first column. clang-tidy counts the others, but reads no tests.
function check_function(line) {
  if (line ~ /^[^ \t}]/) {
    body = 0
  }
  if (body == 0 && line ~ /{$/) {
    body = FNR
  }
  if (line == "}" && body > 0 && FNR - body > 40) {
    violation("a function of " FNR - body " lines, at most 40 are allowed")
  }
}

BEGIN {
  dialect = "[^a-z](rooms?|house rules?|whole[ _]road|afresh|anew|told|tells?|in good order|without a word|troubles?|" \
    "persons?|so many|second witness|thinks? out|mends?|fails? on order|judge[sd]?|promise[sd]?|announce[sd]?|spoils?|" \
    "spoilt|(goes|go|went) on|verbs?)[^a-z]"
  dialect_name = "[^A-Za-z](tell|told|judge|promise|announce|spoil|makeRoom)([A-Z][A-Za-z0-9]*)?[^A-Za-z]|" \
    "[^A-Z](Told|Tells?|Afresh|Anew|Judged?|Judges|Promised?|Promises|Announced?|Announces|Spoils?|Spoilt|WholeRoad|" \
    "GoesOn|Verb)([A-Z][A-Za-z0-9]*)?[^A-Za-z]"
  british = "[^a-z]((colour|behaviour|centre|neighbour|favour)(s|ed)?|analys(e|ed|ing)|" \
    "(optimi|minimi|maximi|recogni|summari)s(e|es|ed|ing|ation))[^a-z]"
  count = split(ENVIRON["LINKS"], targets, "\n")
  for (t = 1; t <= count; ++t) {
    name = targets[t]
    sub(/ .*/, "", name)
    sub(/^[^ ]* ?/, "", targets[t])
    links[name] = links[name] " " targets[t]
  }
  count = split(ENVIRON["LIBRARIES"], names, "\n")
  for (t = 1; t <= count; ++t) {
    libraries[names[t]] = 1
    add_links(names[t], names[t])
  }
}

FNR == 1 {
  file = FILENAME
  is_script = file !~ /\.(h|cpp)$/
  in_src = file ~ /^src\//
  # All of src/ but the parts of platform that stand for one system.
  core = in_src && file !~ /^src\/platform\/(posix|win32|console)\//
  library = in_src ? library_of(substr(file, 5)) : ""
  if (in_src && !(library in libraries)) {
    print "lint: " file ": src/CMakeLists.txt and its folders name no library for it" > "/dev/stderr"
    bad = 1
  }
  # Headers stand on their own and are included once.
  if (file ~ /\.h$/ && $0 != "#pragma once") {
    violation("must begin with #pragma once")
  }
  may_build_messages = file ~ /^(src\/messages|src\/platform|tests|apps\/kivsys\/output)\//
}

in_src && /^#include "/ { check_include($0) }

file ~ /\/verify_command\./ && /^#include "(analysis|conversion|sort|shell|.*run_outcome\.h)/ {
  violation("the command that proves uses nothing of what it proves")
}

core && /^#include <(windows\.h|fstream|filesystem|iostream|unistd\.h|fcntl\.h|sys\/.*)>/ {
  violation("the core includes no platform header")
}

!may_build_messages && /Icon::(information|exclamation|critical)/ {
  violation("messages are built in src/messages only")
}

is_script {
  check_comment($0, "#")
  if ($0 ~ /^[a-z_]+\(\)/) {
    gsub(/_/, " ")
    if (match(" " $1 " ", dialect)) {
      violation("write the standard term instead of \"" $1 "\"")
    }
  }
  next
}

{
  check_function($0)
  check_comment($0, "//")
  check_names(" " $0 " ")
}

file ~ /^(src|apps)\// {
  # These two names are given, and so are texts.
  gsub(/setDetail(Clef|Rest)Hite|"[^"]*"/, "")
  if ($0 ~ /(^|[^wW])[hH]ite/) {
    violation("write height instead of hite")
  }
}

END {
  exit bad
}' $sources $scripts || bad=1

exit $bad
