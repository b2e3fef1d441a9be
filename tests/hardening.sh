#!/bin/sh
# Checks that the released programs are hardened builds.
# Usage: tests/hardening.sh PROGRAM...; files with the suffix exe are checked as Windows programs, others as ELF files.
set -eu
bad=0
fail() {
  echo "hardening: $*" >&2
  bad=1
}

# has TEXT PATTERN PROGRAM WHAT
has() { printf '%s\n' "$1" | grep -qE "$2" || fail "$3: $4"; }
has_not() { ! printf '%s\n' "$1" | grep -qE "$2" || fail "$3: $4"; }

windows() {
  headers=$(x86_64-w64-mingw32-objdump -p "$1")
  has "$headers" 'NX_COMPAT' "$1" "data is executable (no NX_COMPAT)"
  has "$headers" 'DYNAMIC_BASE' "$1" "it is loaded at a fixed address (no DYNAMIC_BASE)"
  has "$headers" 'HIGH_ENTROPY_VA' "$1" "its address has low entropy (no HIGH_ENTROPY_VA)"
  has "$headers" 'reloc +[0-9]+ offset .*DIR64' "$1" "it cannot be relocated (no relocations)"
  has_not "$headers" 'relocations stripped' "$1" "it cannot be relocated"
  # Two lines per section: name and sizes, then its flags. A section that holds code must not be writable.
  sections=$(x86_64-w64-mingw32-objdump -h "$1" | awk '/^ +[0-9]+ / { name = $2 } /CONTENTS|ALLOC/ { print name, $0 }')
  has "$sections" '^\.text .*CODE' "$1" "it has no code section"
  has_not "$(printf '%s\n' "$sections" | grep CODE | grep -v READONLY || true)" '.' "$1" "code is writable"
  has_not "$(printf '%s\n' "$sections" | grep -E '^\.(data|bss|idata|tls) ' || true)" 'CODE' "$1" "data is executable"
  has "$(x86_64-w64-mingw32-nm "$1")" '__stack_chk_fail' "$1" "stack buffers are not protected"
}

native() {
  segments=$(readelf -lhW "$1")
  has "$segments" 'Type: +DYN' "$1" "it is loaded at a fixed address (no PIE)"
  has "$segments" 'GNU_RELRO' "$1" "its tables stay writable (no RELRO)"
  has "$segments" 'GNU_STACK .* RW ' "$1" "the stack is executable"
  has_not "$segments" '(LOAD|GNU_STACK).* RWE ' "$1" "a segment is writable and executable"
  has "$(readelf -dW "$1")" 'BIND_NOW|FLAGS_1.*NOW' "$1" "its tables are bound lazily (no BIND_NOW)"
  symbols=$(readelf --dyn-syms -W "$1")
  has "$symbols" '__stack_chk_fail' "$1" "stack buffers are not protected"
  has "$symbols" '__[a-z]+_chk@' "$1" "calls of the C library are not checked (no FORTIFY)"
}

[ $# -gt 0 ] || {
  echo "Usage: tests/hardening.sh PROGRAM..." >&2
  exit 2
}
for program in "$@"; do
  [ -f "$program" ] || {
    fail "$program: there is no such file"
    continue
  }
  case $program in
    *.exe | *.EXE) windows "$program" ;;
    *) native "$program" ;;
  esac
done
exit $bad
