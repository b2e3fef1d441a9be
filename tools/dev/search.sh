# shellcheck shell=sh
# Searches for bugs and for missing tests, which take long.

fuzz_targets='mus_reader names_file settings report page_text recovery corrections layout_file command_line
  survey_state journal end_to_end'

# fuzz [--fast] [TARGET] [SECONDS]; or fuzz --check
run_fuzz() {
  need building fuzzing
  preset=fuzz
  if [ "${1:-}" = --fast ]; then
    preset=fuzz-fast
    shift
  fi
  seconds=30
  targets=
  for argument in "$@"; do
    case $argument in
      --check | [0-9]*) seconds=$argument ;;
      *) targets="$targets $argument" ;;
    esac
  done
  build "$preset"
  # shellcheck disable=SC2086  # a list of words is meant
  fuzz/run.sh "build/$preset" "$seconds" ${targets:-$fuzz_targets}
}

run_memcheck() {
  need building tests valgrind
  build memcheck -DKIV_TESTS=ON
  tools/memcheck.sh build/memcheck
}

run_mutate() {
  need building tests scripts
  tools/mutation/mutate.py "$@"
}

run_prove_proof() {
  need building tests scripts
  tools/mutation/prove_proof.py "$@"
}
