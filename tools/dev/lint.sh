# shellcheck shell=sh
# Format, lint rules and clang-tidy.

# Every source that is, or is about to be, in the repository. A clone may belong to another user.
sources() { git -c safe.directory="$PWD" ls-files -co --exclude-standard -- '*.h' '*.c' '*.cpp' | grep .; }

check_format() {
  list=$(sources) && printf '%s\n' "$list" | xargs clang-format --dry-run -Werror
}

# The cross compiler's headers, which clang does not look for by itself.
windows_headers() {
  for folder in "$(x86_64-w64-mingw32-g++-posix -print-file-name=include/c++)" /usr/x86_64-w64-mingw32/include; do
    for headers in "$folder" "$folder/x86_64-w64-mingw32"; do
      [ ! -d "$headers" ] || printf -- '--extra-arg=-isystem%s ' "$headers"
    done
  done
}

# shellcheck disable=SC2046  # a list of words is meant
check_windows_tidy() {
  cmake --preset windows -B build/lint-windows -DKIV_JOINED=OFF --log-level=WARNING >/dev/null &&
    list=$(sources | grep -E '^(src/platform/win32|apps/kivsystem|apps/companions/win32)/.*\.cpp$') &&
    printf '%s\n' "$list" | xargs -P "$(nproc)" -n 2 clang-tidy -p build/lint-windows --quiet $(windows_headers) \
      --extra-arg=-Wno-unknown-warning-option 2>build/lint-windows/clang-tidy.log
}

check_tidy() {
  cmake --preset release -B build/lint -DKIV_TESTS=OFF -DKIV_BENCH=ON -DKIV_JOINED=OFF --log-level=WARNING &&
    cmake --build build/lint >/dev/null &&
    list=$(sources | grep -E '^(src|apps|bench)/.*\.(c|cpp)$' | grep -vE 'win32|apps/kivsystem') &&
    printf '%s\n' "$list" | xargs -P "$(nproc)" -n 2 clang-tidy -p build/lint --quiet \
      --extra-arg=-Wno-unknown-warning-option 2>build/lint/clang-tidy.log
}

# The templates of pages: HTML, styles and scripts.
check_pages() { node tests/browser/lint.mjs; }

run_lint() {
  need building windows format lint
  need_page_checks
  say "format"
  check_format
  say "lint rules"
  tools/lint_rules.sh
  say "pages"
  check_pages
  say "clang-tidy"
  check_tidy
  check_windows_tidy
}

run_format() {
  need format
  sources | xargs clang-format -i
}
