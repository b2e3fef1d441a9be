#!/bin/sh
# Installs the Debian package in a bare Debian 12, uses it there as a user who is not root, and removes it again.
# Needs root, debootstrap and the network.
# Usage: bare.sh DEB FOLDER
# FOLDER is emptied and then holds the bare system.
set -eu
here=$(cd "$(dirname "$0")" && pwd)
deb=$1
root=$2
export LC_ALL=C.UTF-8

bad=0
fail() {
  echo "bare system: $*" >&2
  bad=1
}

# inside COMMAND...: as root in the bare system, without the environment of this one.
inside() { chroot "$root" env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin LC_ALL=C.UTF-8 DEBIAN_FRONTEND=noninteractive "$@"; }

# as_user SCRIPT: as a user without rights and without a home.
as_user() { chroot --userspec=nobody:nogroup "$root" env -i PATH=/usr/bin:/bin LC_ALL=C.UTF-8 sh -eu -c "$1"; }

make_system() {
  unmount
  rm -rf "$root"
  mkdir -p "$root"
  debootstrap --variant=minbase bookworm "$root" >"$root.log" 2>&1 || {
    tail -n 20 "$root.log" >&2
    exit 1
  }
  # Shells find their own open files there.
  mount -t proc proc "$root/proc"
  [ -e "$root/dev/fd" ] || ln -s /proc/self/fd "$root/dev/fd"
}

# What is mounted must be gone before the folder is emptied.
unmount() {
  if mountpoint -q "$root/proc"; then
    umount "$root/proc"
  fi
}
trap unmount EXIT

check_installation() {
  cp "$deb" "$root/tmp/kivsys.deb"
  inside apt-get install -q -y --no-install-recommends /tmp/kivsys.deb
  inside dpkg -L kivsys | sort >"$root.list"
  for file in copyright changelog.gz CHANGELOG.md docs/cli.md; do
    grep -qx "/usr/share/doc/kivsys/$file" "$root.list" || fail "$file is missing"
  done
}

# Every result of the example as a new user makes it is the result that comes with the example.
check_use() {
  as_user 'kivsys --version && kivsys --help' >"$root.help" || fail "kivsys --help"
  grep -q 'convert' "$root.help" || fail "the help names no commands"
  as_user '
    example=/usr/share/doc/kivsys/examples/beethoven-9
    mkdir /tmp/pages && cd /tmp/pages
    for text in "$example"/SYMPH*.txt; do kivsys build "$text" "$(basename "$text" .txt).MUS"; done
    kivsys analyze . >/dev/null && kivsys convert . >/dev/null && kivsys verify SYMPH*.MUS >/dev/null
    for expected in "$example"/results/*.txt; do
      kivsys build "$expected" - | cmp - "$(basename "$expected" .txt).MUS"
    done' || fail "the example"
}

check_manual_page() {
  inside apt-get install -q -y --no-install-recommends man-db
  as_user 'man kivsys' >"$root.page" || fail "man kivsys"
  grep -q '^SYNOPSIS$' "$root.page" || fail "man kivsys shows no manual page"
}

check_completions() {
  inside apt-get install -q -y --no-install-recommends bash-completion zsh fish
  inside bash -c '. /usr/share/bash-completion/bash_completion
    _completion_loader kivsys
    COMP_WORDS=(kivsys ana) COMP_CWORD=1 COMP_LINE="kivsys ana" COMP_POINT=10
    $(complete -p kivsys | sed "s/.*-F \([^ ]*\).*/\1/") kivsys ana kivsys
    printf "%s\n" "${COMPREPLY[@]}"' | grep -q '^analyze *$' || fail "completions for bash"
  inside fish -c 'complete -C "kivsys ana"' | grep -q '^analyze' || fail "completions for fish"
  # shellcheck disable=SC2016  # zsh expands it
  inside zsh -c 'autoload -Uz compinit && compinit -u && print -r -- $_comps[kivsys]' | grep -q '^_kivsys$' ||
    fail "completions for zsh"
}

check_removal() {
  inside apt-get purge -q -y kivsys
  while read -r path; do
    [ ! -f "$root$path" ] || fail "$path is left behind"
  done <"$root.list"
  [ ! -e "$root/usr/share/doc/kivsys" ] || fail "its documents are left behind"
}

check_deb_lint() { lintian --fail-on error "$deb" || fail "lintian"; }

[ -f "$here/deb_contents.txt" ] && [ -f "$deb" ] || fail "no package $deb"
check_deb_lint
make_system
check_installation
check_use
check_manual_page
check_completions
check_removal
[ "$bad" -eq 0 ] && echo "The package installs, works and is removed again in a bare Debian 12."
exit $bad
