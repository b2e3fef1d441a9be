#!/bin/sh
# Looks whether the delivered programs have the marks of a hardened build.
# Usage: tests/hardening.sh PROGRAM...; programs of Windows by their suffix exe, others as they lie.
set -eu
bad=0
complain() {
  echo "hardening: $*" >&2
  bad=1
}

# has TEXT PATTERN PROGRAM WHAT
has() { printf '%s\n' "$1" | grep -qE "$2" || complain "$3: $4"; }
has_not() { ! printf '%s\n' "$1" | grep -qE "$2" || complain "$3: $4"; }

windows() {
  headers=$(x86_64-w64-mingw32-objdump -p "$1")
  has "$headers" 'NX_COMPAT' "$1" "data can be run (no NX_COMPAT)"
  has "$headers" 'DYNAMIC_BASE' "$1" "its address is known (no DYNAMIC_BASE)"
  has "$headers" 'HIGH_ENTROPY_VA' "$1" "its address is easily guessed (no HIGH_ENTROPY_VA)"
  has "$headers" 'reloc +[0-9]+ offset .*DIR64' "$1" "it cannot be moved (no relocations)"
  has_not "$headers" 'relocations stripped' "$1" "it cannot be moved"
  # Two lines a section: name and sizes, then its flags. A section that holds code must not be writable.
  sections=$(x86_64-w64-mingw32-objdump -h "$1" | awk '/^ +[0-9]+ / { name = $2 } /CONTENTS|ALLOC/ { print name, $0 }')
  has "$sections" '^\.text .*CODE' "$1" "there is no code in it"
  has_not "$(printf '%s\n' "$sections" | grep CODE | grep -v READONLY || true)" '.' "$1" "code can be written over"
  has_not "$(printf '%s\n' "$sections" | grep -E '^\.(data|bss|idata|tls) ' || true)" 'CODE' "$1" "data can be run"
  has "$(x86_64-w64-mingw32-nm "$1")" '__stack_chk_fail' "$1" "buffers on the stack are not guarded"
}

native() {
  segments=$(readelf -lhW "$1")
  has "$segments" 'Type: +DYN' "$1" "its address is known (no PIE)"
  has "$segments" 'GNU_RELRO' "$1" "its tables stay writable (no RELRO)"
  has "$segments" 'GNU_STACK .* RW ' "$1" "the stack can be run"
  has_not "$segments" '(LOAD|GNU_STACK).* RWE ' "$1" "a segment can be written and run"
  has "$(readelf -dW "$1")" 'BIND_NOW|FLAGS_1.*NOW' "$1" "its tables are filled late (no BIND_NOW)"
  symbols=$(readelf --dyn-syms -W "$1")
  has "$symbols" '__stack_chk_fail' "$1" "buffers on the stack are not guarded"
  has "$symbols" '__[a-z]+_chk@' "$1" "calls of the C library are not checked (no FORTIFY)"
}

[ $# -gt 0 ] || {
  echo "Usage: tests/hardening.sh PROGRAM..." >&2
  exit 2
}
for program in "$@"; do
  [ -f "$program" ] || {
    complain "$program: there is none"
    continue
  }
  case $program in
    *.exe | *.EXE) windows "$program" ;;
    *) native "$program" ;;
  esac
done
exit $bad
