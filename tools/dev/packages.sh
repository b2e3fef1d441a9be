# shellcheck shell=sh
# The Debian packages that a subcommand needs.

# packages_for PURPOSE: prints them.
packages_for() {
  case $1 in
    building) echo g++ cmake ninja-build libcli11-dev nlohmann-json3-dev ;;
    tests) echo libgtest-dev libgmock-dev librapidcheck-dev libexpat1-dev groff-base zsh fish ;;
    windows) echo g++-mingw-w64-x86-64-posix googletest ;;
    wine) echo wine wine64 xvfb ;;
    packaging) echo git nsis zip unzip dpkg-dev file man-db ;;
    bare_system) echo debootstrap lintian ;;
    browser) echo chromium imagemagick fonts-liberation poppler-utils ;;
    # From Debian or elsewhere.
    npm) command -v npm >/dev/null || echo nodejs npm ;;
    fuzzing) echo clang ;;
    valgrind) echo valgrind ;;
    measuring) echo valgrind libbenchmark-dev ;;
    format) echo git clang-format ;;
    lint) echo clang-tidy clang libbenchmark-dev ;;
    coverage) echo gcovr python3 ;;
    scripts) echo git python3 ;;
    *)
      echo "no packages are known for $1" >&2
      return 1
      ;;
  esac
}

# need PURPOSE...: installs what is missing, all at once.
need() {
  missing=
  for purpose in "$@"; do
    packages=$(packages_for "$purpose")
    for package in $packages; do
      case $(dpkg-query -W -f '${Status}' "$package" 2>/dev/null) in
        'install ok installed') ;;
        *) missing="$missing $package" ;;
      esac
    done
  done
  [ -n "$missing" ] || return 0
  say "installing$missing"
  as_root=
  [ "$(id -u)" -eq 0 ] || as_root=sudo
  $as_root apt-get update -q
  # shellcheck disable=SC2086  # a list of words is meant
  $as_root env DEBIAN_FRONTEND=noninteractive apt-get install -q -y --no-install-recommends $missing
}

# The pinned npm packages that check pages.
need_page_checks() {
  need npm
  lock=tests/browser/package-lock.json
  installed=tests/browser/node_modules/.installed
  if ! cmp -s "$lock" "$installed"; then
    say "installing what $lock lists"
    npm ci --prefix tests/browser --ignore-scripts --no-audit --no-fund
    cp "$lock" "$installed"
  fi
}
