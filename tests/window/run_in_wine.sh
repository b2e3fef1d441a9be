#!/bin/sh
# Runs cross-built test programs under Wine, on a screen and in a Wine folder of their own.
set -eu

usage() {
  cat >&2 <<'TEXT'
Usage: run_in_wine.sh BUILD PROGRAM...
       run_in_wine.sh BUILD --program FILE FOLDER

Runs BUILD/tests/.../test_PROGRAM.exe, one after the other, and leaves their results in BUILD/results/PROGRAM.xml and
their output in BUILD/results/PROGRAM.log. Ends with status 1 when one of them fails. The second form runs any program on
a folder, on a screen of KIV_DPI dots per inch. KIV_WINE names another Wine folder than BUILD/wine.
TEXT
  exit 2
}

[ $# -ge 2 ] || usage

# At random addresses, the heap of one program in some thousands lies where Wine needs a page of its own, so it does not
# start. A machine may forbid fixed ones.
if [ -z "${KIV_FIXED_ADDRESSES:-}" ] && setarch -R true 2>/dev/null; then
  KIV_FIXED_ADDRESSES=yes exec setarch -R sh "$0" "$@"
fi

build=$(cd "$1" && pwd)
shift

seconds=600
results=$build/results
mkdir -p "$results"

export WINEPREFIX="${KIV_WINE:-$build/wine}"
# The last one would put shortcuts into the menu of the machine's own desktop.
export WINEDLLOVERRIDES='mscoree,mshtml,winemenubuilder.exe='
export WINEDEBUG=-all
# The locale determines the ANSI code page, which is that of Western Europe here.
export LC_ALL=C.UTF-8

first_of() {
  for candidate in "$@"; do
    if command -v "$candidate"; then
      return
    fi
  done
  echo "run_in_wine: none of these is installed: $*" >&2
  exit 1
}
# locale_of PROGRAM: the tests of two-byte names run in the code page of Japan, all others in that of Western Europe.
locale_of() {
  case $1 in
    two_byte_names) echo ja_JP.UTF-8 ;;
    *) echo C.UTF-8 ;;
  esac
}

# Wine looks at the name of the locale only, and the machine may have no other than C.
make_locales() {
  rm -rf "$results/locales"
  mkdir "$results/locales"
  cp -r /usr/lib/locale/C.utf8 "$results/locales/C.UTF-8"
  cp -r /usr/lib/locale/C.utf8 "$results/locales/ja_JP.UTF-8"
  export LOCPATH="$results/locales"
}

wine=$(first_of wine wine64 /usr/lib/wine/wine64)
wineserver=$(first_of wineserver /usr/lib/wine/wineserver /usr/lib/wine/wineserver64)

screen=
# shellcheck disable=SC2317  # the trap calls it
clean_up() {
  "$wineserver" -k 2>/dev/null || true
  [ -z "$screen" ] || kill "$screen" 2>/dev/null || true
  rm -f "$results/display"
}
trap clean_up EXIT
trap 'exit 1' HUP INT TERM

start_screen() {
  rm -f "$results/display"
  mkfifo "$results/display"
  Xvfb -displayfd 3 -screen 0 1920x1200x24 -nolisten tcp 3>"$results/display" >/dev/null 2>&1 &
  screen=$!
  if ! read -r number <"$results/display"; then
    echo "run_in_wine: Xvfb does not start" >&2
    exit 1
  fi
  export DISPLAY=":$number"
}

# run PROGRAM: its status is that of the tests.
run() {
  program=$(find "$build/tests" -name "test_$1.exe" | head -n 1)
  if [ -z "$program" ]; then
    echo "run_in_wine: there is no test_$1.exe in $build/tests" >&2
    return 1
  fi
  rm -f "$results/$1.xml"
  status=0
  # In the background, so that this script handles a signal at once.
  LC_ALL=$(locale_of "$1") timeout --kill-after=10 "$seconds" "$wine" "$program" --gtest_brief=1 "--gtest_output=xml:results/$1.xml" \
    >"$results/$1.log" 2>&1 &
  wait $! || status=$?
  cat "$results/$1.log"
  [ "$status" -ne 124 ] || echo "run_in_wine: test_$1.exe did not end within $seconds s" >&2
  [ "$status" -eq 0 ] && [ -s "$results/$1.xml" ]
}

start_screen
make_locales
if ! timeout "$seconds" "$wine" wineboot --init >"$results/wine.log" 2>&1; then
  cat "$results/wine.log" >&2
  echo "run_in_wine: Wine does not start" >&2
  exit 1
fi
# Nobody manages windows on this screen, and waiting for such a manager's answers takes seconds.
timeout "$seconds" "$wine" reg add 'HKCU\Software\Wine\X11 Driver' /v Managed /d N /f >>"$results/wine.log" 2>&1
cd "$build"
if [ "$1" = --program ]; then
  timeout "$seconds" "$wine" reg add 'HKCU\Control Panel\Desktop' /v LogPixels /t REG_DWORD /d "${KIV_DPI:-96}" /f \
    >>"$results/wine.log" 2>&1
  # Windows has a narrower dialog font than Wine finds here; this one is as wide.
  timeout "$seconds" "$wine" reg add 'HKLM\Software\Microsoft\Windows NT\CurrentVersion\FontSubstitutes' \
    /v 'MS Shell Dlg' /d 'Liberation Sans' /f >>"$results/wine.log" 2>&1
  "$wineserver" -w
  status=0
  timeout --kill-after=10 "$seconds" "$wine" "$2" "Z:$(printf '%s' "$3" | tr / '\\')" || status=$?
  timeout "$seconds" "$wine" reg delete 'HKCU\Control Panel\Desktop' /v LogPixels /f >>"$results/wine.log" 2>&1
  timeout "$seconds" "$wine" reg add 'HKLM\Software\Microsoft\Windows NT\CurrentVersion\FontSubstitutes' \
    /v 'MS Shell Dlg' /d Tahoma /f >>"$results/wine.log" 2>&1
  exit $status
fi
failed=0
for name in "$@"; do
  run "$name" || failed=1
done
exit $failed
