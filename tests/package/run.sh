#!/bin/sh
# Builds the packages from the programs and tests them: their lists of files, then what a user does with them.
# Usage: run.sh LINUX_BUILD WINDOWS_BUILD
set -eu
here=$(cd "$(dirname "$0")" && pwd)
linux=$(cd "$1" && pwd)
windows=$(cd "$2" && pwd)
work=$windows/package
rm -rf "$work"
mkdir -p "$work"
export LC_ALL=C.UTF-8

bad=0
fail() {
  echo "package test: $*" >&2
  bad=1
}

# same WHAT EXPECTED FOUND: two lists, in any order.
same() {
  sort "$2" >"$work/expected"
  sort "$3" >"$work/found"
  diff "$work/expected" "$work/found" || fail "$1 differs (< expected, > found)"
}

check_sums() {
  (cd "$work/dist" && sha256sum --check --strict --quiet SHA256SUMS) || fail "checksums"
  find "$work/dist" -type f ! -name SHA256SUMS -printf '%f\n' >"$work/packages"
  cut -c 67- "$work/dist/SHA256SUMS" >"$work/summed"
  same "what has a checksum" "$work/packages" "$work/summed"
  [ "$(wc -l <"$work/packages")" -eq 3 ] || fail "the number of packages is not three"
}

check_reproducible() {
  "$here/../../packaging/package.sh" "$linux" "$windows" "$work/again"
  diff "$work/dist/SHA256SUMS" "$work/again/SHA256SUMS" || fail "packages built again differ"
}

check_zip() {
  unzip -q "$work"/dist/*-windows.zip -d "$work/unpacked"
  mv "$work"/unpacked/KivSystem-* "$work/content"
  (cd "$work/content" && find . -type f | sed 's|^\./||') >"$work/list"
  same "content of the zip" "$here/zip_contents.txt" "$work/list"
  find "$work/content" -type f | grep -vE '\.(exe|EXE|MUS|png|svg)$' >"$work/texts"
  while read -r text; do
    [ "$(wc -l <"$text")" -eq "$(grep -c "$(printf '\r')\$" "$text")" ] || fail "line ends in $text"
  done <"$work/texts"
}

# The console program as installed, on the example as installed: it writes the results that are installed with it.
check_deb() {
  dpkg-deb -x "$work"/dist/*.deb "$work/deb"
  (cd "$work/deb" && find . -type f | sed 's|^\.||') >"$work/list"
  same "content of the Debian package" "$here/deb_contents.txt" "$work/list"
  kivsys=$work/deb/usr/bin/kivsys
  example=$work/deb/usr/share/doc/kivsys/examples/beethoven-9
  mkdir "$work/pages"
  for text in "$example"/SYMPH*.txt; do
    "$kivsys" build "$text" "$work/pages/$(basename "$text" .txt).MUS"
  done
  (cd "$work/pages" && "$kivsys" convert SYMPH*.MUS >/dev/null 2>"$work/messages") || fail "kivsys convert fails"
  for expected in "$example"/results/*.txt; do
    "$kivsys" build --force "$expected" "$work/expected.MUS"
    cmp "$work/expected.MUS" "$work/pages/$(basename "$expected" .txt).MUS" || fail "result $(basename "$expected")"
  done
  for page in "$work"/pages/SYMPH*.MUS; do
    cmp "$page" "$work/content/examples/beethoven-9/$(basename "$page")" || fail "packaged page $(basename "$page")"
  done
}

# The manual page and the completions as installed are what the installed program prints.
check_told() {
  shared=$work/deb/usr/share
  kivsys=$work/deb/usr/bin/kivsys
  gzip -dc "$shared/man/man1/kivsys.1.gz" >"$work/page"
  man -l --warnings -E UTF-8 "$shared/man/man1/kivsys.1.gz" 2>"$work/warnings" >"$work/shown"
  [ ! -s "$work/warnings" ] || fail "the manual page: $(cat "$work/warnings")"
  grep -q '^SYNOPSIS$' "$work/shown" || fail "man does not show the manual page"
  "$kivsys" man | cmp - "$work/page" || fail "manual page"
  "$kivsys" completions bash | cmp - "$shared/bash-completion/completions/kivsys" || fail "bash"
  "$kivsys" completions zsh | cmp - "$shared/zsh/vendor-completions/_kivsys" || fail "zsh"
  "$kivsys" completions fish | cmp - "$shared/fish/vendor_completions.d/kivsys.fish" || fail "fish"
  "$kivsys" completions powershell | sed "s/\$/$(printf '\r')/" | cmp - "$work/content/completions/kivsys.ps1" ||
    fail "PowerShell"
}

windows_path() { printf 'Z:%s' "$1" | tr / '\\'; }

check_in_wine() {
  folder="$work/Lieder für alle"
  cp -r "$work/content" "$folder"
  KIV_WINE=$work/wine
  KIV_PORTABLE=$(windows_path "$folder")
  KIV_CONTENT=$(windows_path "$work/content")
  KIV_SETUP=$(windows_path "$(ls "$work"/dist/*-setup.exe)")
  export KIV_WINE KIV_PORTABLE KIV_CONTENT KIV_SETUP
  "$here/../window/run_in_wine.sh" "$windows" package || fail "use under Wine"
}

"$here/../../packaging/package.sh" "$linux" "$windows" "$work/dist"
check_sums
check_reproducible
check_zip
check_deb
check_told
check_in_wine
exit $bad
