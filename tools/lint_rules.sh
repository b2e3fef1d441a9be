#!/bin/sh
# House rules that no compiler checks.
set -u
cd "$(dirname "$0")/.."
bad=0
files() { git -c safe.directory="$PWD" ls-files -co --exclude-standard -- "$@" | grep .; }
files 'src/*.cpp' >/dev/null || {
  echo "house rules: git does not list the sources" >&2
  exit 1
}
complain() {
  echo "house rules: $*" >&2
  bad=1
}

# A test file that no target names would never run.
for file in $(files 'tests/*_test.cpp'); do
  name=${file#tests/}
  grep -rqE "(^|[ (/])${name##*/}([ )]|\$)" tests --include CMakeLists.txt || complain "$file: no target builds it"
done

# The core reaches the world through the host only.
for file in $(files 'src/base' 'src/mus' 'src/pagetext' 'src/input' 'src/analysis' 'src/sort' 'src/conversion' 'src/diagnostics' 'src/drawing' 'src/verify' 'src/survey' 'src/shell' 'src/platform/*.cpp' 'src/platform/*.h'); do
  case $file in src/platform/*/*) continue ;; esac
  if grep -nE '#include <(windows\.h|fstream|filesystem|unistd\.h|iostream|cstdlib|fcntl\.h|sys/.*)>' "$file" |
    grep -v 'cstdlib'; then
    complain "$file: the core includes no platform header"
  fi
done

# A proof that leaned on what it proves would be none.
for file in $(files 'src/verify'); do
  if grep -nE '#include "(conversion|sort)/' "$file"; then
    complain "$file: a proof shares nothing with the conversion"
  fi
done

# Headers stand on their own and are included once.
for file in $(files '*.h'); do
  [ "$(head -n 1 "$file")" = '#pragma once' ] || complain "$file: must begin with #pragma once"
done

# Short files are found again.
for file in $(files 'src/*.h' 'src/*.cpp' 'apps/*.h' 'apps/*.cpp'); do
  lines=$(wc -l <"$file")
  [ "$lines" -le 400 ] || complain "$file: $lines lines"
done

exit $bad
