# shellcheck shell=sh
# Measurements: speed, and what the tests run.

# bench [--check]: the figures; or only the counts of instructions, compared with the committed ones.
run_bench() {
  need building measuring
  build release -DKIV_TESTS=OFF -DKIV_BENCH=ON
  say "instructions"
  bench/instructions.sh build/release "$@"
  [ $# -eq 0 ] || return 0
  say "how often suggestions are right: the groups they were calibrated with, then others"
  build/release/tests/suggestions/measure_suggestions
  build/release/tests/suggestions/measure_suggestions --validation 2000 200000
  say "each step alone"
  build/release/bench/micro --benchmark_min_time=0.1 --benchmark_repetitions=3 \
    --benchmark_report_aggregates_only=true --benchmark_out=build/release/bench/micro.json
  say "runs and their I/O baseline"
  bench/runs.sh build/release
  say "the reference implementation"
  bench/convert.sh build/release
}

# recovery [PAGES]
run_recovery() {
  need building tests
  cmake -G Ninja -B build/recovery -DCMAKE_BUILD_TYPE=Release --log-level=WARNING
  cmake --build build/recovery --target measure_recovery
  build/recovery/tests/measure_recovery "$@"
}

# coverage [FILE...]: a file, or a part of its path, as in "mus/exch" or "src/".
run_coverage() {
  need building tests coverage
  build coverage
  find build/coverage -name '*.gcda' -delete
  say "native tests"
  ctest --test-dir build/coverage --output-on-failure -j "$(nproc)" || exit 1
  say "coverage"
  gcovr --root . --filter src/ --exclude-throw-branches --exclude-unreachable-branches \
    --json build/coverage/coverage.json build/coverage
  tools/coverage.py build/coverage/coverage.json "$@"
}
