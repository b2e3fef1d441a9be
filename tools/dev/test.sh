# shellcheck shell=sh
# All tests, and the sum of their results.

passed=0
failed=0
packages=  # the process that installs them

# end_tree PROCESS: ends a process and, where the system lists them, those that it has started.
end_tree() {
  # shellcheck disable=SC2046  # a list of words is meant
  set -- "$1" $(cat "/proc/$1/task/$1/children" 2>/dev/null)
  kill "$1" 2>/dev/null || true
  shift
  for child; do
    end_tree "$child"
  done
}

# A process in the background ignores the signal of Ctrl-C. The packages are left to arrive: a half installed one would
# have to be repaired by hand.
end_background() {
  # shellcheck disable=SC2013  # words are meant
  for child in $(cat "/proc/$$/task/$$/children" 2>/dev/null); do
    [ "$child" = "$packages" ] || end_tree "$child"
  done
}

# check NAME COMMAND...: a test that is one command. What a function does after a failed step is up to the function, so
# longer ones are called as ./dev SUBCOMMAND.
check() {
  name=$1
  shift
  say "$name"
  if "$@"; then
    passed=$((passed + 1))
  else
    failed=$((failed + 1))
    echo "FAILED: $name"
  fi
}

# wait_for PROCESS LOG: waits for something that runs in the background, and prints what it said if it has failed.
wait_for() {
  wait "$1" || {
    cat "$2"
    return 1
  }
}

# count_results FOLDER PROGRAM...: adds up the results of the test programs; one without a result has crashed.
count_results() {
  folder=$1
  shift
  for program in "$@"; do
    result=$folder/$program.xml
    if [ ! -s "$result" ]; then
      echo "FAILED: $program ended without a result"
      failed=$((failed + 1))
      continue
    fi
    suites=$(grep -m 1 '<testsuites ' "$result")
    tests=$(printf '%s' "$suites" | sed 's/.* tests="\([0-9]*\)".*/\1/')
    bad=$(printf '%s' "$suites" | sed 's/.* failures="\([0-9]*\)".*/\1/')
    errors=$(printf '%s' "$suites" | sed 's/.* errors="\([0-9]*\)".*/\1/')
    bad=$((bad + errors))
    printf '%-20s %5d tests, %d failed\n' "$program" "$tests" "$bad"
    passed=$((passed + tests - bad))
    failed=$((failed + bad))
  done
}

# build_behind PRESET [CMAKE OPTION...]: starts a build that is needed later, for the time that tests only wait. Whoever
# needs it waits for the process and then builds, which finds nothing to do or says what is wrong.
build_behind() {
  preset=$1
  shift
  mkdir -p "build/$preset"
  cmake --preset "$preset" "$@" --log-level=WARNING >/dev/null || true
  nice -n 19 cmake --build --preset "$preset" >"build/$preset/build.log" 2>&1 &
}

test_native() {
  rm -rf build/debug/results
  check "native build" build debug -DKIV_TESTS=ON
  build_behind release -DKIV_TESTS=OFF -DKIV_RELEASE_TESTS=ON
  release_build=$!
  say "native tests"
  ctest --test-dir build/debug --output-on-failure -j "$(nproc)" || true
  # shellcheck disable=SC2046
  count_results build/debug/results $(cat build/debug/tests/programs.txt) console_half
}

# A data race changes results only now and then; this sanitizer finds it where nothing went wrong.
test_threads() {
  rm -rf build/tsan/results
  check "build with the thread sanitizer" build tsan
  # A data race is no failure of a test, but of the program.
  check "threads" build/tsan/tests/test_threads --gtest_brief=1 --gtest_output=xml:build/tsan/results/threads.xml
  count_results build/tsan/results threads
}

# The delivered console program on a failing disk, where sanitizers would interfere, and rates over many groups.
test_release() {
  rm -rf build/release/results
  wait "$release_build" || true
  check "release build" build release -DKIV_TESTS=OFF -DKIV_RELEASE_TESTS=ON
  windows_build=
  if [ -e build/packages.arrived ]; then
    build_behind windows -DKIV_TESTS=ON
    windows_build=$!
  fi
  say "the console program on a failing disk"
  GTEST_TOTAL_SHARDS=2 GTEST_SHARD_INDEX=1 build/release/tests/faults/program/test_program_faults --gtest_brief=1 \
    --gtest_output=xml:build/release/results/program_faults_half.xml &
  half=$!
  GTEST_TOTAL_SHARDS=2 GTEST_SHARD_INDEX=0 build/release/tests/faults/program/test_program_faults --gtest_brief=1 \
    --gtest_output=xml:build/release/results/program_faults.xml || true
  wait "$half" || true
  say "how often suggestions and recovered items are right"
  build/release/tests/rates/test_rates --gtest_brief=1 --gtest_output=xml:build/release/results/rates.xml || true
  count_results build/release/results program_faults program_faults_half rates
  check "hardening" tests/hardening.sh build/release/apps/kivsys/kivsys
}

test_windows() {
  rm -rf build/windows/results
  [ -z "$windows_build" ] || wait "$windows_build" || true
  check "Windows build" build windows -DKIV_TESTS=ON
  build_behind fuzz
  fuzz_build=$!
  say "Windows tests under Wine"
  # shellcheck disable=SC2046
  tests/window/run_in_wine.sh build/windows $(cat build/windows/tests/programs.txt) || true
  # shellcheck disable=SC2046
  count_results build/windows/results $(cat build/windows/tests/programs.txt)
  check "hardening for Windows" tests/hardening.sh build/windows/apps/kivsys/kivsys.exe \
    build/windows/apps/kivsystem/KivSystem.exe build/windows/apps/companions/KIV*.EXE
}

test_packages() {
  rm -f build/windows/results/package.xml
  check "packages" tests/package/run.sh build/release build/windows
  count_results build/windows/results package
}

run_test() {
  trap end_background EXIT
  trap 'exit 130' INT
  trap 'exit 143' TERM
  need building tests format scripts
  # The rest is large, and arrives while the first build runs.
  mkdir -p build
  rm -f build/packages.arrived
  (
    need windows wine browser npm packaging fuzzing measuring
    need_page_checks
    : >build/packages.arrived
  ) >build/packages.log 2>&1 &
  packages=$!
  check "format" check_format
  check "lint rules" tools/lint_rules.sh
  check "mutation script" tools/mutation/self_test.py
  test_native
  test_threads
  test_release
  check "packages for what follows" wait_for "$packages" build/packages.log
  test_windows
  check "demo" ./dev demo
  wait "$fuzz_build" || echo "the fuzz targets are built again below"
  # Each of these three uses one processor at most.
  ./dev fuzz --check >build/fuzz.log 2>&1 &
  fuzz=$!
  check_pages >build/pages.log 2>&1 &
  pages=$!
  test_packages
  check "lint of pages" wait_for "$pages" build/pages.log
  check "fuzz" wait_for "$fuzz" build/fuzz.log
  # Browsers are timed, so nothing else runs.
  check "pictures in a browser" tests/drawing/browser.sh build/release/apps/kivsys/kivsys build/pictures
  check "reports in a browser" tests/browser/run.sh build/release/apps/kivsys/kivsys build/browser
  check "instruction counts" ./dev bench --check
  say "result"
  echo "$passed passed, $failed failed"
  [ "$failed" -eq 0 ]
}
