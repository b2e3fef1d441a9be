# shellcheck shell=sh
# The Debian packages that a subcommand needs.

# need PACKAGE...: installs the Debian packages that are missing.
need() {
  missing=
  for package in "$@"; do
    case $(dpkg-query -W -f '${Status}' "$package" 2>/dev/null) in
      'install ok installed') ;;
      *) missing="$missing $package" ;;
    esac
  done
  [ -n "$missing" ] || return 0
  say "installing$missing"
  as_root=
  [ "$(id -u)" -eq 0 ] || as_root=sudo
  $as_root apt-get update -q
  # shellcheck disable=SC2086  # a list of words is meant
  $as_root env DEBIAN_FRONTEND=noninteractive apt-get install -q -y --no-install-recommends $missing
}

need_native() { need g++ cmake ninja-build libcli11-dev nlohmann-json3-dev; }
need_tests() { need libgtest-dev libgmock-dev librapidcheck-dev libexpat1-dev groff-base zsh fish; }
need_windows() { need g++-mingw-w64-x86-64-posix googletest; }
need_wine() { need wine wine64 xvfb; }
need_packaging() { need git nsis zip unzip dpkg-dev file man-db; }
need_bare_system() { need debootstrap lintian; }
need_browser() { need chromium imagemagick fonts-liberation poppler-utils; }
# Node with npm, from Debian or elsewhere.
need_npm() { command -v npm >/dev/null || need nodejs npm; }
# The pinned packages that check pages.
need_pages() {
  need_npm
  lock=tests/browser/package-lock.json
  installed=tests/browser/node_modules/.installed
  if ! cmp -s "$lock" "$installed"; then
    say "installing what $lock lists"
    npm ci --prefix tests/browser --ignore-scripts --no-audit --no-fund
    cp "$lock" "$installed"
  fi
}
need_fuzz() { need clang; }
need_bench() { need valgrind libbenchmark-dev; }
need_lint() { need git clang-format clang-tidy clang libbenchmark-dev; }
